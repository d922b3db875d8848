#include "tests/mainwindow/flights_fixture.h"

namespace rws::test {
namespace {

class FlightPanelTest : public FlightsTest {
 protected:
  QColor DelayColor() { return Panel_().lbl[7]->palette().color(QPalette::WindowText); }
};

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
    Panel_().txtFuel->setText("50");
    Panel_().txtDStart->setText("45");
    Panel_().txtFuel->setText(row.Typed);
    Panel_().txtDStart->setText(row.Typed);
    EXPECT_EQ(Record(kFighterFlight).Fuel, row.Fuel);
    EXPECT_EQ(Record(kFighterFlight).StartTime, row.Delay);
    EXPECT_EQ(Panel_().txtDStart->text(), row.Delay);
    EXPECT_EQ(Panel_().lblDelayStart->text(), row.Clock);
    EXPECT_EQ(DelayColor() == QColor(Qt::red), std::string(row.Delay) != "0");
  }
  Panel_().txtFuel->setText("50");
  Click(Panel_().udFuel->Down);
  Click(Panel_().udDStart->Up);
  EXPECT_EQ(Record(kFighterFlight).Fuel, "45");
  EXPECT_EQ(Record(kFighterFlight).StartTime, "5");
}

TEST_F(FlightPanelTest, ARefusedNumberSwallowsWhatIsDoneElsewhere) {
  Box.Write("missions/b.mis", FileText("a"));
  Open();
  ClickFlight(kFighter);
  Activate();
  const auto drag = [](QTreeView& list, int from, int to) {
    const auto at = [&](int row) { return list.visualRect(list.model()->index(row, 0)).center(); };
    QTest::mousePress(list.viewport(), Qt::LeftButton, {}, at(from));
    QMouseEvent move(QEvent::MouseMove, at(to), list.viewport()->mapToGlobal(at(to)), Qt::NoButton,
                     Qt::LeftButton, {});
    QApplication::sendEvent(list.viewport(), &move);
    QTest::mouseRelease(list.viewport(), Qt::LeftButton, {}, at(to));
  };
  const struct {
    const char* What;
    std::function<void()> Try;
  } rows[] = {{"flights", [&] { drag(List(), kBomber, kMystery); }},
              {"missions", [&] { drag(*Window->lstMission, 1, 0); }},
              {"double click",
               [&] { QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, QPoint(9, 9)); }},
              {"arrows", [&] { Click(Panel_().udFuel->Up); }},
              {"arrows of another box", [&] { Click(Panel_().udDStart->Up); }},
              {"arrow key", [&] { QTest::keyClick(Panel_().txtFuel, Qt::Key_Up); }},
              {"check box", [&] { Click(Panel_().chkPara); }}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.What);
    Panel_().txtFuel->setFocus();
    Panel_().txtFuel->setText("4o");
    row.Try();
    EXPECT_TRUE(Panel_().txtFuel->hasFocus());
    EXPECT_EQ(Panel_().txtFuel->text(), "40");
    EXPECT_EQ(List().SelectedRows(), QList<int>{kFighter});
    EXPECT_EQ(Row(), 0);
    EXPECT_EQ(Doc().CurFlight, kFighterFlight);
    EXPECT_FALSE(Lit());
  }
  drag(List(), kBomber, kMystery);
  EXPECT_EQ(List().SelectedRows(), (QList<int>{kBomber, kMystery})) << "a good number may be left";
}

TEST_F(FlightPanelTest, AnEditOfAGroupCopiesThePanel) {
  Open();
  SelectFighters();
  const Flight bomber = Record(kBomberFlight);
  Panel_().txtFuel->setText(QString::fromUtf8("4o\xD0\x96"));
  Panel_().cboSkill->SelectRow(4);
  EXPECT_EQ(Record(kFighterFlight).Fuel + Record(kLateFighterFlight).Fuel, "4040") << "no number";
  Panel_().cboWeap->SelectRow(1);
  Panel_().txtFuel->setText("65");
  Panel_().txtDStart->setText("15");
  Click(Panel_().chkPara);
  for (const int index : {kFighterFlight, kLateFighterFlight}) {
    const Flight& flight = Record(index);
    EXPECT_EQ(flight.Skill, "4") << "only the edit of one flight says Custom";
    EXPECT_EQ(flight.Weapons, "2xB");
    EXPECT_EQ(flight.Fuel, "65");
    EXPECT_EQ(flight.StartTime, "15");
  }
  EXPECT_EQ(Panel_().lblDelayStart->text(), "00:03");
  EXPECT_EQ(DelayColor(), QColor(Qt::red));
  EXPECT_EQ(Window->staBar->currentMessage(), "");
  EXPECT_EQ(Record(kFighterFlight).Parachute + Record(kLateFighterFlight).Parachute, "0")
      << "of one flight only";
  EXPECT_EQ(Record(kBomberFlight).Fuel, bomber.Fuel);

  ClickFlight(kBomber, Qt::LeftButton, Qt::ControlModifier);
  EXPECT_FALSE(Panel_().cboWeap->isEnabled());
  EXPECT_FALSE(Panel_().chkAI->isEnabled());
  Panel_().txtFuel->setText("30");
  EXPECT_EQ(Record(kBomberFlight).Fuel, "30");
  EXPECT_EQ(Record(kBomberFlight).Weapons, "default") << "not all are one aircraft";
  EXPECT_EQ(Record(kBomberFlight).Skill, "4");
  EXPECT_TRUE(Window->staBar->currentMessage().contains("now counts for 1 flight of custom"));

  const Flight before = Record(kFighterFlight);
  Panel().dtMission->setTime(QTime(5, 0));
  EXPECT_EQ(Record(kFighterFlight).Fuel, before.Fuel) << "showing a flight applies nothing";
  EXPECT_EQ(Record(kFighterFlight).Weapons, before.Weapons);
  EXPECT_EQ(Panel_().lblDelayStart->text(), "05:15");
  EXPECT_EQ(Panel_().cboWeap->currentText(), "2 x Bombs") << "of the group, not of the bomber";
  EXPECT_FALSE(Panel_().cboWeap->isEnabled() || Panel_().chkAI->isEnabled());
  EXPECT_EQ(Panel_().title(), "Multiple Select");
}

TEST_F(FlightPanelTest, AIOnlyAsksBeforeItTakesThePlayer) {
  Open();
  ClickFlight(kLateFighter);
  World_.Script.Expect("This will clear the player selected plane.\nIs this what you want to do?",
                       Answer::No);
  Click(Panel_().chkAI);
  EXPECT_FALSE(Panel_().chkAI->isChecked());
  EXPECT_EQ(Record(kLateFighterFlight).OnlyAI, "");
  EXPECT_EQ(Doc().Missions[0].Player, "r0101");
  World_.Script.Expect("This will clear the player selected plane.", Answer::Yes);
  Panel_().chkAI->setFocus();
  QTest::keyClick(Panel_().chkAI, Qt::Key_Space);
  EXPECT_EQ(Record(kLateFighterFlight).OnlyAI, "1");
  EXPECT_EQ(Doc().Missions[0].Player + Doc().Missions[0].PlayerNum, "");
  EXPECT_EQ(Window->staPanels[1]->text(), "");
}

TEST_F(FlightPanelTest, TheLockHoldsForEveryFlight) {
  Prefs.bLockWT = true;
  Open();
  for (const int row : {kFighter, kBomber, kLateFighter}) {
    ClickFlight(row);
    for (QWidget* control : std::initializer_list<QWidget*>{Panel_().cboWeap, Panel_().txtDStart,
                                                            Panel_().udDStart, Panel().dtMission})
      EXPECT_FALSE(control->isEnabled()) << control->objectName().toStdString();
    EXPECT_TRUE(Panel_().txtFuel->isEnabled());
  }
  SelectFighters();
  EXPECT_FALSE(Panel_().cboWeap->isEnabled());
  Prefs.bLockWT = false;
  Panel_().LockFlightControls(true);
  EXPECT_TRUE(Panel_().cboWeap->isEnabled() && Panel().dtMission->isEnabled());
}

TEST_F(FlightPanelTest, ALoadoutThatTheTableLacksIsLearnt) {
  Open();
  Record(kMysteryFlight).Weapons = "only here";
  ClickFlight(kMystery);
  EXPECT_EQ(Record(kMysteryFlight).Weapons, "only here") << "no list can spell it";
  Record(kFighterFlight).Weapons = "3xNew";
  ClickFlight(kFighter);
  QStringList rows;
  for (int row = 0; row < Panel_().cboWeap->count(); ++row) rows << Panel_().cboWeap->itemText(row);
  EXPECT_EQ(rows.join('|'), "Default|2 x Bombs|3xNew|Empty (No Ammo)");
  EXPECT_EQ(Panel_().cboWeap->currentText(), "3xNew");
  EXPECT_EQ(Record(kFighterFlight).Weapons, "3xNew");
}

}  // namespace
}  // namespace rws::test
