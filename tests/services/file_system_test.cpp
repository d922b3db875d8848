#include "services/file_system.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <tuple>

#include "services/faults.h"
#include "services/list_files.h"
#include "services/paths.h"
#include "services/text.h"
#include "tests/support/failing_step.h"
#include "tests/support/sandbox.h"

namespace rws {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

// The systems give other reasons.
const int kFolderNotFound = test::kPosixFiles ? fault::FileNotFound : fault::PathNotFound;
const int kIsFolder = test::kPosixFiles ? fault::FileIo : fault::Permission;

struct FileSystemTest : testing::Test {
  /** The fault that `body` ends with; number 0 when it has none. */
  static Fault FaultOf(const std::function<void()>& body) {
    Fault result(0, "");
    Trap(body, [&](const Fault& caught) { result = caught; });
    return result;
  }

  test::Sandbox Box;
  FileSystem Files;
};

TEST(FileSystem, FailureAtAnyStepLeavesTheOldFile) {
  // Three blocks of writing.
  const std::string whole(150000, 'n');
  for (const bool copy : {false, true})
    for (const std::string old : {"<none>", "old"}) {
      std::string steps;
      test::ForEachFailingStep([&](test::FailingStep& step) {
        const test::Sandbox box;
        const std::string source = box.Write("source.mis", whole), target = box.Path("a.mis");
        if (old == "old") box.Write("a.mis", old);
        FileSystem files;
        step.During(files, [&] {
          ResumeNext(
              [&] { copy ? files.CopyFile(source, target) : files.ReplaceFile(target, whole); });
        });
        SCOPED_TRACE((copy ? "copy, " : "replace, ") + old + ", failed: " + step.Action());
        // Once the name is taken the new bytes stand, whole.
        const bool taken = !step.Failed() || step.Action() == "sync folder";
        EXPECT_TRUE(box.Read("a.mis") == (taken ? whole : old));
        EXPECT_EQ(box.Names(), old == "old" || taken ? "a.mis,source.mis" : "source.mis");
        EXPECT_TRUE(box.Read("source.mis") == whole);
        steps += step.Action() + ",";
      });
      EXPECT_NE(steps.find("create,write,write,write,flush,take name,"), steps.npos) << steps;
    }
}

TEST_F(FileSystemTest, ReplaceMakesEmptyFilesAndKeepsRights) {
  const std::string path = Box.Write("a.mis", "old");
  fs::permissions(test::ToFsPath(path),
                  fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
  const auto rights = fs::status(test::ToFsPath(path)).permissions();
  Files.ReplaceFile(path, "");
  EXPECT_EQ(Box.Read("a.mis"), "");
  EXPECT_EQ(fs::status(test::ToFsPath(path)).permissions(), rights);
}

TEST_F(FileSystemTest, MoveIsWholeAndNeverOverAnExistingFile) {
  const std::string a = Box.Write("a.mis", "A"), b = Box.Write("b.mis", "B");
  Box.MakeFolder("sub");
  for (const auto& target : {b, a, Box.Path("sub")})
    EXPECT_EQ(FaultOf([&] { Files.MoveFile(a, target); }).Number, fault::FileExists) << target;
  EXPECT_EQ(FaultOf([&] { Files.MoveFile(a, Box.Path("no/c")); }).Number, kFolderNotFound);
  Files.BeforeStep = [](const FileStep&) { throw OverflowFault(); };
  EXPECT_EQ(FaultOf([&] { Files.MoveFile(a, b + "2"); }).Number, fault::Overflow);
  Files.BeforeStep = nullptr;
  EXPECT_EQ(Box.Names() + " " + Box.Read("a.mis") + Box.Read("b.mis"), "a.mis,b.mis,sub AB");
  Files.MoveFile(a, Box.Path("sub/c.mis"));
  Files.DeleteFile(b);
  EXPECT_EQ(Box.Names() + " " + Box.Names("sub") + " " + Box.Read("sub/c.mis"), "sub c.mis A");
}

TEST_F(FileSystemTest, FaultsNameTheFile) {
  const std::string gone = Box.Path("gone"), file = Box.Write("file", ""), dir = Box.Path("dir");
  const std::string big = Box.Write("big", "123");
  Box.MakeFolder("dir");
  EXPECT_EQ(Files.ReadFile(big, 3), "123");
  const std::tuple<int, std::string, std::function<void()>> rows[] = {
      {fault::FileNotFound, gone, [&] { Files.ReadFile(gone); }},
      {kIsFolder, dir, [&] { Files.ReadFile(dir); }},
      {fault::FileIo, big, [&] { Files.ReadFile(big, 2); }},
      {kFolderNotFound, gone, [&] { Files.ReplaceFile(gone + "/a", "x"); }},
      {kIsFolder, dir, [&] { Files.ReplaceFile(dir, "x"); }},
      {fault::FileNotFound, gone, [&] { Files.CopyFile(gone, file); }},
      {fault::FileNotFound, gone, [&] { Files.DeleteFile(gone); }},
      {fault::FileExists, dir, [&] { Files.CreateFolder(dir); }},
      {fault::PathNotFound, gone, [&] { Files.CreateFolder(gone + "/a"); }},
      {fault::PathNotFound, file, [&] { Files.ListFolder(file); }}};
  for (const auto& [number, path, body] : rows) {
    const Fault caught = FaultOf(body);
    EXPECT_EQ(caught.Number, number) << caught.Text;
    EXPECT_NE(caught.Text.find(path), std::string::npos) << caught.Text;
  }
}

TEST_F(FileSystemTest, ListFilesAppendsWhatMatchesSortedWithoutRegardToCase) {
  for (const char* name : {"b.MIS", "A.mis", ".hidden.mis", "Readme.txt", "a.mis.bak", "B2.mis",
                           "x_Sound.mis", "oldCOPY.mis", "\xC3\x89.mis", "\xC3\xA8.mis"})
    Box.Write(name, "");
  Box.MakeFolder("folder.mis");
  int pumped = 0;
  Services services;
  services.System.PumpEvents = [&] { ++pumped; };
  Names names{"first"};
  EXPECT_EQ(ListFiles(services, names, Box.Path(), "*.mis", false, "_sound,Copy"), 6);
  EXPECT_EQ(names, (Names{"first", ".hidden.mis", "A.mis", "b.MIS", "B2.mis", "\xC3\xA8.mis",
                          "\xC3\x89.mis"}));
  EXPECT_EQ(pumped, 6);
  names.clear();
  EXPECT_EQ(ListFiles(services, names, Box.Path(), "*.bmp", true, ""), -1);
  EXPECT_EQ(ListFiles(services, names, Box.Path(), "*.TXT", true, ""), 0);
  EXPECT_EQ(names, Names{Box.Path() + kSeparator + "Readme.txt"});
}

TEST_F(FileSystemTest, ResolveFindsAnyLetterCaseTheExactOneFirst) {
  if (!test::kPosixFiles) GTEST_SKIP() << test::kNeedsPosixFiles;
  for (const char* name : {"M/Net/X.Mis", "M/both.MIS", "M/Both.mis", "\xC3\x89t\xC3\xA9/a.mis"})
    Box.Write(name, name);
  const std::pair<const char*, const char*> rows[] = {
      {"m/NET/x.mis", "M/Net/X.Mis"},      {"M\\net\\x.MIS", "M/Net/X.Mis"},
      {"m/both.MIS", "M/both.MIS"},        {"M/Both.mis", "M/Both.mis"},
      {"m/BOTH.mis", "M/Both.mis"},        {"\xC3\xA9T\xC3\x89/A.MIS", "\xC3\x89t\xC3\xA9/a.mis"},
      {"m/New/Deep.mis", "M/New/Deep.mis"}};
  for (const auto& [asked, found] : rows)
    EXPECT_EQ(Files.Resolve(Box.Path(asked)), Box.Path(found)) << asked;
  EXPECT_EQ(Files.ReadFile(Box.Path("m\\net\\x.mis")), "M/Net/X.Mis");
  EXPECT_TRUE(Files.FolderExists(Box.Path("m/net/")));
  const std::string deep = Box.Path(Replace(std::string(100'000, 'a'), "a", "a\\"));
  EXPECT_EQ(Files.Resolve(deep), deep) << "found by no look at each part";
  EXPECT_EQ(Files.GetAbsolutePathName("\\M\\n.mis"), "/M/n.mis");
}

TEST_F(FileSystemTest, AKnownFolderFollowsItsMoves) {
  if (!test::kPosixFiles) GTEST_SKIP() << test::kNeedsPosixFiles;
  Box.Write("in/B.mis", "b");
  Box.Write("in/c.mis", "c");
  const KnownFolder known(Files, Box.Path("in"));
  const auto ontoOther = [&] { Files.MoveFile(Box.Path("in/c.mis"), Box.Path("in/b.mis")); };
  EXPECT_EQ(FaultOf(ontoOther).Number, fault::FileExists);
  Files.MoveFile(Box.Path("in/B.mis"), Box.Path("in/d.mis"));
  EXPECT_FALSE(Files.FileExists(Box.Path("in/b.mis")));
  EXPECT_EQ(Files.ReadFile(Box.Path("in/D.mis")), "b");
  Box.Write("other/X.mis", "x");
  EXPECT_EQ(Files.ReadFile(Box.Path("other/x.mis")), "x") << "another folder is looked at";
}

TEST_F(FileSystemTest, WritingKeepsTheSpellingAndRenamingMayChangeIt) {
  Box.Write("M/A.Mis", "old");
  Files.ReplaceFile(Box.Path("m\\a.mis"), "new");
  Files.CopyFile(Box.Path("m/a.mis"), Box.Path("m/B.mis"));
  Files.AppendToFile(Box.Path("m/b.MIS"), "er");
  EXPECT_EQ(Box.Names() + " " + Box.Names("M"), "M A.Mis,B.mis");
  EXPECT_EQ(Box.Read("M/A.Mis") + "," + Box.Read("M/B.mis"), "new,newer");
  Files.MoveFile(Box.Path("M/B.mis"), Box.Path("m\\b.mis"));
  // Wine takes this rename and leaves the name as it is; and no other case is another file there.
  if (!test::kPosixFiles) return;
  EXPECT_EQ(Box.Names("M"), "A.Mis,b.mis");
  Box.Write("M/B.mis", "other");
  EXPECT_EQ(FaultOf([&] { Files.MoveFile(Box.Path("M/b.mis"), Box.Path("M/B.mis")); }).Number,
            fault::FileExists);
  EXPECT_EQ(Box.Read("M/b.mis") + "," + Box.Read("M/B.mis"), "newer,other");
}

TEST_F(FileSystemTest, FollowsLinksAndCopiesNoFileOntoItself) {
  if (!test::kPosixFiles) GTEST_SKIP() << test::kNeedsPosixFiles;
  const std::string link = Box.Path("link.mis"), real = Box.Write("real/a.mis", "old");
  Box.Link("link.mis", "real/a.mis");
  Box.Link("dangling.mis", "gone.mis");
  Box.Link("folder.mis", "real");
  Files.ReplaceFile(link, "new");
  EXPECT_EQ(Box.Read("real/a.mis"), "new");
  Files.CopyFile(Box.Write("b.mis", "B"), link);
  EXPECT_EQ(Box.Read("real/a.mis"), "B");
  EXPECT_TRUE(fs::is_symlink(link));
  const auto every = [](const std::string&) { return true; };
  EXPECT_EQ(Files.ListFileNames(Box.Path(), every), (Names{"b.mis", "link.mis"}));
  std::string all;
  for (const auto& entry : Files.ListFolder(Box.Path()))
    all += entry.Name + (entry.IsFolder ? "/ " : " ");
  EXPECT_EQ(all, "b.mis folder.mis/ link.mis real/ ");
  EXPECT_FALSE(Files.FileExists(Box.Path("dangling.mis")));
  Files.BeforeStep = [](const FileStep& step) { ADD_FAILURE() << "opened: " << step.Action; };
  for (const auto& other : {real, Box.Path("real/A.MIS"), link, Box.Path("folder.mis/a.mis")}) {
    EXPECT_EQ(FaultOf([&] { Files.CopyFile(real, other); }).Number, fault::Permission);
    EXPECT_EQ(FaultOf([&] { Files.CopyFile(other, real); }).Number, fault::Permission);
  }
  EXPECT_EQ(Box.Read("real/a.mis"), "B");
}

TEST_F(FileSystemTest, AStampTellsAChange) {
  const std::string path = Box.Write("M/a.mis", "12345");
  const fs::path file = test::ToFsPath(path);
  EXPECT_EQ(Files.Stamp(Box.Path("M/gone.mis")), FileStamp());
  const auto time = fs::file_time_type(std::chrono::seconds(1'000'000'000));
  fs::last_write_time(file, time);
  const FileStamp stamp = Files.Stamp(Box.Path("m/A.MIS"));
  EXPECT_TRUE(stamp.Exists && stamp.Size == 5);
  EXPECT_EQ(Files.Stamp(path), stamp);
  // The library of MinGW writes whole seconds.
  const auto later = std::chrono::microseconds(test::kPosixFiles ? 3 : 3'000'000);
  fs::last_write_time(file, time + later);
  EXPECT_EQ(Files.Stamp(path).Modified, stamp.Modified + later.count() * 1000);
  // A minute and a second, whatever the zone; the start is full hours and minutes everywhere.
  FileStamp minute{true, 0, 1'700'000'040'000'000'000};
  const DateTime before = FileSystem::LocalTime(minute);
  minute.Modified += 61'000'000'000;
  const DateTime after = FileSystem::LocalTime(minute);
  EXPECT_EQ(before.Second, 0);
  EXPECT_EQ(after.Second, 1);
  EXPECT_EQ((before.Minute + 1) % 60, after.Minute);
  EXPECT_TRUE(before.Year == 2023 && before.Month == 11 && (before.Day == 14 || before.Day == 15));
}

TEST_F(FileSystemTest, AHeldFileKeepsOthersOut) {
  const std::string lock = Box.Path("lock");
  const auto tryIt = [&] { return FaultOf([&] { Files.Hold(lock, 0); }); };
  EXPECT_EQ(tryIt().Number, 0);
  EXPECT_FALSE(Box.Exists("lock"));
  auto held = Files.Hold(lock, 0);
  EXPECT_TRUE(Box.Exists("lock"));
  EXPECT_EQ(tryIt().Number, fault::FileOpen);
  EXPECT_NE(tryIt().Text.find(lock), std::string::npos);
  held.reset();
  EXPECT_FALSE(Box.Exists("lock"));
  // One that a run has left which did not live to delete it.
  Box.Write("lock", "");
  EXPECT_EQ(tryIt().Number, 0);
  EXPECT_EQ(FaultOf([&] { Files.Hold(Box.Path("no/lock"), 0); }).Number, kFolderNotFound);
}

TEST(FileSystem, LinkOrCopyIsWholeAndNeverOverAnExistingFile) {
  const std::string whole(150000, 'o');
  const auto rights = fs::perms::owner_read | fs::perms::owner_write;
  for (const bool refused : {false, true}) {
    SCOPED_TRACE(refused ? "links refused" : "links");
    const int steps = test::ForEachFailingStep([&](test::FailingStep& step) {
      const test::Sandbox box;
      const std::string source = box.Write("a.mis", whole), target = box.Path("b.mis");
      const std::string other = box.Write("c.mis", "C");
      fs::permissions(test::ToFsPath(source), rights);
      fs::last_write_time(test::ToFsPath(source), fs::file_time_type(std::chrono::hours(300000)));
      FileSystem files;
      std::string reason, refusal;
      step.During(files, [&] {
        const auto failing = files.BeforeStep;
        files.BeforeStep = [&](const FileStep& next) {
          if (refused && next.Action == "link") throw InvalidCallFault();
          failing(next);
        };
        Trap([&] { files.LinkOrCopy(source, target); },
             [&](const Fault& caught) { reason = caught.Text; });
      });
      Trap([&] { files.LinkOrCopy(source, other); },
           [&](const Fault& caught) { refusal = caught.Text; });
      EXPECT_NE(refusal.find(other), refusal.npos) << refusal;
      EXPECT_TRUE(box.Read("a.mis") == whole && box.Read("c.mis") == "C");
      const bool made = box.Read("b.mis") == whole;
      EXPECT_EQ(box.Names(), made ? "a.mis,b.mis,c.mis" : "a.mis,c.mis");
      EXPECT_TRUE(made || !reason.empty());
      EXPECT_TRUE(step.Failed() || reason.empty()) << reason;
      if (!made) return;
      EXPECT_EQ(files.IsSameFile(source, target), !refused && step.Action() != "link");
      EXPECT_EQ(files.Stamp(target), files.Stamp(source));
      if (test::kPosixFiles) {
        EXPECT_EQ(fs::status(test::ToFsPath(target)).permissions(), rights);
      }
    });
    EXPECT_EQ(steps, refused ? 8 : 2);
  }
}

}  // namespace
}  // namespace rws
