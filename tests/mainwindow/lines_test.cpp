#include "mainwindow/frmLines.h"
#include "session/doors.h"
#include "tests/mainwindow/unsaved_fixture.h"
#include "tools/frmChanges.h"

namespace rws::test {
namespace {

/** "b" holds a line that is lost when it is made anew. */
class LinesTest : public UnsavedTest {
 protected:
  LinesTest() {
    Doc().Untouched = UntouchedLines::Ask;
    Rich_ = Replace(MissionText(), "  Planes 2\r\n", "  Planes 2\r\n  spawn0 1_Static\r\n");
    // Showing alone would spell it otherwise.
    Rich_ = Replace(Rich_, "TIME 12.5", "TIME 6.7512");
    Box.Write("missions/b.mis", Rich_);
    ClickRow(1);
    Look();
  }
  /** The edits pause. */
  void Look() { EXPECT_TRUE(RunOut("linesTimer")); }
  std::string Pending() { return Window->cmdLines->text().toStdString(); }
  /** What an edit of the weather makes of the file when nothing else changes. */
  std::string Edited() { return Replace(Rich_, "CloudType 2", "CloudType 5"); }
  /** Answers the question about lines by one of its buttons. */
  void Answer_(frmLines::Command button, bool always = false) {
    Window->Popups.ShowDialog = [this, button, always](QDialog& dialog) {
      auto& form = dynamic_cast<frmLines&>(dialog);
      Asked = form.lst->item(0)->text().toStdString();
      form.chkAlways->setChecked(always);
      form.show();
      form.cmd[button]->click();
    };
  }

  std::string Rich_, Asked;
};

TEST_F(LinesTest, TheBarKeepsTheLinesOfAMission) {
  EXPECT_NE(Bars().find("lines that you did not edit"), std::string::npos) << Bars();
  EXPECT_NE(Pending().find(" rewritten"), std::string::npos);
  Edit();
  EXPECT_EQ(Press("Keep them"), "");
  EXPECT_EQ(Bars(), "");
  EXPECT_TRUE(Lit());
  Look();
  EXPECT_EQ(Pending(), "1 line changed");
  EXPECT_EQ(Undo(), "Keep the lines of b");
  Look();
  EXPECT_NE(Bars(), "") << "the question is open again";
  Redo();
  Update();
  EXPECT_EQ(FileText("b"), Edited());
  ClickRow(0);
  Look();
  EXPECT_EQ(Bars(), "") << "nothing would be lost";
  ClickRow(1);
  Look();
  EXPECT_EQ(Pending() + Bars(), "No line changes");
}

TEST_F(LinesTest, TheBarChoosesForAllMissionsAndUndoForNone) {
  Window->bars->findChild<MessageBar*>()->chk->setChecked(true);
  EXPECT_EQ(Press("Keep them"), "");
  EXPECT_EQ(Undo(), "");
  Edit();
  Update();
  EXPECT_EQ(FileText("b"), Edited());
}

TEST_F(LinesTest, UpdateAsksWhereNothingWasChosen) {
  Edit();
  Answer_(frmLines::kCancel);
  Update();
  EXPECT_EQ(Asked, "b");
  Window->Popups.ShowDialog = [](QDialog& dialog) {
    if (auto* form = dynamic_cast<frmLines*>(&dialog)) return form->cmd[frmLines::kShow]->click();
    EXPECT_FALSE(dynamic_cast<frmChanges&>(dialog).Choose);
  };
  Update();
  EXPECT_TRUE(Lit()) << "nothing was written";
  EXPECT_EQ(FileText("b"), Rich_);
  Answer_(frmLines::kKeep, true);
  Save();
  EXPECT_EQ(FileText("b"), Edited());
  EXPECT_EQ(Doc().Untouched, UntouchedLines::Keep);
}

TEST_F(LinesTest, WritingAnewIsAChoiceForTheRun) {
  EXPECT_EQ(Press("Write anew"), "");
  EXPECT_EQ(Undo(), "Write anew b");
  Look();
  EXPECT_NE(Bars(), "") << "the question is open again";
  Redo();
  Look();
  EXPECT_EQ(Bars(), "");
  Edit();
  Update();
  EXPECT_EQ(FileText("b").find("spawn0"), std::string::npos);
}

TEST_F(LinesTest, TargetsMayFollowAFlightThatGetsAnotherName) {
  ClickRow(0);
  auto& flights = Doc().Missions[0].Flights;
  auto& line = flights[1].Waypoints[0].Line;
  line = "  NORMFLY 1.00 2.00 500.0 300.0 r0100 0 &0";
  rws::Edit(World_, {"x", "Test"}, [&] { flights[2].Fuel = "7"; });
  EXPECT_EQ(Bars(), "") << "nothing has another name";
  rws::Edit(World_, {"x", "Test"}, [&] { flights[0].Name = "r0103"; });
  EXPECT_NE(Bars().find("\"r0100\": route of g0110, waypoint 0"), std::string::npos) << Bars();
  EXPECT_FALSE(Contains(Bars(), " more"));
  EXPECT_EQ(Press("Let them follow"), "");
  EXPECT_EQ(line, "  NORMFLY 1.00 2.00 500.0 300.0 r0103 0 &0");
  EXPECT_EQ(Undo(), "References of g0110");
  EXPECT_EQ(Doc().Missions[0].Flights[0].Name, "r0103");
  for (std::size_t i = 0; i < 6; ++i)
    flights[1 + i / 2].Waypoints[i % 2].Line = "  NORMFLY 1.00 2.00 500.0 300.0 r0103 0 &0";
  rws::Edit(World_, {"x", "Test"}, [&] { flights[0].Name = "r0100"; });
  EXPECT_TRUE(Contains(Bars(), "waypoint 1 and 2 more.")) << Bars();
}

}  // namespace
}  // namespace rws::test
