#include <optional>

#include "tests/mainwindow/window_fixture.h"

namespace rws::test {
namespace {

class LeaveTest : public WindowTest {
 protected:
  /** Three missions as new, the first one shown and, if wanted, edited. */
  void OpenAgain(bool edited = true) {
    Window.reset();
    Doc().Closing = false;
    Doc().CurMission = 0;
    ++World_.Clock.Hour;  // names the backups
    OpenThree();
    if (edited) Edit();
  }
  void FailEveryWrite() {
    FailSteps(World_.Services.Files, "create");
    World_.Script.Expect("Update fail. Reason unknown. Mission file restored.");
  }
  bool IsWritten() { return FileText("a") != MissionText(); }
  bool IsPlaceStored() {
    return World_.SettingTexts.count("software\\hollowbyte\\rws edit\\frmrwstop") > 0;
  }
};

TEST_F(LeaveTest, SettlesTheChangesOfTheMissionBeingLeft) {
  const struct {
    int Mode;
    std::optional<Answer> Answered;
    bool LeavesByMouse, LeavesByKey, Writes;
  } rows[] = {{kSaveAsk, Answer::Yes, true, true, true},
              {kSaveAsk, Answer::No, true, true, false},
              {kSaveAsk, Answer::Cancel, false, false, false},
              {kSaveAlways, {}, true, true, true},
              {kSaveNever, {}, true, false, false}};
  for (const auto& row : rows)
    for (const bool byKey : {false, true}) {
      SCOPED_TRACE(::testing::Message() << row.Mode << byKey << row.Writes << row.LeavesByMouse);
      OpenAgain();
      Prefs.SavePromptMode = row.Mode;
      if (row.Answered) World_.Script.Expect(kQuestion, *row.Answered);
      byKey ? PressKey(Qt::Key_Down) : ClickRow(1);
      World_.Script.AllAsked();
      const bool leaves = byKey ? row.LeavesByKey : row.LeavesByMouse;
      EXPECT_EQ(Row(), 1) << "the highlight stays on the new row in every case";
      EXPECT_EQ(Doc().CurMission, leaves ? 1 : 0);
      EXPECT_EQ(IsWritten(), row.Writes);
      EXPECT_EQ(Lit(), !leaves) << "the button is that of the mission shown";
      if (!leaves) continue;
      EXPECT_EQ(Panel().cboWeather->currentIndex(), 2) << "the other mission is shown";
      byKey ? PressKey(Qt::Key_Up) : ClickRow(0);
      EXPECT_EQ(Panel().cboWeather->currentIndex(), row.Writes ? 5 : 2) << "the file's own state";
      EXPECT_FALSE(Lit());
    }
}

TEST_F(LeaveTest, LeavingByYesStaysWhenTheUpdateFails) {
  OpenAgain();
  World_.Script.Expect(kQuestion, Answer::Yes);
  FailEveryWrite();
  ClickRow(1);
  EXPECT_EQ(Doc().CurMission, 0);
  EXPECT_EQ(Row(), 0) << "what is lit is what is shown";
  EXPECT_EQ(Doc().Missions[0].CloudType, "5");
  EXPECT_FALSE(IsWritten());
}

TEST_F(LeaveTest, ARightClickOpensTheMenuOnTheMissionThatWasCurrent) {
  OpenThree();
  std::vector<int> then;
  Window->Popups.OpenMenu = [&](QMenu&, QPoint) { then = {Doc().CurMission, Row()}; };
  ClickRow(2, Qt::RightButton);
  EXPECT_EQ(then, (std::vector<int>{0, 0})) << "what is lit is what the menu works on";
  EXPECT_EQ(Doc().CurMission, 2);
  EXPECT_EQ(Row(), 2);

  Window->Popups.OpenMenu = [&](QMenu&, QPoint) {
    World_.Services.Files.DeleteFile(Box.Path("missions/a.mis"));
    Doc().CurMission = 0;
    Doc().Missions.clear();
    Window->Start();
  };
  ClickRow(1, Qt::RightButton);
  EXPECT_EQ(Doc().CurMission, 0) << "the row holds another mission by now";
  EXPECT_EQ(Row(), 0);
}

TEST_F(LeaveTest, TheMenuLightsItsMission) {
  std::vector<int> lit;
  for (const bool byKey : {false, true}) {
    OpenAgain();
    Window->Popups.OpenMenu = [&](QMenu&, QPoint) { lit.push_back(Row()); };
    World_.Script.Expect(kQuestion, Answer::Cancel);
    PressKey(Qt::Key_Down);
    EXPECT_EQ(Row(), 1) << "after Cancel the other row stays lit";
    if (!byKey) World_.Script.Expect(kQuestion, Answer::Cancel);
    byKey ? PressMenuKey(*Window->lstMission) : ClickRow(1, Qt::RightButton);
  }
  EXPECT_EQ(lit, (std::vector<int>{0, 0}));
}

TEST_F(LeaveTest, ThereIsAlwaysALitRow) {
  OpenThree();
  const auto selected = [this] { return Window->lstMission->SelectedRows(); };
  auto* view = Window->lstMission->viewport();
  QTest::mouseClick(view, Qt::LeftButton, {}, QPoint(5, view->height() - 5));
  EXPECT_EQ(selected(), QList<int>{0});
  const QRect row = Window->lstMission->visualRect(Window->lstMission->model()->index(0, 0));
  QTest::mouseClick(view, Qt::LeftButton, Qt::ControlModifier, row.center());
  EXPECT_EQ(selected(), QList<int>{0});
  QTest::keyClick(Window->lstMission, Qt::Key_Down, Qt::ControlModifier);
  EXPECT_EQ(selected(), QList<int>{1});
  EXPECT_EQ(Doc().CurMission, 1);
}

TEST_F(LeaveTest, AKeyThatWentDownElsewhereIsNotHeard) {
  OpenAgain();
  World_.Script.Expect(kQuestion, Answer::Cancel);
  PressKey(Qt::Key_Down);
  QTest::keyRelease(Window->lstMission, Qt::Key_Escape);
  EXPECT_EQ(Doc().CurMission, 0) << "the key that closed the box must not ask again";
}

TEST_F(LeaveTest, ExitAsksWhenThereIsSomethingToSave) {
  const struct {
    std::optional<Answer> Answered;
    bool Ends, Writes;
  } rows[] = {{{}, true, false},
              {Answer::Yes, true, true},
              {Answer::No, true, false},
              {Answer::Cancel, false, false}};
  for (const auto& row : rows)
    for (const bool byTitleBar : {false, true}) {
      SCOPED_TRACE(::testing::Message() << row.Ends << row.Writes << byTitleBar);
      OpenAgain(row.Answered.has_value());
      if (row.Answered) World_.Script.Expect(kExitQuestion, *row.Answered);
      if (byTitleBar)
        Window->close();
      else
        Click(Window->cmd[frmRWS::kExit]);
      QCoreApplication::processEvents();
      World_.Script.AllAsked();
      EXPECT_EQ(!Window->isVisible(), row.Ends);
      EXPECT_EQ(IsWritten(), row.Writes);
    }
  OpenAgain();
  World_.Script.Expect(kExitQuestion, Answer::Yes);
  FailEveryWrite();
  Click(Window->cmd[frmRWS::kExit]);
  EXPECT_TRUE(Window->isVisible()) << "what could not be written lives in memory only";
  EXPECT_FALSE(Lit()) << "counts as saved until the next edit";
}

TEST_F(LeaveTest, TheMenuEndsUnaskedAndStoresThePlace) {
  OpenThree();
  Window->Arguments.ComLinePath = Doc().MissionDir;
  Window->mnuExit->trigger();
  EXPECT_FALSE(IsPlaceStored()) << "a run on a given directory leaves the stored place alone";
  OpenAgain();
  Window->mnuExit->trigger();
  EXPECT_FALSE(Window->isVisible());
  EXPECT_FALSE(IsWritten());
  EXPECT_TRUE(IsPlaceStored());
}

}  // namespace
}  // namespace rws::test
