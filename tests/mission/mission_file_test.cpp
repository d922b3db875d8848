#include "mission/mission_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <set>

#include "mission/interrupted.h"
#include "mission/reader.h"
#include "mission/update.h"
#include "mission/update_note.h"
#include "mission/writer.h"
#include "services/faults.h"
#include "services/setting_values.h"
#include "services/text.h"
#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"

namespace rws {
namespace {

using test::CrlfText;
using test::World;

const std::string kStamp = "03-04-26 05-06-07";
const std::string kEarlierBackup = "earlier backup", kEarlierCopy = "earlier copy";

struct Situation {
  bool Backups, HasBackup, HasCopy;
};

/** Which of the steps fail: those for which this is true, steps counting from 0. */
using Failing = std::function<bool(int step, std::string_view action)>;

/** An edited mission on disk and one Update of it. The mission is larger than one chunk of writing,
    so that half a file can stand on disk. */
class Update {
 public:
  explicit Update(const Situation& situation) : situation_(situation), world_(box_.Path("app")) {
    std::string tail = CrlfText("[NStationary]");
    for (int i = 0; i < 3200; ++i) tail += "  " + std::to_string(i) + "_Static wagon\r\n";
    old_ = CrlfText("[MAIN]|  army 1|[Wing]|[x_Way]") + tail;
    new_ = CrlfText("[MAIN]|  army 1|  player r0100|[Wing]") + tail;
    box_.Write("m/m.mis", old_);
    box_.MakeFolder("app");
    if (situation.HasBackup) box_.Write("app/RWS Backup/m.mis.bak", kEarlierBackup);
    if (situation.HasCopy) box_.Write("app/$$$TEMP", kEarlierCopy);
    world_.Prefs.bBackup = situation.Backups;
    world_.Doc.MissionFiles = {box_.Path("m/m.mis")};
    LoadMissionArray(world_.Doc, world_.Services);
    LoadMission(world_.Doc, world_.Services, 0);
    world_.Log.clear();  // a route without a flight
    world_.Doc.Missions[0].Player = "r0100";
    world_.Doc.Missions[0].Modified = true;
    world_.Services.Ask.MsgBox = [this](const std::string& text, Buttons, Icon icon,
                                        const std::string&) {
      EXPECT_EQ(icon, Icon::Critical);
      boxes_.push_back(text);
      return Answer::Ok;
    };
  }

  /** Runs the Update. What stands is looked at before every step too, as a power cut there would
      leave it. */
  void Run(const Failing& failing) {
    int step = 0;
    world_.Services.Files.BeforeStep = [&](const FileStep& next) {
      SCOPED_TRACE("before step " + std::to_string(step) + ", " + std::string(next.Action));
      NothingIsLost();
      if (!failing(step++, next.Action)) return;
      failed_ = true;
      throw FileFault(fault::FileIo, next.Action, next.Path, "device error");
    };
    result_ = UpdateChanges(world_.Doc, world_.Services, world_.Prefs, world_.Shown);
    world_.Services.Files.BeforeStep = nullptr;
    // A backup without a note is no failure of the Update.
    std::erase_if(world_.Log, [](const auto& line) { return line.ends_with("NoteBackup"); });
  }

  bool Failed() const { return failed_; }

  void Check() const {
    NothingIsLost();
    const std::string mission = box_.Read("m/m.mis");
    const std::string told = boxes_.empty() ? "" : boxes_[0];
    EXPECT_EQ(boxes_.size(), result_ ? 0U : 1U);
    EXPECT_TRUE(result_ || failed_);
    if (result_) {
      EXPECT_TRUE(mission == new_);
      EXPECT_FALSE(box_.Exists("app/$$$TEMP"));
      EXPECT_TRUE(failed_ || !box_.Exists("app/$$$TEMP.note"));
      EXPECT_TRUE(!situation_.Backups || box_.Read(BackupName()) == old_);
    } else if (told.starts_with("Update fail. Reason unknown. Mission file restored.")) {
      EXPECT_TRUE(mission == old_);
      EXPECT_TRUE(told.ends_with("device error")) << told;
      EXPECT_TRUE(world_.Log.at(0).ends_with("WriteMissionFile"));
    } else {
      CheckUnrestored(told, mission);
    }
    NoStrays();
    NothingIsLeftForTheNextStart();
  }

 private:
  std::string BackupName() const {
    return "app/RWS Backup/m.mis" + (situation_.HasBackup ? "." + kStamp : "") + ".bak";
  }

  void NothingIsLost() const {
    const std::string mission = box_.Read("m/m.mis");
    const bool missionIsOld = mission == old_, missionIsNew = mission == new_;
    EXPECT_TRUE(missionIsOld || missionIsNew) << mission.substr(0, 100);
    const std::string backup = box_.Read(BackupName());
    EXPECT_TRUE(!situation_.Backups || backup == old_ || (missionIsOld && backup == "<none>"));
    EXPECT_TRUE(!situation_.HasBackup || box_.Read("app/RWS Backup/m.mis.bak") == kEarlierBackup);
    EXPECT_TRUE(!situation_.HasCopy || box_.Read("app/$$$TEMP") == kEarlierCopy ||
                box_.Read("app/$$$TEMP" + kStamp) == kEarlierCopy);
  }

  /** The box that tells of a mission that could not be put back must be right. */
  void CheckUnrestored(const std::string& told, const std::string& mission) const {
    EXPECT_TRUE(told.starts_with("\"" + box_.Path("m/m.mis") + "\" could not be restored")) << told;
    const std::string copy = "The mission as it was before is in \"";
    const auto at = told.find(copy);
    if (at != told.npos) {
      const auto start = at + copy.size();
      EXPECT_EQ(told.substr(start, told.find('"', start) - start), box_.Path("app/$$$TEMP"));
      EXPECT_TRUE(box_.Read("app/$$$TEMP") == old_);
    } else if (told.find("The updated mission is in its place.") != told.npos) {
      EXPECT_TRUE(mission == new_) << told;
    } else {
      EXPECT_TRUE(mission == old_) << told;
    }
    ASSERT_GE(world_.Log.size(), 2U);
    EXPECT_TRUE(world_.Log[0].ends_with("WriteMissionFile"));
    EXPECT_TRUE(world_.Log.back().ends_with("UpdateChanges"));
  }

  void NoStrays() const {
    EXPECT_EQ(box_.Names("m"), "m.mis");
    const std::string names = box_.Names("app") + "," + box_.Names("app/RWS Backup");
    const std::set<std::string> known = {"",
                                         "RWS Backup",
                                         "Origins.txt",
                                         "$$$TEMP",
                                         "$$$TEMP.note",
                                         "$$$TEMP" + kStamp,
                                         "m.mis.bak",
                                         "m.mis." + kStamp + ".bak"};
    for (const auto name : SplitAt(names, ','))
      EXPECT_TRUE(known.contains(std::string(name))) << name;
  }

  /** The mission stands whole, so that only the earlier copy, of which nothing is known, is told.
   */
  void NothingIsLeftForTheNextStart() const {
    for (const auto& found : FindInterrupted(world_.Services)) {
      EXPECT_EQ(found.State, InterruptedState::Unknown);
      EXPECT_EQ(world_.Services.Files.ReadFile(found.Copy), kEarlierCopy);
    }
    const std::string left = box_.Names("app");
    EXPECT_EQ(left.find(".note"), left.npos) << left;
    EXPECT_TRUE(situation_.HasCopy || !box_.Exists("app/$$$TEMP"));
    EXPECT_FALSE(world_.Services.Files.IsSameFile(box_.Path("m/m.mis"), box_.Path(BackupName())));
    NothingIsLost();
  }

  Situation situation_;
  test::Sandbox box_;
  World world_;
  std::string old_, new_;
  std::vector<std::string> boxes_;
  bool result_ = false, failed_ = false;
};

/** Every step fails in turn, in three ways, in all eight situations. */
class WriteMissionFileIn : public testing::TestWithParam<int> {};

TEST_P(WriteMissionFileIn, EveryStepFailsInTurn) {
  using Way = bool (*)(int step, int n, std::string_view action);
  const Way ways[] = {[](int step, int n, std::string_view) { return step == n; },
                      [](int step, int n, std::string_view) { return step >= n; },
                      [](int step, int n, std::string_view action) {
                        return step == n || (step > n && action == "sync folder");
                      }};
  for (const Way& way : ways) {
    for (int n = 0; !HasFailure(); ++n) {
      SCOPED_TRACE("way " + std::to_string(&way - ways) + ", n = " + std::to_string(n));
      const int bits = GetParam();
      Update update({(bits & 4) != 0, (bits & 2) != 0, (bits & 1) != 0});
      update.Run([&](int step, std::string_view action) { return way(step, n, action); });
      update.Check();
      if (update.Failed()) continue;
      EXPECT_GE(n, 12) << "too few steps seen";
      break;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Situations, WriteMissionFileIn, testing::Range(0, 8));

/** Another program is at work, another has changed the file, the backup goes elsewhere. */
TEST(WriteMissionFile, KeepsToItsRules) {
  test::Sandbox box;
  World world(box.Path("app"));
  box.MakeFolder("app");
  box.MakeFolder("kept");
  world.Doc.MissionFiles = {box.Write("m/a.mis", "one")};
  LoadMissionArray(world.Doc, world.Services);
  LineArray lines;
  lines.Add("two");
  std::string reason;
  const auto write = [&](const WriteRules& rules) {
    reason.clear();
    return WriteMissionFile(world.Services, world.Doc.Missions[0], lines, rules, &reason);
  };
  EXPECT_FALSE(write({true, box.Path("kept"), "other"}));
  EXPECT_NE(reason.find("has changed it"), reason.npos) << reason;
  EXPECT_EQ(box.Read("m/a.mis") + box.Names("app") + box.Names("kept"), "one");
  EXPECT_TRUE(write({true, box.Path("kept"), "one"}));
  EXPECT_EQ(box.Read("m/a.mis") + box.Read("kept/a.mis.bak"), "two\r\none");
  EXPECT_EQ(box.Names("app"), "");
  // A name of this second that another program takes before the link is made.
  world.Services.Files.BeforeStep = [&](const FileStep& step) {
    const std::string stamped = "kept/a.mis." + kStamp + ".bak";
    if (step.Action == "link" && !box.Exists(stamped)) box.Write(stamped, "another's");
  };
  EXPECT_TRUE(write({true, box.Path("kept"), {}}));
  EXPECT_EQ(box.Names("kept"), "a.mis." + kStamp + " 2.bak,a.mis." + kStamp + ".bak,a.mis.bak");
  EXPECT_EQ(box.Read("kept/a.mis." + kStamp + ".bak"), "another's");
  EXPECT_EQ(box.Read("kept/a.mis." + kStamp + " 2.bak"), "two\r\n");
}

TEST(WriteMissionFile, LooksAtNoCopyThatAnotherMayBeWriting) {
  test::Sandbox box;
  World world(box.Path("app"));
  box.MakeFolder("app");
  box.Write("app/$$$TEMP", kEarlierCopy);
  const auto held = HoldCopy(world.Services);
  const std::string before = box.Names("app");
  EXPECT_THROW(HoldCopy(world.Services, 0), Fault);
  EXPECT_TRUE(FindInterrupted(world.Services).empty());
  EXPECT_EQ(box.Names("app"), before);
}

TEST(WriteMissionFile, SavesAndWritesTheFileBehindALink) {
  if (!test::kPosixFiles) GTEST_SKIP() << test::kNeedsPosixFiles;
  test::Sandbox box;
  World world(box.Path("app"));
  box.MakeFolder("app");
  box.Write("real/a.mis", "old");
  box.MakeFolder("m");
  std::filesystem::create_symlink("../real/a.mis", box.Path("m/a.mis"));
  world.Doc.MissionFiles = {box.Path("m/a.mis")};
  LoadMissionArray(world.Doc, world.Services);
  LineArray lines;
  lines.Add("new");
  EXPECT_TRUE(WriteMissionFile(world.Services, world.Doc.Missions[0], lines, world.Prefs.bBackup));
  EXPECT_TRUE(std::filesystem::is_symlink(box.Path("m/a.mis")));
  EXPECT_EQ(box.Read("real/a.mis"), "new\r\n");
  EXPECT_FALSE(std::filesystem::is_symlink(box.Path("app/RWS Backup/a.mis.bak")));
  EXPECT_EQ(box.Read("app/RWS Backup/a.mis.bak"), "old");
}

TEST(WriteMissionFile, DoesNotReplaceAReadOnlyMissionWithoutBackup) {
  using std::filesystem::perms;
  const perms rights = perms::owner_read | perms::group_read;
  const std::string text = CrlfText("[MAIN]|  army 1|[Wing]|[x_Way]|[e]");
  for (const bool backup : {false, true}) {
    SCOPED_TRACE(backup);
    test::Sandbox box;
    World world(box.Path("app"));
    box.MakeFolder("app");
    world.Prefs.bBackup = backup;
    world.Doc.MissionFiles = {box.Write("m/a.mis", text), box.Write("m/b.mis", text)};
    const auto file = test::ToFsPath(box.Path("m/a.mis"));
    std::filesystem::permissions(file, rights);
    LoadMissionArray(world.Doc, world.Services);
    for (auto& mission : world.Doc.Missions) {
      LoadMission(world.Doc, world.Services,
                  static_cast<std::size_t>(&mission - &world.Doc.Missions[0]));
      mission.Player = "r0100";
      mission.Modified = true;
    }
    if (!backup) world.Script.Expect("Update fail. Reason unknown. Mission file restored.\n\n");
    EXPECT_EQ(UpdateChanges(world.Doc, world.Services, world.Prefs, world.Shown), backup);
    // The other mission is written in any case, and no copy is left.
    EXPECT_EQ(box.Read("m/a.mis") == text, !backup);
    EXPECT_TRUE(Contains(box.Read("m/b.mis"), "player r0100"));
    EXPECT_FALSE(box.Exists("app/$$$TEMP"));
    EXPECT_TRUE(!backup || box.Read("app/RWS Backup/a.mis.bak") == text);
    if (test::kPosixFiles) {
      EXPECT_EQ(std::filesystem::status(file).permissions(), rights);
    }
    // What is left must go as well.
    std::filesystem::permissions(file, perms::owner_all);
    EXPECT_TRUE(backup || world.Script.Boxes[0].Text.ends_with("the file is read-only"));
  }
}

TEST(GetSqFile, WritesTheStemsAndCloses) {
  test::Sandbox box;
  World world(box.Path("app"));
  box.MakeFolder("app");
  const std::string path =
      box.Write("m/a.mis", CrlfText("[MAIN]|  r0000|[WING]|  r0100|  g0111 |[r0100]|  x01"));
  world.Script.ExpectPath("Choose Squadron file", "");
  GetSqFile(world.Doc, world.Services);
  EXPECT_EQ(world.CloseRequests, 0);
  EXPECT_FALSE(box.Exists("app/sq.txt"));
  world.Script.ExpectPath("Choose Squadron file", path);
  GetSqFile(world.Doc, world.Services);
  EXPECT_EQ(box.Read("app/sq.txt"), "r01\r\ng01\r\n");
  EXPECT_EQ(world.CloseRequests, 1);
  EXPECT_EQ(ReadSetting(world.Services.Settings, setting::SqFile), box.Path("m"));
}

}  // namespace
}  // namespace rws
