#include "tests/mainwindow/window_fixture.h"

namespace rws::test {
namespace {

/** Flights in list order: a blue bomber, two red fighters of one name stem, an unknown aircraft. */
class FlightPanelTest : public WindowTest {
 protected:
  FlightPanelTest() {
    Tables.Aircraft.resize(3);
    Tables.Aircraft[0].Name = "I-16";
    Tables.Aircraft[0].Class = "I_16";
    Tables.Aircraft[0].Flyable = true;
    Tables.Aircraft[1].Name = "Ju 88";
    Tables.Aircraft[1].Class = "JU_88";
    Tables.Aircraft[2] = Tables.Aircraft[0];
    Tables.Aircraft[2].Name = "I-16 Type 24";
    Tables.Aircraft[2].Class = "I_16T24";
    for (auto& aircraft : Tables.Aircraft)
      aircraft.Weapons = {"Default,default", "2 x Bombs,2xB", "Empty (No Ammo),none"};
    Tables.Squadrons = {{"red", "ru", "USSR", {{"r01", ""}}},
                        {"blue", "de", "Germany", {{"g01", ""}}}};
    std::vector<std::string> lines = {"[MAIN]", "  TIME 23.8", "  player r0101", "  playerNum 1",
                                      "[Wing]"};
    AddFlight(lines, "r0100", "I_16", "1");
    AddFlight(lines, "g0110", "JU_88", "Custom");
    AddFlight(lines, "r0101", "I_16T24", "2");
    AddFlight(lines, "x0100", "MYSTERY", "3");
    lines.push_back("[NStationary]");
    Box.Write("missions/a.mis", Crlf(lines));
  }

  static void AddFlight(std::vector<std::string>& lines, const std::string& name,
                        const std::string& aircraft, const std::string& skill) {
    for (const std::string& line :
         {"[" + name + "]", std::string("  Planes 2"), "  Skill " + skill,
          "  Class air." + aircraft, std::string("  Fuel 40"), std::string("  weapons default"),
          "[" + name + "_Way]", std::string("  NORMFLY 1.00 2.00 500.00 300.00 &0")})
      lines.push_back(line);
  }

  enum ListRow { kBomber, kMystery, kFighter, kLateFighter };
  enum Index { kFighterFlight, kBomberFlight, kLateFighterFlight };

  FlightPanel& Flight_() { return *Window->flightArea->fraFlight; }
  FlightList& List() { return *Window->flightArea->lstPlanes; }
  Flight& Record(int index) { return At(Doc().Missions[0].Flights, index); }
  void ClickFlight(int row, Qt::KeyboardModifiers keys = {}) {
    const QRect place = List().visualRect(List().model()->index(row, 0));
    QTest::mouseClick(List().viewport(), Qt::LeftButton, keys, place.center());
  }
  void SelectFighters() {
    ClickFlight(kFighter);
    ClickFlight(kLateFighter, Qt::ControlModifier);
  }
  QColor DelayColor() { return Flight_().lbl[7]->palette().color(QPalette::WindowText); }
};

TEST_F(FlightPanelTest, ShowsAFlight) {
  Open();
  ClickFlight(kFighter);
  EXPECT_EQ(Flight_().cboPlanes->currentText(), "2");
  EXPECT_EQ(Flight_().cboSkill->currentText(), "Average (1)");
  EXPECT_EQ(Flight_().txtFuel->text(), "40");
  EXPECT_EQ(Flight_().cboWeap->currentText(), "Default");
  EXPECT_EQ(Flight_().txtDStart->text(), "0");
  EXPECT_EQ(Flight_().lblDelayStart->text(), "23:48");
  EXPECT_TRUE(Flight_().chkPara->isChecked());
  EXPECT_FALSE(Flight_().chkAI->isChecked());
  ClickFlight(kBomber);
  EXPECT_EQ(Flight_().cboSkill->currentText(), "Custom");
  EXPECT_TRUE(Flight_().chkAI->isChecked()) << "no player can fly it, whatever the record says";
  EXPECT_FALSE(Flight_().chkAI->isEnabled());
  EXPECT_EQ(Record(kBomberFlight).OnlyAI, "");
  EXPECT_FALSE(Lit()) << "looking is no edit";
  ClickFlight(kMystery);
  for (QWidget* control : std::initializer_list<QWidget*>{
           Flight_().txtFuel, Flight_().cboPlanes, Flight_().cboSkill, Flight_().cboWeap,
           Flight_().txtDStart, Flight_().udFuel, Flight_().chkAI, Flight_().chkPara})
    EXPECT_FALSE(control->isEnabled()) << control->objectName().toStdString();
}

TEST_F(FlightPanelTest, NumbersAreCutAsTyped) {
  Open();
  ClickFlight(kFighter);
  struct Row {
    const char *Typed, *Fuel, *Delay, *Clock;
  };
  const Row rows[] = {{"120", "100", "120", "01:48"}, {"300", "100", "120", "01:48"},
                      {"-5", "0", "0", "23:48"},      {"0", "0", "0", "23:48"},
                      {"20", "20", "20", "00:08"},    {"x", "50", "0", "23:48"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Typed);
    Flight_().txtFuel->setText("50");
    Flight_().txtDStart->setText("45");
    Flight_().txtFuel->setText(row.Typed);
    Flight_().txtDStart->setText(row.Typed);
    EXPECT_EQ(Record(kFighterFlight).Fuel, row.Fuel);
    EXPECT_EQ(Record(kFighterFlight).StartTime, row.Delay);
    EXPECT_EQ(Flight_().txtDStart->text(), row.Delay);
    EXPECT_EQ(Flight_().lblDelayStart->text(), row.Clock);
    EXPECT_EQ(DelayColor() == QColor(Qt::red), std::string(row.Delay) != "0");
  }
  Flight_().txtFuel->setText("50");
  Click(Flight_().udFuel->Down);
  Click(Flight_().udDStart->Up);
  EXPECT_EQ(Record(kFighterFlight).Fuel, "45");
  EXPECT_EQ(Record(kFighterFlight).StartTime, "5");
}

TEST_F(FlightPanelTest, ABadNumberKeepsTheFocus) {
  Open();
  ClickFlight(kFighter);
  Window->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(Window.get()));
  Flight_().txtFuel->setFocus();
  Flight_().txtFuel->setText("4o");
  QTest::keyClick(Flight_().txtFuel, Qt::Key_Tab);
  EXPECT_TRUE(Flight_().txtFuel->hasFocus());
  EXPECT_EQ(Flight_().txtFuel->text(), "40") << "the record's value is back";
}

TEST_F(FlightPanelTest, EditsOneFlight) {
  Open();
  ClickFlight(kFighter);
  Flight_().cboPlanes->SelectRow(3);
  Flight_().cboSkill->SelectRow(4);
  Flight_().cboWeap->SelectRow(1);
  Click(Flight_().chkAI);
  Click(Flight_().chkPara);
  const Flight& flight = Record(kFighterFlight);
  EXPECT_EQ(flight.Planes, "4");
  EXPECT_EQ(flight.Skill, "Custom");
  EXPECT_EQ(flight.Weapons, "2xB");
  EXPECT_EQ(flight.OnlyAI, "1");
  EXPECT_EQ(flight.Parachute, "0");
  EXPECT_EQ(Flight_().title(), "I-16 - Flight of 4 - 2 x Bombs");
  EXPECT_TRUE(Lit());
  Click(Flight_().chkAI);
  Click(Flight_().chkPara);
  EXPECT_EQ(flight.OnlyAI + flight.Parachute, "");
}

TEST_F(FlightPanelTest, AnEditOfAGroupCopiesThePanel) {
  Open();
  SelectFighters();
  const Flight bomber = Record(kBomberFlight);
  Flight_().cboSkill->SelectRow(4);
  Flight_().cboWeap->SelectRow(1);
  Flight_().txtFuel->setText("65");
  Flight_().txtDStart->setText("15");
  Click(Flight_().chkPara);
  for (const int index : {kFighterFlight, kLateFighterFlight}) {
    const Flight& flight = Record(index);
    EXPECT_EQ(flight.Skill, "4") << "only the edit of one flight says Custom";
    EXPECT_EQ(flight.Weapons, "2xB");
    EXPECT_EQ(flight.Fuel, "65");
    EXPECT_EQ(flight.StartTime, "15");
  }
  EXPECT_EQ(Record(kFighterFlight).Parachute + Record(kLateFighterFlight).Parachute, "0")
      << "of one flight only";
  EXPECT_EQ(Record(kBomberFlight).Fuel, bomber.Fuel);

  ClickFlight(kBomber, Qt::ControlModifier);
  EXPECT_FALSE(Flight_().cboWeap->isEnabled());
  EXPECT_FALSE(Flight_().chkAI->isEnabled());
  Flight_().txtFuel->setText("30");
  EXPECT_EQ(Record(kBomberFlight).Fuel, "30");
  EXPECT_EQ(Record(kBomberFlight).Weapons, "default") << "not all are one aircraft";

  const Flight before = Record(kFighterFlight);
  Panel().dtMission->setTime(QTime(5, 0));
  EXPECT_EQ(Record(kFighterFlight).Fuel, before.Fuel) << "showing a flight applies nothing";
  EXPECT_EQ(Record(kFighterFlight).Weapons, before.Weapons);
}

TEST_F(FlightPanelTest, AIOnlyAsksBeforeItTakesThePlayer) {
  Open();
  ClickFlight(kLateFighter);
  World_.Script.Expect("This will clear the player selected plane.\nIs this what you want to do?",
                       Answer::No);
  Click(Flight_().chkAI);
  EXPECT_FALSE(Flight_().chkAI->isChecked());
  EXPECT_EQ(Record(kLateFighterFlight).OnlyAI, "");
  EXPECT_EQ(Doc().Missions[0].Player, "r0101");
  World_.Script.Expect("This will clear the player selected plane.", Answer::Yes);
  Flight_().chkAI->setFocus();
  QTest::keyClick(Flight_().chkAI, Qt::Key_Space);
  EXPECT_EQ(Record(kLateFighterFlight).OnlyAI, "1");
  EXPECT_EQ(Doc().Missions[0].Player + Doc().Missions[0].PlayerNum, "");
  EXPECT_EQ(Window->staPanels[1]->text(), "");
}

TEST_F(FlightPanelTest, TheLockHoldsForEveryFlight) {
  Run.bLockWT = true;
  Open();
  for (const int row : {kFighter, kBomber, kLateFighter}) {
    ClickFlight(row);
    for (QWidget* control : std::initializer_list<QWidget*>{Flight_().cboWeap, Flight_().txtDStart,
                                                            Flight_().udDStart, Panel().dtMission})
      EXPECT_FALSE(control->isEnabled()) << control->objectName().toStdString();
    EXPECT_TRUE(Flight_().txtFuel->isEnabled());
  }
  SelectFighters();
  EXPECT_FALSE(Flight_().cboWeap->isEnabled());
  Run.bLockWT = false;
  Flight_().LockFlightControls(true);
  EXPECT_TRUE(Flight_().cboWeap->isEnabled() && Panel().dtMission->isEnabled());
}

TEST_F(FlightPanelTest, ALoadoutThatTheTableLacksIsLearnt) {
  Open();
  Record(3).Weapons = "only here";
  ClickFlight(kMystery);
  EXPECT_EQ(Record(3).Weapons, "only here") << "no list can spell it";
  Record(kFighterFlight).Weapons = "3xNew";
  ClickFlight(kFighter);
  QStringList rows;
  for (int row = 0; row < Flight_().cboWeap->count(); ++row)
    rows << Flight_().cboWeap->itemText(row);
  EXPECT_EQ(rows.join('|'), "Default|2 x Bombs|3xNew|Empty (No Ammo)");
  EXPECT_EQ(Flight_().cboWeap->currentText(), "3xNew");
  EXPECT_EQ(Record(kFighterFlight).Weapons, "3xNew");
}

}  // namespace
}  // namespace rws::test
