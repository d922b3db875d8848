#include "session/recovery.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <optional>

#include "mission/fields.h"
#include "mission/kept_reader.h"
#include "mission/reader.h"
#include "mission/writer.h"
#include "services/paths.h"
#include "services/text.h"
#include "session/current.h"
#include "session/doors.h"
#include "session/frozen.h"
#include "session/journal.h"
#include "session/lines_rule.h"
#include "session/packing.h"
#include "session/recording.h"
#include "session/relist.h"
#include "session/saving.h"
#include "tests/support/failing_step.h"
#include "tests/support/session_desk.h"

namespace rws::test {
namespace {

constexpr char kFolder[] = "program/Recovery";

/** The next start: the same disk, nothing in memory. */
struct NextStart {
  explicit NextStart(const SessionDesk& desk) : Box(desk.Box) {
    W.Services.AppPath = desk.World.Services.AppPath;
    W.Prefs.bBackup = false;
    OpenFolderKeeping(W, Box.Path("in"));
    Found = FindRecovered(W.Services);
  }
  std::vector<std::string> Restore() { return RestoreRecovered(W, State, Found); }
  /** A later edit of the first mission. */
  void EditAnew() {
    W.Clock.Day = 5;
    LoadMission(W.Doc, W.Services, 0);
    NoteRead(W, 0);
    Edit(W, {nullptr, "Fuel"}, [&] { W.Doc.Missions[0].Flights[0].Fuel = "77"; });
    EXPECT_EQ(KeepUnsaved(W, State), "");
  }
  bool Save(const std::string& path) {
    W.Doc.CurMission = static_cast<int>(MissionAt(W.Doc, path));
    return SaveOne(W, path, {});
  }

  const Sandbox& Box;
  World W;
  RecoveryState State;
  std::vector<Recovered> Found;
};

std::string EditsFiles(const SessionDesk& desk) {
  std::string names;
  const std::string all = desk.Box.Names(kFolder);
  for (const auto name : SplitAt(all, ','))
    if (name.ends_with(".edits")) names += (names.empty() ? "" : ",") + std::string(name);
  return names;
}

/** An odd value for each kind of field. */
template <class Value>
void MakeOdd(Value& value, int& seed) {
  if constexpr (kIsText<Value>) {
    value = std::string("\x80\xFF:\0 3:\r\n", 9) + std::to_string(seed++);
  } else if constexpr (std::is_same_v<Value, LineArray>) {
    value = LineArray::FromFile("a\r\n\xE9\r\n\r\n" + std::to_string(seed++) + "\r\n");
  } else if constexpr (std::is_same_v<Value, bool>) {
    value = seed++ % 2 == 0;
  } else if constexpr (std::is_same_v<Value, double>) {
    constexpr double kOdd[] = {-0.1, 1e300, 1.0 / 3, -INFINITY, 5e-324};
    value = kOdd[seed++ % 5];
  } else if constexpr (std::is_arithmetic_v<Value>) {
    value = static_cast<Value>(-7 * ++seed);
  } else if constexpr (requires { FieldsOf<Value>::kTable; }) {
    ForEachField<Value>([&](const auto& field) { MakeOdd(value.*field.Pointer, seed); });
  } else {
    if constexpr (requires { value.resize(2); }) value.resize(2);
    for (auto& element : value) MakeOdd(element, seed);
  }
}

TEST(Recovery, EveryFieldComesBack) {
  Mission mission;
  int seed = 0;
  MakeOdd(mission, seed);
  const std::string packed = PackMission(mission);
  const Mission unpacked = UnpackMission(packed);
  EXPECT_EQ(PackMission(unpacked), packed);
  EXPECT_EQ(Freeze(unpacked, Freeze(mission, nullptr))->Flights.size(), 2u);
  const auto frozen = Freeze(mission, nullptr);
  EXPECT_EQ(Freeze(unpacked, frozen), frozen);
}

TEST(Recovery, UnsavedEditsOutliveTheProgram) {
  SessionDesk desk({"a", "b", "c"});
  desk.Run("fuel0=5 base=\xC4 line=\xFF go=b weather=4 go=c fuel1=9 save keep");
  const NextStart unread(desk);
  ASSERT_EQ(unread.Found.size(), 2u);
  EXPECT_EQ(unread.Found[0].Path, desk.Path("a"));
  EXPECT_EQ(unread.Found[0].Time, "2026-03-04 05:06:07");
  EXPECT_FALSE(HasChangedSince(unread.W.Services, unread.Found[0]));
  EXPECT_TRUE(Contains(TextOf(unread.W.Services, unread.Found[0]), "  Fuel 5\r\n"));
  Recovered told;
  ReadKeptMission(desk.World.Doc, desk.World.Services, told.Mission, "[MAIN]\n army 1");
  told.Mission.Army = "2";
  EXPECT_EQ(TextOf(desk.World.Services, told), "[MAIN]\n army 2");

  NextStart next(desk);
  EXPECT_EQ(next.Restore(), (std::vector{desk.Path("a"), desk.Path("b")}));
  EXPECT_EQ(UnsavedMissions(next.W), (std::vector{desk.Path("a"), desk.Path("b")}));
  EXPECT_EQ(UndoTitle(next.W), "Restored edits");
  for (const char* name : {"a", "b"}) {
    Document was = desk.World.Doc, is = next.W.Doc;
    LineArray wasLines, isLines;
    const std::size_t row = desk.Row(name);
    BuildMissionFile(was, desk.World.Services, wasLines, row, {});
    BuildMissionFile(is, next.W.Services, isLines, row, {});
    EXPECT_EQ(isLines.FileText(), wasLines.FileText());
  }
  // One step; nothing on disk goes before they are saved, and then it goes.
  EXPECT_EQ(KeepUnsaved(next.W, next.State), "");
  const std::string kept = EditsFiles(desk);
  EXPECT_EQ(std::count(kept.begin(), kept.end(), ','), 1);
  ASSERT_TRUE(UndoStep(next.W).Done);
  EXPECT_EQ(UnsavedMissions(next.W), std::vector<std::string>());
  ASSERT_TRUE(RedoStep(next.W).Done);
  EXPECT_EQ(UnsavedMissions(next.W).size(), 2u);
  EXPECT_TRUE(next.Save(desk.Path("a")));
  EXPECT_EQ(KeepUnsaved(next.W, next.State), "");
  EXPECT_EQ(EditsFiles(desk).find(','), std::string::npos);
  EXPECT_NE(desk.Box.Read("in/a.mis").find("  Fuel 5\r\n"), std::string::npos);
  EXPECT_TRUE(desk.Box.Read("in/a.mis").ends_with("\xFF\r\n"));
  while (UndoStep(next.W).Done) continue;
  EXPECT_EQ(UnsavedMissions(next.W), std::vector{desk.Path("a")});
}

TEST(Recovery, EditsOfKeptLinesAreTakenBackBehindASave) {
  for (const bool saved : {true, false}) {
    SessionDesk desk({"a"});
    const std::string text = Replace(TaggedMission("a"), "[r0100]\r\n", "[r0100]\r\n spawn0 x\r\n");
    desk.Box.Write("in/a.mis", text);
    desk.Run("reread");
    ChooseLines(desk.World, 0, UntouchedLines::Keep);
    desk.Run("weather=5 keep");
    NextStart next(desk);
    next.W.Doc.Untouched = UntouchedLines::Ask;
    next.W.AskLines = [](const auto&) { return std::optional(UntouchedLines::Keep); };
    next.Restore();
    ASSERT_TRUE(!saved || next.Save(desk.Path("a")));
    const Mission& mission = next.W.Doc.Missions[0];
    ASSERT_TRUE(UndoStep(next.W).Done);
    EXPECT_EQ(mission.CloudType, "2");
    EXPECT_FALSE(mission.KeepsLines);
    EXPECT_EQ(IsUnsaved(next.W, 0), saved);
    ASSERT_TRUE(RedoStep(next.W).Done);
    EXPECT_EQ(mission.CloudType, "5");
    EXPECT_TRUE(mission.KeepsLines);
    EXPECT_EQ(IsUnsaved(next.W, 0), !saved);
    ASSERT_TRUE(next.Save(desk.Path("a")));
    EXPECT_EQ(desk.Box.Read("in/a.mis"), Replace(text, "CloudType 2", "CloudType 5"));
    ASSERT_TRUE(UndoStep(next.W).Done);
    ASSERT_TRUE(next.Save(desk.Path("a")));
    EXPECT_EQ(desk.Box.Read("in/a.mis"), text);
  }
}

TEST(Recovery, AnAddedFlightGoesOnLightingUpdate) {
  SessionDesk desk({"a"});
  auto& flights = desk.World.Doc.Missions[0].Flights;
  Edit(desk.World, {nullptr, "Paste"}, [&] { flights.push_back(flights[0]); });
  desk.Run("keep");
  NextStart next(desk);
  next.Restore();
  EXPECT_TRUE(MissionChanged(next.W.Doc, 0));
}

TEST(Recovery, FilesComeAndGoWithWhatIsUnsaved) {
  struct Row {
    const char* Words;
    int Files;
  };
  for (const auto& row : {Row{"fuel0=5 keep", 1},
                          {"fuel0=5 keep fuel0=100 keep", 0},
                          {"fuel0=5 keep undo keep", 0},
                          {"fuel0=5 keep undo redo keep", 1},
                          {"fuel0=5 keep save keep", 0},
                          {"fuel0=5 keep save", 0},
                          {"fuel0=5 save undo keep", 1},
                          {"fuel0=5 keep drop keep", 0},
                          {"base=x go=b base=x keep", 2},
                          {"base=x keep reread keep", 0},
                          {"show0=5 keep", 0},
                          {"fuel0=5 gone=a relist keep", 1},
                          {"gone=a fuel0=5 relist keep", 1}}) {
    SCOPED_TRACE(row.Words);
    SessionDesk desk({"a", "b"});
    desk.Run(row.Words);
    EXPECT_EQ(FindRecovered(desk.World.Services).size(), static_cast<std::size_t>(row.Files));
  }
}

TEST(Recovery, DamagedFilesAreToldAndChangeNothing) {
  SessionDesk desk({"a"});
  desk.Run("fuel0=5 keep");
  const std::string name = std::string(kFolder) + "/" + EditsFiles(desk);
  const std::string whole = desk.Box.Read(name);
  std::vector<std::string> torn = {whole + "x", "", "\n\n\n\n", std::string(1000, '\0')};
  for (std::size_t cut = 0; cut < whole.size(); cut += 100) {
    torn.push_back(whole.substr(0, cut));
    torn.push_back(whole);
    torn.back()[cut] ^= 1;
  }
  for (const auto& bytes : torn) {
    desk.Box.Write(name, bytes);
    NextStart next(desk);
    ASSERT_EQ(next.Found.size(), 1u);
    EXPECT_NE(next.Found[0].Fault, "");
    EXPECT_TRUE(next.Restore().empty());
    EXPECT_EQ(UndoTitle(next.W) + Joined(UnsavedMissions(next.W)), "");
  }
  std::string other = whole;
  other[other.find('\n') - 1] ^= 1;
  desk.Box.Write(name, other);
  EXPECT_EQ(FindRecovered(desk.World.Services)[0].Fault,
            "Another version of the program has written it.");
}

TEST(Recovery, AMissionThatHasGoneGetsItsRowAndItsFileAgain) {
  SessionDesk desk({"a", "b"});
  desk.Run("fuel0=5 keep gone=a");
  for (const bool listed : {true, false}) {
    if (!listed) desk.Run("gone=b");
    NextStart next(desk);
    EXPECT_TRUE(HasChangedSince(next.W.Services, next.Found[0]));
    next.Restore();
    ASSERT_EQ(UnsavedMissions(next.W), std::vector{desk.Path("a")});
    // Taken back and done again, the edits are still the only ones there are.
    EXPECT_TRUE(UndoStep(next.W).Done);
    EXPECT_TRUE(RedoStep(next.W).Done);
    ASSERT_EQ(UnsavedMissions(next.W), std::vector{desk.Path("a")});
    EXPECT_EQ(RelistFolder(next.W).Gone.size(), 1u);
    ASSERT_TRUE(next.Save(desk.Path("a")));
    EXPECT_NE(desk.Box.Read("in/a.mis").find("  Fuel 5\r\n"), std::string::npos);
    desk.Box.Remove("in/a.mis");
  }
}

TEST(Recovery, AMissionOfAnotherNameIsKnownByWhatItHolds) {
  const struct {
    /** What stands there instead of "a", with the text of it; "b" has edits of its own. */
    const char *Instead, *Found;
  } rows[] = {{"z.mis", "z.mis"}, {"z.mistmp", "z.mistmp"}, {"b.mis", "a.mis"}};
  for (const auto& row : rows) {
    SessionDesk desk({"a", "b"});
    desk.Box.Write(std::string("in/") + row.Instead, TaggedMission("a"));
    desk.Run("reread fuel0=5 go=b base=x keep gone=a");
    const auto found = FindRecovered(desk.World.Services);
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[*row.Found == 'a' ? 0 : 1].Path, desk.Box.Path("in/") + row.Found);
  }
}

TEST(Recovery, AFileThatHasChangedSinceIsAskedAbout) {
  SessionDesk desk({"a"});
  desk.Run("fuel0=5 keep");
  desk.Box.Write("in/a.mis", TaggedMission("1999"));
  NextStart next(desk);
  EXPECT_TRUE(HasChangedSince(next.W.Services, next.Found[0]));
  next.Restore();
  next.W.Script.Expect("Another program has changed", Answer::No);
  EXPECT_FALSE(next.Save(desk.Path("a")));
  EXPECT_EQ(desk.Box.Read("in/a.mis"), TaggedMission("1999"));
  EXPECT_EQ(UnsavedMissions(next.W), std::vector{desk.Path("a")});
}

/** Whatever fails: what was kept before is still kept, whole. */
TEST(Recovery, AFailureLeavesWhatWasKept) {
  const int steps = ForEachFailingStep([](FailingStep& step) {
    SessionDesk desk({"a", "b", "c"});
    desk.Run("fuel0=5 go=b base=x go=c fuel0=6 keep fuel0=7 go=a undo go=b base=y");
    RecordFiles(desk.World, "Rename",
                [&] { desk.World.Services.Files.MoveFile(desk.Path("b"), desk.Path("z")); });
    std::string reason;
    step.During(desk.World.Services.Files,
                [&] { reason = KeepUnsaved(desk.World, desk.Recovery); });
    EXPECT_EQ(reason.empty(), !step.Failed());
    if (!step.Failed()) return;
    EXPECT_NE(reason.find(step.Path()), std::string::npos) << reason;
    for (const auto& found : FindRecovered(desk.World.Services)) EXPECT_EQ(found.Fault, "");
    EXPECT_GE(FindRecovered(desk.World.Services).size(), 2u);
    desk.Run("keep");
    EXPECT_EQ(FindRecovered(desk.World.Services).size(), UnsavedMissions(desk.World).size());
  });
  EXPECT_GT(steps, 5);
}

/** One that cannot be kept is no reason not to keep the others. */
TEST(Recovery, EachMissionIsKeptWhateverBecomesOfTheOthers) {
  SessionDesk desk({"a", "b", "c"});
  desk.Run("base=x go=b base=x");
  desk.World.Services.Files.BeforeStep = [](const FileStep& step) {
    if (GetFileName(step.Path).starts_with("a-"))
      throw FileFault(fault::FileIo, step.Action, step.Path, "odd name");
  };
  EXPECT_NE(KeepUnsaved(desk.World, desk.Recovery).find("odd name"), std::string::npos);
  EXPECT_TRUE(Contains(Joined(desk.World.Log), "odd name"));
  ASSERT_EQ(FindRecovered(desk.World.Services).size(), 1u);
  EXPECT_EQ(FindRecovered(desk.World.Services)[0].Path, desk.Path("b"));
  // Nor does it take the file of one that has got its name.
  desk.Run("go=c base=y");
  RecordFiles(desk.World, "Rename", [&] {
    desk.World.Services.Files.MoveFile(desk.Path("a"), desk.Path("z"));
    desk.World.Services.Files.MoveFile(desk.Path("c"), desk.Path("a"));
  });
  desk.World.Services.Files.BeforeStep = nullptr;
  desk.Run("keep");
  EXPECT_EQ(FindRecovered(desk.World.Services).size(), 3u);
}

TEST(Recovery, EditsOfAMissionThatHasGoneAreNotForItsNamesake) {
  SessionDesk desk({"a", "b"});
  desk.Run("fuel0=5 go=b fuel0=7 keep gone=a");
  RecordFiles(desk.World, "Rename",
              [&] { desk.World.Services.Files.MoveFile(desk.Path("b"), desk.Path("a")); });
  desk.Run("keep");
  const auto found = FindRecovered(desk.World.Services);
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(found[0].Mission.Flights[0].Fuel, "7");
}

TEST(Recovery, OddNamesAreKept) {
  if (!kPosixFiles) GTEST_SKIP() << kNeedsPosixFiles;
  std::vector<std::string> names = {std::string(200, 'x')};
  for (int i = 0; i < 48; ++i) names[0] += i % 2 == 0 ? '\xC3' : '\xA9';
  names.push_back("two\nlines");
  for (const auto& name : names) {
    SessionDesk desk({name});
    desk.Run("fuel0=5 keep");
    ASSERT_EQ(FindRecovered(desk.World.Services).size(), 1u);
    EXPECT_EQ(FindRecovered(desk.World.Services)[0].Fault, "");
    EXPECT_EQ(FindRecovered(desk.World.Services)[0].Path, desk.Path(name));
  }
}

TEST(Recovery, EditsThatWereRestoredOntoOthersComeBackOnTop) {
  SessionDesk desk({"a"});
  desk.Run("fuel0=5 keep");
  NextStart second(desk);
  second.EditAnew();
  second.Restore();
  second.W.Clock.Day = 6;
  EXPECT_EQ(KeepUnsaved(second.W, second.State), "");
  NextStart third(desk);
  third.Restore();
  EXPECT_EQ(third.W.Doc.Missions[0].Flights[0].Fuel, "5");
}

/** A run that does not restore what an earlier one has left writes beside it. */
TEST(Recovery, EditsOfAnEarlierRunStay) {
  SessionDesk desk({"a"}, "out/a.mis=" + TaggedMission("out"));
  desk.Run("fuel0=5 keep");
  const std::string first = EditsFiles(desk),
                    bytes = desk.Box.Read(std::string(kFolder) + "/" + first);
  NextStart second(desk);
  OpenFolderKeeping(second.W, desk.Box.Path("out"));
  for (const char* folder : {"in", "out"}) {
    OpenFolderKeeping(second.W, desk.Box.Path(folder));
    RestoreRecovered(second.W, second.State, {});
    second.EditAnew();
  }
  EXPECT_EQ(desk.Box.Read(std::string(kFolder) + "/" + first), bytes);
  ASSERT_EQ(FindRecovered(desk.World.Services).size(), 3u);

  // Where all is restored, a mission with two files takes no other along a second time.
  NextStart all(desk);
  all.Restore();
  for (const auto& [path, kept] : all.State.Written)
    EXPECT_EQ(std::count(kept.Earlier.begin(), kept.Earlier.end(), kept.File), 0) << path;
  EXPECT_EQ(KeepUnsaved(all.W, all.State), "");
  EXPECT_EQ(FindRecovered(desk.World.Services).size(), 3u);

  // The later one of two is what is restored; the other goes with it once all is saved.
  NextStart third(desk);
  std::erase_if(third.Found, [&](const auto& edits) { return edits.Path != desk.Path("a"); });
  third.Restore();
  EXPECT_EQ(third.W.Doc.Missions[0].Flights[0].Fuel, "77");
  ASSERT_TRUE(third.Save(desk.Path("a")));
  EXPECT_EQ(KeepUnsaved(third.W, third.State), "");
  EXPECT_EQ(FindRecovered(desk.World.Services).size(), 1u);
}

}  // namespace
}  // namespace rws::test
