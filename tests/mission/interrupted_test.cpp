#include "mission/interrupted.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "mission/update_note.h"
#include "services/checksum.h"
#include "services/faults.h"
#include "tests/support/doubles.h"
#include "tests/support/failing_step.h"
#include "tests/support/sandbox.h"

namespace rws {
namespace {

using test::World;

const std::string kStamp = "03-04-26 05-06-07";

/** A program that starts after an Update of "m/a.mis" was cut off. */
struct Start {
  Start() { Box.MakeFolder("m"); }

  /** Leaves a copy of this content and a note on it. */
  std::string Leave(const std::string& name, const std::string& content,
                    const std::string& old = "old") const {
    const std::string copy = Box.Write("app/" + name, content);
    WriteNote(Services(), copy, {Box.Path("m/a.mis"), Sha1(old), Sha1("new")});
    return copy;
  }
  std::string Apps() const { return Box.Names("app"); }
  rws::Services& Services() const { return World_.Services; }

  test::Sandbox Box;
  mutable World World_{Box.Path("app")};
};

TEST(FindInterrupted, TellsWhatIsNeededAndDropsWhatIsDone) {
  using enum InterruptedState;
  struct Row {
    const char* What;
    /** Content of the copy and of the mission; null where there is none. */
    const char *Copy, *Mission;
    std::optional<InterruptedState> State;
    std::string Left;
    void (*Then)(const Start& at) = nullptr;
    bool HasNote = true;
  };
  const auto stepAside = [](const Start& at) {
    MoveWithNote(at.Services(), CopyPath(at.Services()), CopyPath(at.Services()) + kStamp);
  };
  const auto tearNote = [](const Start& at) {
    std::filesystem::resize_file(test::ToFsPath(NotePath(CopyPath(at.Services()))), 150);
  };
  const std::string both = "$$$TEMP,$$$TEMP.note",
                    aside = "$$$TEMP" + kStamp + ",$$$TEMP" + kStamp + ".note";
  const Row rows[] = {
      {"missing", "old", nullptr, Missing, both},
      {"torn", "old", "ne", Torn, both},
      {"emptied", "old", "", Torn, both},
      {"not begun", "old", "old", {}, ""},
      {"written", "old", "new", {}, ""},
      {"stepped aside", "old", nullptr, Missing, aside, stepAside},
      {"no note", "old", nullptr, Unknown, "$$$TEMP", nullptr, false},
      {"torn note", "old", nullptr, Unknown, both, tearNote},
      {"note on another copy", "other", nullptr, Unknown, both},
      {"note alone", "old", nullptr, {}, "", [](const Start& at) { at.Box.Remove("app/$$$TEMP"); }},
      {"half a copy",
       nullptr,
       nullptr,
       {},
       "$$$TEMP.rws0",
       [](const Start& at) { at.Box.Write("app/$$$TEMP.rws0", "ol"); }},
      {"dismissed", nullptr, nullptr, {}, "$$$TEMP1.kept", [](const Start& at) {
         at.Box.Write("app/$$$TEMP1.kept", "old");
       }}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.What);
    const Start at;
    at.Box.MakeFolder("app");
    if (row.Copy && row.HasNote) at.Leave("$$$TEMP", row.Copy);
    if (row.Copy && !row.HasNote) at.Box.Write("app/$$$TEMP", row.Copy);
    if (row.Mission) at.Box.Write("m/a.mis", row.Mission);
    if (row.Then) row.Then(at);
    const auto found = FindInterrupted(at.Services());
    ASSERT_EQ(found.size(), row.State ? 1U : 0U);
    EXPECT_EQ(at.Apps(), row.Left);
    if (!row.State) continue;
    EXPECT_EQ(found[0].State, *row.State);
    const bool known = row.State != InterruptedState::Unknown;
    EXPECT_EQ(found[0].Mission, known ? at.Box.Path("m/a.mis") : "");
    EXPECT_TRUE(at.Services().Files.FileExists(found[0].Copy));
    EXPECT_GT(found[0].Time.Year, 2020);
  }
}

/** A path may hold line ends, and a mission that cannot be read now may be read later. */
TEST(FindInterrupted, TakesOddPathsAndLeavesWhatItCannotRead) {
  if (!test::kPosixFiles) GTEST_SKIP() << test::kNeedsPosixFiles;
  const Start at;
  const std::string odd = at.Box.Write("m/\r\n\xE9.mis", "torn"), copy = at.Leave("$$$TEMP", "old");
  WriteNote(at.Services(), copy, {odd, Sha1("old"), Sha1("new")});
  ASSERT_EQ(FindInterrupted(at.Services()).size(), 1U);
  EXPECT_EQ(FindInterrupted(at.Services())[0].Mission, odd);
  test::FailSteps(at.Services().Files, "", odd);
  EXPECT_TRUE(FindInterrupted(at.Services()).empty());
  EXPECT_EQ(at.Apps(), "$$$TEMP,$$$TEMP.note");
}

TEST(FindInterrupted, PartsMissionAndBackup) {
  const Start at;
  const std::string mission = at.Box.Write("m/a.mis", "old");
  at.Box.Write("app/RWS Backup/b.bak", "other");
  const std::string backup = at.Box.Path("app/RWS Backup/a.mis.bak");
  at.Leave("$$$TEMP", "old");
  at.Services().Files.LinkOrCopy(mission, backup);
  EXPECT_TRUE(FindInterrupted(at.Services()).empty());
  at.Box.Write("m/a.mis", "edited by another program");
  EXPECT_EQ(at.Box.Read("app/RWS Backup/a.mis.bak"), "old");
  EXPECT_EQ(at.Apps() + at.Box.Names("app/RWS Backup"), "RWS Backupa.mis.bak,b.bak");
}

TEST(GiveBack, ReplacesNothingThatItDoesNotKnow) {
  const Start at;
  at.Leave("$$$TEMP", "old");
  auto found = FindInterrupted(at.Services());
  ASSERT_EQ(found.size(), 1U);
  at.Box.Write("m/a.mis", "made anew");
  EXPECT_FALSE(ResumeNext([&] { GiveBack(at.Services(), found[0]); }));
  found[0].State = InterruptedState::Unknown;
  EXPECT_FALSE(ResumeNext([&] { GiveBack(at.Services(), found[0]); }));
  EXPECT_EQ(at.Box.Read("m/a.mis") + "," + at.Apps(), "made anew,$$$TEMP,$$$TEMP.note");
}

TEST(Dismiss, KeepsEachCopyWithItsNote) {
  test::ForEachFailingStep([&](test::FailingStep& step) {
    const Start at;
    at.Box.Write("app/$$$TEMP" + kStamp + ".kept", "dismissed before");
    at.Leave("$$$TEMP", "old");
    const auto found = FindInterrupted(at.Services());
    ASSERT_EQ(found.size(), 1U);
    std::string kept;
    step.During(at.Services().Files,
                [&] { ResumeNext([&] { kept = Dismiss(at.Services(), found[0]); }); });
    SCOPED_TRACE(step.Action() + " " + step.Path());
    const std::string name = "$$$TEMP" + kStamp + " 2.kept";
    EXPECT_TRUE(kept.empty() ? step.Failed() : kept == at.Box.Path("app/" + name));
    const bool moved = at.Box.Exists("app/" + name);
    EXPECT_EQ(at.Box.Read(moved ? "app/" + name : "app/$$$TEMP"), "old");
    EXPECT_TRUE(ReadNote(at.Services(), at.Box.Path(moved ? "app/" + name : "app/$$$TEMP")));
    EXPECT_EQ(at.Box.Read("app/$$$TEMP" + kStamp + ".kept"), "dismissed before");
    EXPECT_EQ(FindInterrupted(at.Services()).size(), moved ? 0U : 1U);
  });
}

}  // namespace
}  // namespace rws
