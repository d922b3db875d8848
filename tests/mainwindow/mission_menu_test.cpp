#include "editors/frmBrief.h"
#include "editors/frmChgAC.h"
#include "editors/frmDogFight.h"
#include "editors/frmStatic.h"
#include "tests/mainwindow/window_fixture.h"

namespace rws::test {
namespace {

/** The menu over three missions, of which the second has a briefing. */
class MissionMenuTest : public WindowTest {
 protected:
  MissionMenuTest() {
    Box.Write("missions/b.properties", "Name Bridge\r\nShort \\n\r\nDescription \\n\r\n");
    OpenThree();
    ClickRow(1);
    HookDialogs();
  }

  /** Opens a fourth mission of these lines, joined by "|". */
  void OpenFourth(const char* lines) {
    Box.Write("missions/d.mis", CrlfText(lines));
    Window->Start();
    ClickRow(3);
  }
  void Choose(std::size_t entry) { Window->mnuMissionPop[entry]->trigger(); }
};

TEST_F(MissionMenuTest, TheBriefIsEditedBesideTheMission) {
  Work = [this](QDialog& dialog) {
    auto& form = dynamic_cast<frmBrief&>(dialog);
    EXPECT_EQ(form.Map + "|" + form.Weather + "|" + form.MisTime + "|" + form.Clouds,
              "|Hazy|12:30|1000");
    QTest::keyClicks(form.txtName, "The ");
    Click(form.cmd[1]);
  };
  Choose(frmRWS::kEditBrief);
  EXPECT_EQ(Box.Read("missions/b.properties"),
            "Name The Bridge\r\nShort \\n\\n\r\nDescription \\n\\n\r\n");
  EXPECT_FALSE(Lit());
}

TEST_F(MissionMenuTest, FilesTakeTheirBriefingAlong) {
  World_.Script.ExpectPath("SaveAs", Box.Path("missions/a 2.mis"));
  Choose(frmRWS::kSaveAs);
  EXPECT_EQ(Box.Names("missions"), "a 2.mis,a 2.properties,a.mis,b.mis,b.properties,c.mis");
  EXPECT_EQ(Window->lstMission->RowCount(), 4);
  EXPECT_EQ(Shown(), "b") << "found again in another row";
  EXPECT_EQ(Row(), 2);

  Box.MakeFolder("other");
  World_.Script.ExpectPath("Select a directory to move the mission to", Box.Path("other"));
  Choose(frmRWS::kMove);
  EXPECT_EQ(Box.Names("other"), "b.mis,b.properties");
  EXPECT_EQ(Shown(), "c") << "that one is gone; the row stays";

  ClickRow(0);
  World_.Script.Expect("Are you sure you want to delete\na 2?", Answer::Yes);
  Choose(frmRWS::kDelete);
  EXPECT_EQ(World_.Script.Boxes.back().Title, "Confirm Delete");
  EXPECT_EQ(Box.Names("missions"), "a.mis,c.mis");
  EXPECT_EQ(Window->lstMission->RowCount(), 2);
}

TEST_F(MissionMenuTest, TheOnlyMissionComesBackByUndoAndCanBeEdited) {
  for (const char* other : {"missions/b.mis", "missions/c.mis"}) Box.Remove(other);
  Window->Start();
  World_.Script.Expect("Are you sure you want to delete\na?", Answer::Yes);
  Choose(frmRWS::kDelete);
  EXPECT_FALSE(Window->flightArea->isEnabled());
  Window->mnuUndo->trigger();
  EXPECT_EQ(Window->lstMission->RowCount(), 1);
  EXPECT_TRUE(Window->flightArea->isEnabled());
  EXPECT_TRUE(Panel().cboWeather->isEnabled());
  Window->mnuRedo->trigger();
  EXPECT_EQ(Window->lstMission->RowCount(), 0);
  EXPECT_FALSE(Window->flightArea->isEnabled());
}

TEST_F(MissionMenuTest, AHalfDoneMoveOrDeleteMarksTheRow) {
  Box.MakeFolder("other");
  for (const bool moves : {true, false}) {
    SCOPED_TRACE(moves);
    Box.Write("missions/b.mis", MissionText());
    Window->Start();
    ClickRow(1);
    Edit();
    FailSteps(World_.Services.Files, moves ? "move" : "delete", "b.properties", "denied");
    if (moves)
      World_.Script.ExpectPath("Select a directory to move the mission to", Box.Path("other"));
    else
      World_.Script.Expect("Are you sure you want to delete\nb?", Answer::Yes);
    Choose(moves ? frmRWS::kMove : frmRWS::kDelete);
    EXPECT_TRUE(Window->staBar->currentMessage().contains("denied"));
    const auto* model = Window->lstMission->model();
    EXPECT_EQ(model->index(1, 0).data(Qt::AccessibleTextRole), "b, no longer in this folder");
    EXPECT_TRUE(model->index(1, 0).data(Qt::FontRole).value<QFont>().strikeOut());
    EXPECT_TRUE(Lit()) << "nothing is reread";

    World_.Script.Expect(kQuestion, Answer::No);
    ClickRow(2);
    EXPECT_EQ(Shown(), "c");
    ClickRow(1);
    EXPECT_EQ(Shown(), "c");
    EXPECT_EQ(Row(), 2);
    EXPECT_TRUE(Window->staBar->currentMessage().startsWith("\"b.mis\" is no"));
    EXPECT_FALSE(Doc().Closing);
    World_.Services.Files.BeforeStep = {};
    Window->Start();
    EXPECT_EQ(Window->lstMission->RowCount(), 2);
    EXPECT_EQ(Shown(), "c");
    EXPECT_EQ(model->index(1, 0).data(Qt::AccessibleTextRole), QVariant());
  }
}

TEST_F(MissionMenuTest, ParkedAircraftAreChangedInTheFile) {
  Tables.Aircraft.push_back({"", "Duck", "DUCK", "", "", {}});
  OpenFourth(
      "[MAIN]|[Wing]|[NStationary]|"
      "  0_Static vehicles.planes.Plane$GOOSE 1 10.00 20.00 360.00 0.0 de");
  EXPECT_TRUE(Panel().cmdModSA->isEnabled());
  Work = [this](QDialog& dialog) {
    if (auto* choice = dynamic_cast<frmChgAC*>(&dialog)) return choice->cmd[0]->click();
    auto& form = dynamic_cast<frmStatic&>(dialog);
    Click(form.cmd[1]);
    Click(form.cmd[2]);
  };
  Click(Panel().cmdModSA);
  EXPECT_TRUE(Lit());
  Click(Window->cmd[frmRWS::kUpdate]);
  EXPECT_TRUE(Contains(FileText("d"),
                       "  0_Static vehicles.planes.Plane$DUCK 1 10.00 20.00 360.00 0.0 de\r\n"));
}

TEST_F(MissionMenuTest, TheMenuKeyOpensItAtTheRowOfItsMission) {
  QPoint opened;
  Window->Popups.OpenMenu = [&](QMenu& menu, QPoint position) {
    EXPECT_EQ(&menu, Window->mnuMisPop);
    opened = position;
    Choose(frmRWS::kViewText);
  };
  PressKey(Qt::Key_Down);
  PressMenuKey(*Window->lstMission);
  EXPECT_EQ(opened, BelowRow(*Window->lstMission, 2));
  EXPECT_EQ(Joined(World_.ShellCalls), "text " + Box.Path("missions/c.mis"));
}

}  // namespace
}  // namespace rws::test
