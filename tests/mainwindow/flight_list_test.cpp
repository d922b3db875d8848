#include <QHeaderView>

#include "tests/mainwindow/flights_fixture.h"

namespace rws::test {
namespace {

class FlightListTest : public FlightsTest {
 protected:
  FlightListTest() { Open(); }

  std::string Planes() {
    QStringList names;
    for (int row = 0; row < List().RowCount(); ++row) names << Cell(row, 0);
    return names.join("|").toStdString();
  }
};

TEST_F(FlightListTest, ShowsRowsSortedBySideAndPlane) {
  EXPECT_EQ(Planes(), "Ju 88|MYSTERY|I-16|I-16 Type 24");
  // The first row in sort order is shown, though it is not flight 0.
  EXPECT_EQ(Doc().CurFlight, 1);
  EXPECT_EQ(Area().fraFlight->title(), "Ju 88 - Flight of 2 - Default");
  EXPECT_EQ(Area().mnuAC[FlightArea::kWaypoints]->text(), "&Edit Waypoints (1)");
  EXPECT_EQ(Window->staPanels[1]->text(), "Group r0101 Plane 2");
}

TEST_F(FlightListTest, AHeaderTurnsTheOrderRoundWhicheverItIs) {
  const auto click = [&](int column) { Q_EMIT List().header()->sectionClicked(column); };
  click(1);
  EXPECT_EQ(Planes(), "I-16 Type 24|I-16|MYSTERY|Ju 88");
  click(2);
  EXPECT_EQ(Planes(), "Ju 88|MYSTERY|I-16|I-16 Type 24");
  EXPECT_EQ(List().Selection().Focused, 1) << "the selection stays with its flight";
  SelectFighters();
  click(0);
  EXPECT_EQ(Planes(), "I-16 Type 24|I-16|MYSTERY|Ju 88");
  EXPECT_EQ(List().SelectedRows(), (QList<int>{0, 1})) << "so does that of a group";
  EXPECT_EQ(List().Selection().Focused, kLateFighterFlight);
}

TEST_F(FlightListTest, SeveralRowsSwitchTheMode) {
  ClickFlight(2);
  ClickFlight(3, Qt::LeftButton, Qt::ControlModifier);
  EXPECT_EQ(List().Tag, "multiple");
  EXPECT_EQ(Area().fraFlight->title(), "Multiple Select");
  EXPECT_TRUE(Area().mnuAC[FlightArea::kFlightSkin]->isEnabled())
      << "one name goes on from the other";
  EXPECT_FALSE(Area().mnuAC[FlightArea::kDuplicate]->isEnabled());
  ClickFlight(0, Qt::LeftButton, Qt::ControlModifier);
  EXPECT_FALSE(Area().mnuAC[FlightArea::kFlightSkin]->isEnabled());
  ClickFlight(0);
  EXPECT_EQ(List().Tag, "single") << "a click on the focused row of a group leaves it";
  EXPECT_EQ(Area().fraGroup->title(), "Ju 88");
  EXPECT_TRUE(Area().mnuAC[FlightArea::kDuplicate]->isEnabled());
}

TEST_F(FlightListTest, SeveralRowsByTheKeyboardChangeTheMenuAlone) {
  ClickFlight(kFighter);
  const auto entries = [&] {
    std::string enabled;
    Window->Popups.OpenMenu = [&](QMenu&, QPoint) {
      for (const auto i : {FlightArea::kFlightSkin, FlightArea::kDuplicate, FlightArea::kWaypoints})
        enabled += Area().mnuAC[i]->isEnabled() ? '1' : '0';
    };
    PressMenuKey(List());
    return enabled;
  };
  EXPECT_EQ(entries(), "111");
  QTest::keyClick(&List(), Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_EQ(entries(), "100") << "one name goes on from the other";
  EXPECT_EQ(List().Tag, "single");
  EXPECT_EQ(Area().fraGroup->title(), "I-16 Type 24") << "the panels follow the focus";
  QTest::keyClick(&List(), Qt::Key_Home, Qt::ShiftModifier);
  EXPECT_EQ(entries(), "000");
  QTest::keyClick(&List(), Qt::Key_End);
  EXPECT_EQ(entries(), "111");
}

TEST_F(FlightListTest, ARowTakenOutOfTheSelectionIsNotTheOneShown) {
  ClickFlight(2);
  ClickFlight(3, Qt::LeftButton, Qt::ControlModifier);
  ClickFlight(3, Qt::LeftButton, Qt::ControlModifier);
  EXPECT_EQ(List().SelectedRows(), QList<int>{2});
  EXPECT_EQ(Doc().CurFlight, 0);
  EXPECT_EQ(Area().fraGroup->title(), "I-16");
}

TEST_F(FlightListTest, ARightClickOpensTheMenuOfItsOwnFlight) {
  std::string shown;
  Window->Popups.OpenMenu = [&](QMenu&, QPoint) { shown = Area().fraGroup->title().toStdString(); };
  ClickFlight(0, Qt::RightButton);
  EXPECT_EQ(shown, "Ju 88") << "also on the row that is current already";
  ClickFlight(1, Qt::RightButton);
  EXPECT_EQ(shown, "MYSTERY");
  EXPECT_FALSE(Area().mnuAC[FlightArea::kDuplicate]->isEnabled());
  EXPECT_FALSE(Area().fraFlight->CurAircraftOK);
  ClickFlight(2);
  EXPECT_TRUE(Area().mnuAC[FlightArea::kFlightSkin]->isEnabled());
  EXPECT_FALSE(Area().mnuAC[FlightArea::kDuplicate]->isEnabled())
      << "decided by the flight that was left";
}

TEST_F(FlightListTest, AFlightWithoutAWholeNameLeavesNoPanelOfAnotherMission) {
  std::vector<std::string> lines = {"[MAIN]", "[Wing]", "  g0110", "  r"};
  AddFlight(lines, "g0110", "JU_88", {"  Skill 1"});
  AddFlight(lines, "r", "I_16", {"  Skill 1"});
  Box.Write("missions/b.mis", Crlf(lines));
  Window->Start();
  ClickFlight(kFighter);
  ClickRow(1);
  EXPECT_EQ(List().RowCount(), 1);
  EXPECT_FALSE(Panel_().txtFuel->isEnabled());
  ClickFlight(0);
  EXPECT_TRUE(Panel_().txtFuel->isEnabled());
  EXPECT_EQ(Area().fraGroup->title(), "Ju 88");
}

TEST_F(FlightListTest, CountsTheAircraft) {
  World_.Script.Expect(" * Red Army *\r\n    2 - I-16\r\n    2 - I-16 Type 24\r\n");
  Click(Window->missionPanel->cmdCount);
  EXPECT_EQ(World_.Script.Boxes[0].Title, "a");
  EXPECT_EQ(World_.Script.Boxes[0].Icon, Icon::Information);
}

}  // namespace
}  // namespace rws::test
