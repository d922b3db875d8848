#include "tests/mainwindow/window_fixture.h"

namespace rws::test {
namespace {

constexpr char kQuestion[] = "Do you wish to save the changes to this mission?";
constexpr char kExitQuestion[] = "Would you like to save your updates before exiting?";

struct LeaveRow {
  const char* Name;
  int Mode;
  bool ByKey;
  bool Asks;
  Answer Answered;
  bool Leaves, Writes;
};

void PrintTo(const LeaveRow& row, std::ostream* out) { *out << row.Name; }

class LeaveTest : public WindowTest, public ::testing::WithParamInterface<LeaveRow> {};

TEST_P(LeaveTest, SettlesTheChangesOfTheMissionBeingLeft) {
  const LeaveRow& row = GetParam();
  OpenThree();
  Prefs.SavePromptMode = row.Mode;
  Edit();
  if (row.Asks) World_.Script.Expect(kQuestion, row.Answered);
  row.ByKey ? PressKey(Qt::Key_Down) : ClickRow(1);
  World_.Script.AllAsked();
  EXPECT_EQ(Row(), 1) << "the highlight stays on the new row in every case";
  EXPECT_EQ(Doc().CurMission, row.Leaves ? 1 : 0);
  EXPECT_EQ(FileText("a") != MissionText(), row.Writes);
  EXPECT_EQ(Lit(), !row.Leaves) << "the button is that of the mission shown";
  if (!row.Leaves) return;
  EXPECT_EQ(Panel().cboWeather->currentIndex(), 2) << "the other mission is shown";
  row.ByKey ? PressKey(Qt::Key_Up) : ClickRow(0);
  EXPECT_EQ(Panel().cboWeather->currentIndex(), row.Writes ? 5 : 2) << "the file's own state";
  EXPECT_FALSE(Lit());
}

INSTANTIATE_TEST_SUITE_P(
    Modes, LeaveTest,
    ::testing::Values(LeaveRow{"AskYesMouse", kSaveAsk, false, true, Answer::Yes, true, true},
                      LeaveRow{"AskYesKey", kSaveAsk, true, true, Answer::Yes, true, true},
                      LeaveRow{"AskNoMouse", kSaveAsk, false, true, Answer::No, true, false},
                      LeaveRow{"AskNoKey", kSaveAsk, true, true, Answer::No, true, false},
                      LeaveRow{"AskCancelMouse", kSaveAsk, false, true, Answer::Cancel, false,
                               false},
                      LeaveRow{"AskCancelKey", kSaveAsk, true, true, Answer::Cancel, false, false},
                      LeaveRow{"AlwaysMouse", kSaveAlways, false, false, Answer::Ok, true, true},
                      LeaveRow{"AlwaysKey", kSaveAlways, true, false, Answer::Ok, true, true},
                      LeaveRow{"NeverMouse", kSaveNever, false, false, Answer::Ok, true, false},
                      LeaveRow{"NeverKey", kSaveNever, true, false, Answer::Ok, false, false}),
    [](const auto& test) { return test.param.Name; });

TEST_F(WindowTest, LeavingByYesStaysWhenTheUpdateFails) {
  OpenThree();
  Edit();
  World_.Services.Files.BeforeStep = [](const FileStep& step) {
    if (step.Action == "create") throw FileFault(fault::FileIo, "write", step.Path, "disk full");
  };
  World_.Script.Expect(kQuestion, Answer::Yes);
  World_.Script.Expect("Update fail. Reason unknown. Mission file restored.");
  ClickRow(1);
  EXPECT_EQ(Doc().CurMission, 0);
  EXPECT_EQ(Doc().Missions[0].CloudType, "5");
  EXPECT_EQ(FileText("a"), MissionText());
}

TEST_F(WindowTest, ARightClickOpensTheMenuOnTheMissionThatWasCurrent) {
  OpenThree();
  int opened = 0, currentThen = -1, litThen = -1;
  Window->Popups.OpenMenu = [&](QMenu&, QPoint) {
    ++opened;
    currentThen = Doc().CurMission;
    litThen = Row();
  };
  ClickRow(2, Qt::RightButton);
  EXPECT_EQ(opened, 1);
  EXPECT_EQ(currentThen, 0);
  EXPECT_EQ(litThen, 0) << "what is lit is what the menu works on";
  EXPECT_EQ(Doc().CurMission, 2);
  EXPECT_EQ(Row(), 2);
}

TEST_F(WindowTest, ARightClickWhoseMenuRereadsTheDirectoryMovesToNoStrangeRow) {
  OpenThree();
  Window->Popups.OpenMenu = [&](QMenu&, QPoint) {
    World_.Services.Files.DeleteFile(Box.Path("missions/a.mis"));
    Doc().Missions.clear();
    Window->Start();
  };
  ClickRow(1, Qt::RightButton);
  EXPECT_EQ(Doc().CurMission, 0);
  EXPECT_EQ(Row(), 0);
}

TEST_F(WindowTest, AKeyThatWentDownElsewhereIsNotHeard) {
  OpenThree();
  Edit();
  World_.Script.Expect(kQuestion, Answer::Cancel);
  PressKey(Qt::Key_Down);
  QTest::keyRelease(Window->lstMission, Qt::Key_Escape);
  EXPECT_EQ(Doc().CurMission, 0) << "the key that closed the box must not ask again";
}

struct ExitRow {
  const char* Name;
  bool Edited;
  Answer Answered;
  bool Ends, Writes;
};

void PrintTo(const ExitRow& row, std::ostream* out) { *out << row.Name; }

class ExitTest : public WindowTest, public ::testing::WithParamInterface<ExitRow> {
 protected:
  void Run(const std::function<void()>& leave) {
    const ExitRow& row = GetParam();
    OpenThree();
    if (row.Edited) {
      Edit();
      World_.Script.Expect(kExitQuestion, row.Answered);
    }
    leave();
    QCoreApplication::processEvents();
    World_.Script.AllAsked();
    EXPECT_EQ(!Window->isVisible(), row.Ends);
    EXPECT_EQ(FileText("a") != MissionText(), row.Writes);
  }
};

TEST_P(ExitTest, ByButton) {
  Run([this] { Click(Window->cmd[frmRWS::kExit]); });
}
TEST_P(ExitTest, ByTitleBar) {
  Run([this] { Window->close(); });
}

INSTANTIATE_TEST_SUITE_P(Answers, ExitTest,
                         ::testing::Values(ExitRow{"Clean", false, Answer::Ok, true, false},
                                           ExitRow{"Yes", true, Answer::Yes, true, true},
                                           ExitRow{"No", true, Answer::No, true, false},
                                           ExitRow{"Cancel", true, Answer::Cancel, false, false}),
                         [](const auto& test) { return test.param.Name; });

TEST_F(WindowTest, ExitStaysOpenWhenTheUpdateFails) {
  OpenThree();
  Edit();
  World_.Services.Files.BeforeStep = [](const FileStep&) {
    throw FileFault(fault::FileIo, "use", "disk", "gone");
  };
  World_.Script.Expect(kExitQuestion, Answer::Yes);
  World_.Script.Expect("Update fail. Reason unknown. Mission file restored.");
  Click(Window->cmd[frmRWS::kExit]);
  EXPECT_TRUE(Window->isVisible());
}

TEST_F(WindowTest, TheMenuEndsUnaskedAndStoresThePlace) {
  OpenThree();
  Edit();
  Window->mnuExit->trigger();
  EXPECT_FALSE(Window->isVisible());
  EXPECT_EQ(FileText("a"), MissionText());
  EXPECT_EQ(World_.SettingTexts.count("software\\hollowbyte\\rws edit\\frmrwstop"), 1u);
}

TEST_F(WindowTest, ARunOnAGivenDirectoryLeavesTheStoredPlaceAlone) {
  OpenThree();
  Window->Arguments.ComLinePath = Doc().MissionDir;
  Window->mnuExit->trigger();
  EXPECT_EQ(World_.SettingTexts.count("software\\hollowbyte\\rws edit\\frmrwstop"), 0u);
}

}  // namespace
}  // namespace rws::test
