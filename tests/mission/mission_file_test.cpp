#include "mission/mission_file.h"

#include <gtest/gtest.h>

#include <functional>
#include <set>

#include "mission/reader.h"
#include "mission/update.h"
#include "mission/writer.h"
#include "services/faults.h"
#include "services/setting_values.h"
#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"

namespace rws {
namespace {

using test::Crlf;
using test::World;
using Lines = std::vector<std::string>;

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
    Lines lines = {"[MAIN]", "  army 1", "[Wing]", "[x_Way]", "[NStationary]"};
    for (int i = 0; i < 4000; ++i) lines.push_back("  " + std::to_string(i) + "_Static wagon");
    old_ = Crlf(lines);
    lines[1] = "  army 1\r\n  player r0100";
    lines.erase(lines.begin() + 3);
    new_ = Crlf(lines);
    box_.Write("m/m.mis", old_);
    box_.MakeFolder("app");
    if (situation.HasBackup) box_.Write("app/RWS Backup/m.mis.bak", kEarlierBackup);
    if (situation.HasCopy) box_.Write("app/$$$TEMP", kEarlierCopy);
    world_.Doc.bBackup = situation.Backups;
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

  /** Runs the Update; gives the number of steps taken. What stands is looked at before every step
      too, as a power cut there would leave it. */
  int Run(const Failing& failing) {
    int step = 0;
    world_.Services.Files.BeforeStep = [&](const FileStep& next) {
      SCOPED_TRACE("before step " + std::to_string(step) + ", " + std::string(next.Action));
      NothingIsLost();
      if (!failing(step++, next.Action)) return;
      failed_ = true;
      throw FileFault(fault::FileIo, next.Action, next.Path, "device error");
    };
    result_ = UpdateChanges(world_.Doc, world_.Services);
    world_.Services.Files.BeforeStep = nullptr;
    return step;
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
      EXPECT_EQ(box_.Names("app"), AppNames());
      if (situation_.Backups) {
        EXPECT_TRUE(box_.Read(BackupName()) == old_);
      }
    } else if (told.starts_with("Update fail. Reason unknown. Mission file restored.")) {
      EXPECT_TRUE(mission == old_);
      EXPECT_TRUE(world_.Log.at(0).ends_with("WriteMissionFile"));
    } else {
      CheckUnrestored(told, mission);
    }
    NoStrays();
  }

  test::Sandbox& Box() { return box_; }

 private:
  std::string BackupName() const {
    return "app/RWS Backup/m.mis" + (situation_.HasBackup ? "." + kStamp : "") + ".bak";
  }

  std::string AppNames() const {
    std::string names = situation_.HasCopy ? "$$$TEMP" + kStamp : "";
    const bool folder = situation_.Backups || situation_.HasBackup;
    if (folder) names += names.empty() ? "RWS Backup" : ",RWS Backup";
    return names;
  }

  void NothingIsLost() const {
    const std::string mission = box_.Read("m/m.mis");
    const bool missionIsOld = mission == old_, missionIsNew = mission == new_;
    EXPECT_TRUE(missionIsOld || missionIsNew || mission == "<none>");
    const bool oldIsKept =
        box_.Read("app/$$$TEMP") == old_ || (situation_.Backups && box_.Read(BackupName()) == old_);
    EXPECT_TRUE(missionIsOld || missionIsNew || oldIsKept);
    if (situation_.HasBackup) {
      EXPECT_EQ(box_.Read("app/RWS Backup/m.mis.bak"), kEarlierBackup);
    }
    if (situation_.HasCopy) {
      EXPECT_TRUE(box_.Read("app/$$$TEMP") == kEarlierCopy ||
                  box_.Read("app/$$$TEMP" + kStamp) == kEarlierCopy);
    }
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
    const std::set<std::string> missions = {"", "m.mis"};
    EXPECT_TRUE(missions.count(box_.Names("m"))) << box_.Names("m");
    std::string names = box_.Names("app");
    for (const std::string& known :
         {std::string("RWS Backup"), "$$$TEMP" + kStamp, std::string("$$$TEMP"), std::string(",")})
      for (auto at = names.find(known); at != names.npos; at = names.find(known))
        names.erase(at, known.size());
    EXPECT_EQ(names, "") << box_.Names("app");
    const std::set<std::string> backups = {"", "m.mis.bak", "m.mis." + kStamp + ".bak",
                                           "m.mis." + kStamp + ".bak,m.mis.bak"};
    EXPECT_TRUE(backups.count(box_.Names("app/RWS Backup"))) << box_.Names("app/RWS Backup");
  }

  Situation situation_;
  test::Sandbox box_;
  World world_;
  std::string old_, new_;
  Lines boxes_;
  bool result_ = false, failed_ = false;
};

/** Lets every step fail in turn, in one way of failing, until none is left to fail. */
void FailEveryStep(const Situation& situation,
                   const std::function<bool(int step, int n, std::string_view action)>& failing) {
  for (int n = 0;; ++n) {
    SCOPED_TRACE("n = " + std::to_string(n));
    Update update(situation);
    const int steps =
        update.Run([&](int step, std::string_view action) { return failing(step, n, action); });
    update.Check();
    if (testing::Test::HasFailure()) return;
    if (!update.Failed()) {
      EXPECT_GE(n, 12) << "too few steps seen";
      EXPECT_LE(steps, n);
      return;
    }
  }
}

class WriteMissionFileIn : public testing::TestWithParam<int> {
 protected:
  Situation Given() const {
    return {(GetParam() & 4) != 0, (GetParam() & 2) != 0, (GetParam() & 1) != 0};
  }
};

TEST_P(WriteMissionFileIn, OneStepFails) {
  FailEveryStep(Given(), [](int step, int n, std::string_view) { return step == n; });
}

TEST_P(WriteMissionFileIn, EverythingFailsFromOneStepOn) {
  FailEveryStep(Given(), [](int step, int n, std::string_view) { return step >= n; });
}

TEST_P(WriteMissionFileIn, FlushingFoldersFailsFromOneStepOn) {
  FailEveryStep(Given(), [](int step, int n, std::string_view action) {
    return step == n || (step > n && action == "sync folder");
  });
}

INSTANTIATE_TEST_SUITE_P(Situations, WriteMissionFileIn, testing::Range(0, 8),
                         [](const auto& tested) {
                           const int bits = tested.param;
                           return std::string(bits & 4 ? "Backup" : "NoBackup") +
                                  (bits & 2 ? "Earlier" : "") + (bits & 1 ? "Orphan" : "");
                         });

TEST(WriteMissionFile, KeepsTheFirstBackupUnderItsPlainName) {
  test::Sandbox box;
  World world(box.Path("app"));
  box.MakeFolder("app");
  box.Write("m/a.mis", "one");
  world.Doc.MissionFiles = {box.Path("m/a.mis")};
  LoadMissionArray(world.Doc, world.Services);
  const auto write = [&](const char* line) {
    LineArray lines;
    lines.Add(line);
    lines.Add("");
    return WriteMissionFile(world.Doc, world.Services, lines, 0);
  };
  EXPECT_TRUE(write("two"));
  EXPECT_TRUE(write("three"));
  world.Clock.Hour = 17;
  EXPECT_TRUE(write("four"));
  world.Doc.bBackup = false;
  EXPECT_TRUE(write("five"));
  EXPECT_EQ(box.Read("m/a.mis"), "five\r\n\r\n");
  EXPECT_EQ(box.Names("m"), "a.mis");
  EXPECT_EQ(box.Names("app"), "RWS Backup");
  EXPECT_EQ(box.Names("app/RWS Backup"),
            "a.mis.03-04-26 05-06-07.bak,a.mis.03-04-26 17-06-07.bak,a.mis.bak");
  EXPECT_EQ(box.Read("app/RWS Backup/a.mis.bak"), "one");
  EXPECT_EQ(box.Read("app/RWS Backup/a.mis.03-04-26 05-06-07.bak"), "two\r\n\r\n");
  EXPECT_EQ(box.Read("app/RWS Backup/a.mis.03-04-26 17-06-07.bak"), "three\r\n\r\n");
  EXPECT_TRUE(world.Log.empty());
}

TEST(GetSqFile, WritesTheStemsAndCloses) {
  test::Sandbox box;
  World world(box.Path("app"));
  box.MakeFolder("app");
  const std::string path = box.Write(
      "m/a.mis", Crlf({"[MAIN]", "  r0000", "[WING]", "  r0100", "  g0111 ", "[r0100]", "  x01"}));
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
