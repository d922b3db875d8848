#include "tools/logic/edit_many_step.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "services/text.h"
#include "session/file_store.h"
#include "session/recording.h"
#include "tests/support/failing_step.h"
#include "tests/support/places.h"
#include "tests/support/session_desk.h"

namespace rws {
namespace {

class EditManyStep : public testing::Test {
 protected:
  EditManyStep() : desk_({"a", "b", "c"}) { desk_.World.Doc.Untouched = UntouchedLines::Keep; }

  EditReport Apply(const std::string& value = "50") {
    Session& session = desk_.World;
    EditOrder order;
    order.Sets.push_back(ParseAssignment("flight[*1].Fuel=" + value));
    const EditContext context = EditContextOf(session);
    const EditPlan plan = PlanEdits(context, order, paths_, EditHooksOf(session, nullptr));
    return ApplyAsStep(session, context, plan, nullptr);
  }
  /** Which of the missions have the fuel on disk. */
  std::string Has(const std::string& value) const {
    std::string all;
    for (const std::string name : {"a", "b", "c"}) {
      const std::string edited =
          Replace(test::TaggedMission(name),
                  "[r0101]\r\n  Planes 1\r\n  Skill 1\r\n  Class air.IL_2"
                  "\r\n  Fuel 100",
                  "[r0101]\r\n  Planes 1\r\n  Skill 1\r\n  Class air.IL_2\r\n  Fuel " + value);
      if (desk_.Box.Read("in/" + name + ".mis") == edited) all += name;
    }
    return all;
  }

  test::SessionDesk desk_;
  std::vector<std::string> paths_ = {desk_.Path("a"), desk_.Path("b"), desk_.Path("c")};
};

TEST_F(EditManyStep, IsOneStepThatCanBeTakenBackAndDoneAgain) {
  desk_.Run("go=b go=a");
  EXPECT_EQ(EndText(Apply()), "3 done");
  EXPECT_EQ(Has("50"), "abc");
  EXPECT_EQ(desk_.Steps(), "Edit of 3 missions");
  // What is in memory shows it, and has no edits.
  for (const char* name : {"a", "b"}) EXPECT_EQ(desk_.State(name), "100,50,100/2^100") << name;
  EXPECT_EQ(desk_.State("c"), "unread");
  desk_.Run("undo");
  EXPECT_TRUE(desk_.Last.Done && desk_.Last.Files && desk_.Last.LeftOut.empty());
  EXPECT_EQ(Has("100"), "abc");
  EXPECT_EQ(desk_.Steps(), "(Edit of 3 missions)");
  desk_.Run("go=a");
  EXPECT_EQ(desk_.State("a"), "100,100,100/2^100");
  desk_.Run("redo go=b");
  EXPECT_EQ(Has("50"), "abc");
  EXPECT_EQ(desk_.State("b"), "100,50,100/2^100");
  EXPECT_EQ(EndText(Apply()), "0 done");
  EXPECT_EQ(desk_.Steps(), "Edit of 3 missions");
}

TEST_F(EditManyStep, LeavesOutWhatIsUnsaved) {
  desk_.Run("fuel0=70 go=b");
  const EditReport report = Apply();
  EXPECT_EQ(EndText(report), "2 done, 1 left out");
  EXPECT_EQ(report.Left[0].Path, desk_.Path("a"));
  EXPECT_EQ(report.Left[0].Reason, "it has unsaved edits");
  EXPECT_EQ(Has("50"), "bc");
  EXPECT_EQ(desk_.State("a"), "70,100,100/2^100*!");
  desk_.Run("undo undo");
  EXPECT_EQ(desk_.State("a"), "100,100,100/2^100");
}

TEST_F(EditManyStep, KnowsAFileByEachOfItsNames) {
  if (!test::kPosixFiles) GTEST_SKIP() << test::kNeedsPosixFiles;
  desk_.Box.Remove("in/c.mis");
  desk_.Box.Link("in/c.mis", "in/a.mis");
  std::filesystem::create_directory_symlink(test::ToFsPath(desk_.Box.Path("in")),
                                            test::ToFsPath(desk_.Box.Path("other")));
  desk_.Run("reread go=c go=a go=b fuel0=70");
  paths_ = {desk_.Box.Path("other/a.mis"), desk_.Box.Path("other/b.mis")};
  const EditReport report = Apply();
  EXPECT_EQ(EndText(report), "1 done, 1 left out");
  EXPECT_EQ(report.Left[0].Reason, "it has unsaved edits");
  for (const char* name : {"a", "c"}) EXPECT_EQ(desk_.State(name), "100,50,100/2^100") << name;
  desk_.Run("undo go=a go=c");
  for (const char* name : {"a", "c"}) EXPECT_EQ(desk_.State(name), "100,100,100/2^100") << name;
  EXPECT_EQ(desk_.State("b"), "70,100,100/2^100*!");
}

TEST_F(EditManyStep, TakesBackEachFileThatNobodyHasChangedSince) {
  Apply();
  const std::string theirs = Replace(desk_.Box.Read("in/b.mis"), "TIME 12.5", "TIME 9.5");
  desk_.Box.Write("in/b.mis", theirs);
  desk_.Run("undo");
  EXPECT_TRUE(desk_.Last.Done);
  ASSERT_EQ(desk_.Last.LeftOut.size(), 1U);
  EXPECT_TRUE(Contains(desk_.Last.LeftOut[0], "b.mis\" has changed since"));
  EXPECT_EQ(Has("100"), "ac");
  EXPECT_EQ(desk_.Box.Read("in/b.mis"), theirs);
  desk_.Run("redo");
  EXPECT_EQ(desk_.Last.LeftOut.size(), 1U);
  EXPECT_EQ(Has("50"), "ac");
  EXPECT_EQ(desk_.Box.Read("in/b.mis"), theirs);
  // Nothing at all can be undone: the step stands.
  for (const std::string name : {"a", "b", "c"}) desk_.Box.Write("in/" + name + ".mis", theirs);
  desk_.Run("undo");
  EXPECT_FALSE(desk_.Last.Done);
  EXPECT_EQ(desk_.Steps(), "Edit of 3 missions");
}

TEST_F(EditManyStep, WritesNothingThatCannotBeKept) {
  FileSystem& files = desk_.World.Services.Files;
  test::FailSteps(files, "", "b.mis");
  EditReport report = Apply();
  files.BeforeStep = nullptr;
  EXPECT_EQ(EndText(report), "2 done, 1 left out");
  EXPECT_EQ(Has("50") + "|" + Has("100"), "ac|b");
  // Whatever fails, each file can be brought back.
  paths_.pop_back();
  const int steps = test::ForEachFailingStep([&](test::FailingStep& step) {
    for (const std::string name : {"a", "b", "c"})
      desk_.Box.Write("in/" + name + ".mis", test::TaggedMission(name));
    desk_.World.History = {};
    desk_.World.Services.Ask.MsgBox = [](auto&&...) { return Answer::Ok; };
    step.During(files, [&] { report = Apply(); });
    EXPECT_EQ(Has("50").size(), report.Done.size());
    EXPECT_EQ(Has("50").size() + Has("100").size(), 3U);
    if (report.Done.empty()) return;
    desk_.Run("undo");
    EXPECT_EQ(Has("100"), "abc") << step.Action() << step.Path();
  });
  EXPECT_GT(steps, 20);
}

}  // namespace
}  // namespace rws
