#include "editors/frmChgAC.h"
#include "editors/frmWP.h"
#include "editors/frmWPEdit.h"
#include "tests/mainwindow/flights_fixture.h"

namespace rws::test {
namespace {

class FlightMenuTest : public FlightsTest {
 protected:
  FlightMenuTest() {
    Open();
    HookDialogs();
  }

  void Choose(std::size_t entry) { Area().mnuAC[entry]->trigger(); }
  std::string Names() {
    std::vector<std::string> names;
    for (const auto& flight : Doc().Missions[0].Flights) names.push_back(flight.Name);
    return Joined(names);
  }
};

TEST_F(FlightMenuTest, DuplicatesChangesRemovesAndEditsARouteThroughToTheFile) {
  ClickFlight(kFighter);
  Work = [this](QDialog& dialog) {
    auto& form = dynamic_cast<frmWPEdit&>(dialog);
    EXPECT_EQ(form.fra1->title(), "Duplicate Flight - I-16");
    form.txtInput[3]->setText("2");
    Click(form.cmd[1]);
  };
  Choose(FlightArea::kDuplicate);
  EXPECT_EQ(Names(), "r0100|g0110|x0100|r0101|r0102|r0103");
  EXPECT_TRUE(Lit());

  ClickFlight(kBomber);
  Work = [this](QDialog& dialog) {
    auto& form = dynamic_cast<frmChgAC&>(dialog);
    form.lstPlanes->setFocus();
    QTest::keyClick(form.lstPlanes, Qt::Key_Home);
    QTest::keyClick(form.lstPlanes, Qt::Key_Down);
    QTest::keyClick(form.lstPlanes, Qt::Key_Up);
    Click(form.cmd[0]);
  };
  Choose(FlightArea::kChangeAircraft);
  EXPECT_EQ(Record(kBomberFlight).Class, "I_16");
  EXPECT_EQ(Record(kBomberFlight).Name, "g0100");

  ClickFlight(List().RowOf(kMysteryFlight));
  World_.Script.Expect("Are you sure?", Answer::Yes);
  Choose(FlightArea::kRemove);
  EXPECT_EQ(Names(), "r0100|g0100|r0101|r0102|r0103");

  ClickFlight(List().RowOf(0));
  Work = [this](QDialog& dialog) {
    auto& form = dynamic_cast<frmWP&>(dialog);
    form.grd->setFocus();
    form.grd->setCurrentIndex(form.grd->model()->index(1, 2));
    form.grd->edit(form.grd->currentIndex());
    QTest::keyClicks(form.grd->focusWidget(), "750");
    QTest::keyClick(form.grd->focusWidget(), Qt::Key_Return);
  };
  Choose(FlightArea::kWaypoints);
  Click(Window->cmd[frmRWS::kUpdate]);

  EXPECT_EQ(Names(), "r0100|g0100|r0101|r0102|r0103");
  for (const char* part :
       {"[r0100_Way]\r\n  NORMFLY 1.00 2.00 500.0 300.0 &0\r\n  NORMFLY 5.00 2.00 750.0 300.0 "
        "&0\r\n"
        "[g0100]\r\n  Planes 2\r\n  Skill0 3\r\n  Skill1 2\r\n  Class air.I_16\r\n",
        "[r0103_Way]\r\n  NORMFLY 21 22 520.0 300.0 &0\r\n  NORMFLY 25 22 520.0 300.0 &0\r\n"})
    EXPECT_TRUE(Contains(FileText("a"), part)) << FileText("a");
  EXPECT_EQ(List().RowCount(), 5) << "read again";
}

TEST_F(FlightMenuTest, ACopyTeachesNoAircraftTheLoadoutsOfAnother) {
  const auto& aircraft = Tables.Aircraft;
  Tables.Aircraft.Loadouts(1)[1] = {"4 x SC500", "4xSC500"};
  ClickFlight(kFighter);
  Record(kBomberFlight).Skill = "3";
  Record(kBomberFlight).Weapons = "4xSC500";
  Work = [](QDialog& dialog) { dynamic_cast<frmWPEdit&>(dialog).cmd[1]->click(); };
  Choose(FlightArea::kDuplicate);
  EXPECT_EQ(Panel_().title(), "Ju 88 - Flight of 2 - 4 x SC500") << "the first row is shown";
  EXPECT_EQ(Panel_().cboWeap->currentText(), "4 x SC500");
  for (const auto& row : aircraft) EXPECT_EQ(row.Weapons.size(), 3U) << row.Name;
}

TEST_F(FlightMenuTest, ASkinGoesToAllPlanesSelected) {
  auto rows = Tables.Aircraft.Rows();
  for (auto& aircraft : rows) aircraft.Folder = "i16";
  Tables.Aircraft = rows;
  Tables.Skins = {{"I16", Box.Path("I-16"), {"default", "Red.bmp", "Winter.bmp"}}};
  Record(kFighterFlight).Planes = "3";
  SelectFighters();
  const auto shown = [this](std::size_t plane) {
    const PlanePanel& panel = *Area().planes->fraPlane[plane];
    return panel.cboAPSkin->currentText().toStdString() + (panel.chkMark->isChecked() ? " m" : "");
  };
  const auto color = [this](std::size_t plane) {
    return Area().planes->fraPlane[plane]->lbl2->Color();
  };
  const auto choose = [&](int entry, const std::string& skin) {
    Area().mnuSkin->actions().at(entry)->trigger();
    for (const int index : {kFighterFlight, kLateFighterFlight})
      for (const int plane : {0, 1, 2}) {
        const PlaneSlot& slot = Record(index).PlaneSlots[static_cast<std::size_t>(plane)];
        const bool flies = plane < (index == kFighterFlight ? 3 : 2);
        EXPECT_EQ(slot.Skin, flies ? skin : "") << index << plane;
        EXPECT_EQ(slot.NumberOn, flies ? "0" : "");
      }
  };
  choose(2, "Winter.bmp");
  EXPECT_EQ(shown(0) + "|" + shown(1) + "|" + shown(2) + "|" + shown(3), "Winter|Winter|Winter|");
  EXPECT_FALSE(Area().mnuAC[FlightArea::kMarkings]->isChecked());
  EXPECT_TRUE(color(0) == LabelColor::Blue && color(1) == LabelColor::Blue);
  EXPECT_TRUE(Lit());
  choose(0, "");
  EXPECT_EQ(shown(0) + "|" + shown(1), "default|default");
  EXPECT_TRUE(color(0) == LabelColor::Black && color(1) == LabelColor::Black);
}

TEST_F(FlightMenuTest, TheMenuKeyOpensItAtTheRowOfItsFlight) {
  ClickFlight(kBomber);
  QPoint opened;
  Window->Popups.OpenMenu = [&](QMenu& menu, QPoint position) {
    EXPECT_EQ(&menu, Area().mnuAircraft);
    opened = position;
    EXPECT_FALSE(Area().mnuAC[FlightArea::kDuplicate]->isEnabled()) << "a flight not supported";
    Choose(FlightArea::kCopy);
  };
  QTest::keyClick(&List(), Qt::Key_Down);
  PressMenuKey(List());
  EXPECT_EQ(opened, BelowRow(List(), kMystery));
  EXPECT_EQ(World_.Clipboard.find("[x0100]\r\n"), 0U);
}

TEST_F(FlightMenuTest, TheLastFlightsCanBeRemoved) {
  ClickFlight(kBomber);
  for (int row = 1; row <= kLateFighter; ++row)
    ClickFlight(row, Qt::LeftButton, Qt::ControlModifier);
  World_.Script.Expect("Are you sure?", Answer::Yes);
  Choose(FlightArea::kRemove);
  EXPECT_EQ(List().RowCount(), 0);
  EXPECT_EQ(Panel_().title(), "None");
  EXPECT_FALSE(Panel_().txtFuel->isEnabled());
  EXPECT_TRUE(Lit());
}

}  // namespace
}  // namespace rws::test
