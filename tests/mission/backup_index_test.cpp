#include "mission/backup_index.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>

#include "services/faults.h"
#include "services/paths.h"
#include "services/text.h"
#include "tests/support/doubles.h"
#include "tests/support/failing_step.h"
#include "tests/support/sandbox.h"

namespace rws {
namespace {

using test::kPosixFiles;
using test::ToFsPath;

const std::string kList = "app/RWS Backup/Origins.txt";

/** Missions of one name in two folders, and their backups. */
struct BackupIndex : testing::Test {
  BackupIndex() {
    Box.MakeFolder("app");
    start_ = std::filesystem::last_write_time(ToFsPath(Box.Path("app")));
  }

  /** A backup with this ending, `age` seconds old. */
  std::string Make(const std::string& ending, int age, const std::string& text = "x",
                   const std::string& mission = "X.mis") {
    const std::string path = Box.Write("app/RWS Backup/" + mission + ending, text);
    std::filesystem::last_write_time(ToFsPath(path), start_ - std::chrono::seconds(age));
    return path;
  }
  /** The same, noted as of the mission in `folder`. */
  std::string Noted(const std::string& ending, int age, const std::string& folder = "m") {
    const std::string path = Make(ending, age);
    NoteBackup(World.Services, path, Box.Path(folder + "/X.mis"));
    return path;
  }
  /** Endings of what is listed: "." its own, "?" unknown, "!" of another folder. */
  std::string Listed(const std::string& mission = "m/X.mis") {
    std::string shown;
    for (const Backup& backup : ListBackups(World.Services, Box.Path(mission))) {
      shown += shown.empty() ? "" : " ";
      shown += backup.Origin == BackupOrigin::ThisMission ? '.' : '?';
      if (backup.Origin == BackupOrigin::OtherFolder) shown.back() = '!';
      const std::string name = GetFileName(backup.Path);
      shown += Replace(name.substr(sizeof "X.mis." - 1), ".bak", "");
    }
    return shown;
  }
  std::string Left() { return Replace(Box.Names("app/RWS Backup"), "Origins.txt,", ""); }

  test::Sandbox Box;
  test::World World{Box.Path("app")};

 private:
  std::filesystem::file_time_type start_;
};

constexpr char kA[] = ".03-04-26 05-06-07.bak", kB[] = ".03-04-26 05-06-08.bak",
               kC[] = ".03-04-26 05-06-09.bak", kD[] = ".03-04-25 05-06-09.bak";

TEST_F(BackupIndex, ListsWhatFitsNewestFirstAndOtherFoldersLast) {
  EXPECT_EQ(Listed(), "");
  Box.Write("m/X.mis", "now");
  Box.Write("other/X.mis", "now");
  Noted(".bak", 50);
  Noted(kA, 30);
  Make(kB, 40, "12345");
  Noted(kC, 1, "other");
  Noted(kD, 60, "other");
  Noted(".03-04-26 05-06-07 2.bak", 29);
  for (const char* stranger : {".bak2", ".03-04-26.bak", ".xx-04-26 05-06-07.bak", "X.bak", ""})
    Make(stranger, 0);
  Make(".bak", 0, "x", "XX.mis");
  EXPECT_EQ(Listed(),
            ".03-04-26 05-06-07 2 .03-04-26 05-06-07 ?03-04-26 05-06-08 .bak !03-04-26 05-06-09 "
            "!03-04-25 05-06-09");
  const auto backups = ListBackups(World.Services, Box.Path("m/X.mis"));
  EXPECT_EQ(backups[2].Stamp.Size, 5U);
  EXPECT_EQ(backups[4].OriginPath, Box.Path("other/X.mis"));
  EXPECT_TRUE(Listed("other/X.mis").starts_with(".03-04-26 05-06-09 ?"));
  Box.Remove("m/X.mis");
  EXPECT_TRUE(Listed().starts_with(".")) << "also for a mission that has gone";
  EXPECT_EQ(Listed("m/x.MIS").empty(), kPosixFiles);
  Make("[1].mis.bak", 0, "x", "");
  EXPECT_EQ(ListBackups(World.Services, Box.Path("m/[1].mis")).size(), 1U) << "no pattern";
  EXPECT_TRUE(World.Log.empty());
}

TEST_F(BackupIndex, FollowsLinksAndTakesTheLastNote) {
  if (!kPosixFiles) GTEST_SKIP() << test::kNeedsPosixFiles;
  Box.Write("real/X.mis", "now");
  Box.Write("other/X.mis", "now");
  Box.Link("m", "real");
  Noted(kA, 1, "other");
  Noted(kA, 1, "real");
  EXPECT_EQ(Listed("m/X.mis"), ".03-04-26 05-06-07");
  EXPECT_EQ(Listed("other/X.mis"), "!03-04-26 05-06-07");
  LimitBackups(World.Services, Box.Path("other/X.mis"), 1);
  Noted(kB, 1, "other");
  LimitBackups(World.Services, Box.Path("other/X.mis"), 1);
  EXPECT_EQ(Left(), "X.mis.03-04-26 05-06-07.bak,X.mis.03-04-26 05-06-08.bak");
}

/** The list is cut at each byte, as a full disk or a power cut would leave it: no note but the last
    one is lost then, nor any that follows. */
TEST_F(BackupIndex, IgnoresATornNoteAndGoesOnBehindIt) {
  Noted(kA, 30);
  const std::size_t one = Box.Read(kList).size();
  Noted(kB, 20, "other");
  const std::string whole = Box.Read(kList);
  for (std::size_t size = 0; size <= whole.size(); ++size) {
    SCOPED_TRACE(size);
    Box.Write(kList, whole.substr(0, size));
    Noted(kC, 10);
    const std::string first = size < one ? "?" : ".", second = size < whole.size() ? "?" : "!";
    const std::string a = " " + first + "03-04-26 05-06-07", b = " " + second + "03-04-26 05-06-08";
    EXPECT_EQ(Listed(), ".03-04-26 05-06-09" + (second == "!" ? a + b : b + a));
  }
  std::string changed = whole;
  changed[whole.size() - 1] ^= 1;
  Box.Write(kList, changed);
  EXPECT_EQ(Listed(), "?03-04-26 05-06-09 ?03-04-26 05-06-08 .03-04-26 05-06-07");
}

TEST_F(BackupIndex, LimitsOnlyTheDatedOnesThatAreSurelyItsOwn) {
  for (const int most : {0, 3, 2, 1}) {
    SCOPED_TRACE(most);
    Noted(".bak", 90);
    // The clock ran backwards: the one noted last is the newest all the same.
    Noted(kA, 10);
    Noted(kC, 20);
    Noted(kB, 30);
    Make(kD, 99);
    Noted(".01-01-01 00-00-00.bak", 1, "other");
    LimitBackups(World.Services, Box.Path("m/X.mis"), most);
    std::string left = "X.mis.01-01-01 00-00-00.bak,X.mis.03-04-25 05-06-09.bak";
    if (most == 0 || most == 3) left += ",X.mis.03-04-26 05-06-07.bak";
    left += ",X.mis.03-04-26 05-06-08.bak";
    if (most != 1) left += ",X.mis.03-04-26 05-06-09.bak";
    EXPECT_EQ(Left(), left + ",X.mis.bak");
  }
  Box.Write(kList, "");
  LimitBackups(World.Services, Box.Path("m/X.mis"), 1);
  EXPECT_EQ(ListBackups(World.Services, Box.Path("m/X.mis")).size(), 4U) << "no notes, no owner";
}

TEST_F(BackupIndex, FailuresAreLoggedAndEndNothing) {
  Noted(kA, 30);
  Noted(kB, 20);
  Noted(kC, 10);
  auto& files = World.Services.Files;
  files.BeforeStep = [&](const FileStep& step) {
    const bool isFirst = step.Path.ends_with(kA);
    if (step.Action == "append" || step.Action == "read" || (step.Action == "delete" && isFirst))
      throw FileFault(fault::FileIo, step.Action, step.Path, "device error");
  };
  NoteBackup(World.Services, Box.Path("app/RWS Backup/X.mis") + kD, Box.Path("m/X.mis"));
  EXPECT_TRUE(World.Log.at(0).ends_with("device errorNoteBackup")) << World.Log[0];
  EXPECT_EQ(Listed(), "?03-04-26 05-06-09 ?03-04-26 05-06-08 ?03-04-26 05-06-07");
  LimitBackups(World.Services, Box.Path("m/X.mis"), 1);
  EXPECT_EQ(World.Log.size(), 3U) << "an unreadable list makes no backup anyone's";
  EXPECT_EQ(ListBackups(World.Services, Box.Path("m/X.mis")).size(), 3U);
  test::FailSteps(files, "delete", kA, "device error");
  LimitBackups(World.Services, Box.Path("m/X.mis"), 1);
  EXPECT_EQ(Listed(), ".03-04-26 05-06-09 .03-04-26 05-06-07");
  EXPECT_TRUE(World.Log.back().ends_with("device errorLimitBackups"));
}

}  // namespace
}  // namespace rws
