#include "services/file_system.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

#include "services/faults.h"
#include "tests/support/sandbox.h"

namespace rws {
namespace {

namespace fs = std::filesystem;
using test::Sandbox;
using Names = std::vector<std::string>;

/** Runs `body` with its n-th step, counted from 1, failing. Returns the name of that step; "" when
    `body` came to its end. */
template <class Body>
std::string FailStep(FileSystem& files, int n, Body body) {
  std::string failed;
  files.BeforeStep = [&](const FileStep& step) {
    if (--n != 0) return;
    failed = step.Action;
    throw FileFault(fault::FileIo, step.Action, step.Path, "told to fail");
  };
  const bool done = ResumeNext(body);
  files.BeforeStep = nullptr;
  return done ? "" : failed;
}

/** The fault that `body` ends with; number 0 when it has none. */
template <class Body>
Fault FaultOf(Body body) {
  Fault result(0, "");
  Trap(body, [&](const Fault& caught) { result = caught; });
  return result;
}

TEST(FileSystem, FailureAtAnyStepLeavesTheOldFile) {
  // Three blocks of writing.
  const std::string whole(150000, 'n');
  for (const bool copy : {false, true}) {
    for (const bool isNew : {false, true}) {
      const std::string old = isNew ? "<none>" : "old";
      std::string steps;
      for (int n = 1;; ++n) {
        ASSERT_LT(n, 50);
        const Sandbox box;
        FileSystem files;
        box.Write("source.mis", whole);
        if (!isNew) box.Write("a.mis", old);
        const std::string failed = FailStep(files, n, [&] {
          if (copy)
            files.CopyFile(box.Path("source.mis"), box.Path("a.mis"));
          else
            files.ReplaceFile(box.Path("a.mis"), whole);
        });
        SCOPED_TRACE((copy ? "copy, " : "replace, ") + old + ", failed: " + failed);
        // Once the name is taken the new bytes stand, whole.
        const bool taken = failed.empty() || failed == "sync folder";
        EXPECT_EQ(box.Read("a.mis") == whole, taken);
        if (!taken) {
          EXPECT_EQ(box.Read("a.mis"), old);
        }
        EXPECT_EQ(box.Names(), isNew && !taken ? "source.mis" : "a.mis,source.mis");
        EXPECT_EQ(box.Read("source.mis"), whole);
        if (failed.empty()) break;
        steps += failed + ",";
      }
      EXPECT_NE(steps.find("create,write,write,write,flush,take name,"), steps.npos) << steps;
    }
  }
}

TEST(FileSystem, ReplaceMakesEmptyFilesAndKeepsRights) {
  const Sandbox box;
  const FileSystem files;
  const std::string path = box.Write("a.mis", "old");
  fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
  const auto rights = fs::status(path).permissions();
  files.ReplaceFile(path, "");
  EXPECT_EQ(box.Read("a.mis"), "");
  EXPECT_EQ(fs::status(path).permissions(), rights);
}

TEST(FileSystem, MoveIsWholeAndNeverOverAnExistingFile) {
  const Sandbox box;
  FileSystem files;
  const std::string a = box.Write("a.mis", "A"), b = box.Write("b.mis", "B");
  box.MakeFolder("sub");
  EXPECT_EQ(FaultOf([&] { files.MoveFile(a, b); }).Number, fault::FileExists);
  EXPECT_EQ(FaultOf([&] { files.MoveFile(a, a); }).Number, fault::FileExists);
  EXPECT_EQ(FaultOf([&] { files.MoveFile(a, box.Path("sub")); }).Number, fault::FileExists);
  EXPECT_EQ(FaultOf([&] { files.MoveFile(a, box.Path("gone/b.mis")); }).Number,
            fault::FileNotFound);
  EXPECT_EQ(FailStep(files, 1, [&] { files.MoveFile(a, box.Path("c.mis")); }), "move");
  EXPECT_EQ(box.Names() + " " + box.Read("a.mis") + box.Read("b.mis"), "a.mis,b.mis,sub AB");
  files.MoveFile(a, box.Path("sub/c.mis"));
  EXPECT_EQ(box.Names() + " " + box.Names("sub"), "b.mis,sub c.mis");
  EXPECT_EQ(box.Read("sub/c.mis"), "A");
  files.DeleteFile(b);
  EXPECT_FALSE(files.FileExists(b) || files.FileExists(box.Path("sub")));
}

TEST(FileSystem, FaultsNameFileAndReason) {
  const Sandbox box;
  const FileSystem files;
  const std::string gone = box.Path("gone"), file = box.Write("file", ""), dir = box.Path("dir");
  box.MakeFolder("dir");
  struct Row {
    int Number;
    std::string Path, Reason;
    std::function<void()> Body;
  };
  const auto all = [](const std::string&) { return true; };
  const Row rows[] = {
      {fault::FileNotFound, gone, "not found", [&] { files.ReadFile(gone); }},
      {fault::FileIo, dir, "Cannot ", [&] { files.ReadFile(dir); }},
      {fault::FileNotFound, gone, "not found", [&] { files.ReplaceFile(gone + "/a", "x"); }},
      {fault::FileIo, dir, "Cannot ", [&] { files.ReplaceFile(dir, "x"); }},
      {fault::FileNotFound, gone, "not found", [&] { files.CopyFile(gone, file); }},
      {fault::FileNotFound, gone, "not found", [&] { files.DeleteFile(gone); }},
      {fault::FileExists, dir, "exists", [&] { files.CreateFolder(dir); }},
      {fault::PathNotFound, gone, "not found", [&] { files.CreateFolder(gone + "/a"); }},
      {fault::PathNotFound, gone, "not found", [&] { files.ListFileNames(gone, all); }},
      {fault::PathNotFound, file, "not found", [&] { files.ListFolder(file); }}};
  for (const auto& row : rows) {
    SCOPED_TRACE(&row - rows);
    const Fault caught = FaultOf(row.Body);
    EXPECT_EQ(caught.Number, row.Number);
    EXPECT_NE(caught.Text.find(row.Path), std::string::npos) << caught.Text;
    EXPECT_NE(caught.Text.find(row.Reason), std::string::npos) << caught.Text;
  }
  EXPECT_EQ(box.Names(), "dir,file");
}

TEST(FileSystem, ListsSortedWithoutRegardToCase) {
  const Sandbox box;
  const FileSystem files;
  for (const char* name : {"b.mis", "C.mis", "a.mis", "\xC3\x89.mis", "\xC3\xA8.mis", "B2.mis"})
    box.Write(name, "");
  box.MakeFolder("Ax.mis");
  const Names sorted{"a.mis", "b.mis", "B2.mis", "C.mis", "\xC3\xA8.mis", "\xC3\x89.mis"};
  EXPECT_EQ(files.ListFileNames(box.Path(), [](const std::string&) { return true; }), sorted);
  const auto entries = files.ListFolder(box.Path());
  ASSERT_EQ(entries.size(), 7u);
  EXPECT_EQ(entries[1].Name, "Ax.mis");
  EXPECT_TRUE(entries[1].IsFolder);
  EXPECT_FALSE(entries[0].IsFolder);
}

// Letter case and links as systems other than Windows have them.
#ifndef _WIN32

TEST(FileSystem, ResolveFindsAnyLetterCase) {
  const Sandbox box;
  const FileSystem files;
  for (const char* name :
       {"Missions/Net/X.Mis", "Missions/both.MIS", "Missions/Both.mis", "\xC3\x89t\xC3\xA9/a.mis"})
    box.Write(name, name);
  const std::pair<const char*, const char*> rows[] = {
      {"Missions/Net/X.Mis", "Missions/Net/X.Mis"},
      {"missions/NET/x.mis", "Missions/Net/X.Mis"},
      {"MISSIONS\\net\\x.MIS", "Missions/Net/X.Mis"},
      {"Missions/both.MIS", "Missions/both.MIS"},
      {"Missions/Both.mis", "Missions/Both.mis"},
      {"missions/both.MIS", "Missions/both.MIS"},
      {"missions/BOTH.mis", "Missions/Both.mis"},
      {"\xC3\xA9T\xC3\x89/A.MIS", "\xC3\x89t\xC3\xA9/a.mis"},
      {"missions/New/Deep.mis", "Missions/New/Deep.mis"},
      {"New.mis", "New.mis"}};
  for (const auto& [asked, found] : rows)
    EXPECT_EQ(files.Resolve(box.Path(asked)), box.Path(found)) << asked;
  EXPECT_EQ(files.ReadFile(box.Path("missions\\net\\x.mis")), "Missions/Net/X.Mis");
  EXPECT_TRUE(files.FolderExists(box.Path("MISSIONS/net/")));
}

TEST(FileSystem, WritingKeepsTheSpellingOnDisk) {
  const Sandbox box;
  const FileSystem files;
  box.Write("Missions/A.Mis", "old");
  files.ReplaceFile(box.Path("MISSIONS\\a.mis"), "new");
  files.CopyFile(box.Path("missions/a.mis"), box.Path("missions/B.mis"));
  files.AppendToFile(box.Path("missions/b.MIS"), "er");
  EXPECT_EQ(box.Names("Missions"), "A.Mis,B.mis");
  EXPECT_EQ(box.Read("Missions/A.Mis") + "," + box.Read("Missions/B.mis"), "new,newer");
  EXPECT_EQ(box.Names(), "Missions");
}

TEST(FileSystem, RenameMayChangeLetterCaseOnly) {
  const Sandbox box;
  const FileSystem files;
  box.Write("x.mis", "X");
  files.MoveFile(box.Path("x.mis"), box.Path("X.mis"));
  EXPECT_EQ(box.Names(), "X.mis");
  box.Write("x.mis", "other");
  EXPECT_EQ(FaultOf([&] { files.MoveFile(box.Path("X.mis"), box.Path("x.mis")); }).Number,
            fault::FileExists);
  EXPECT_EQ(box.Read("X.mis") + "," + box.Read("x.mis"), "X,other");
  box.Write("dir/y.mis", "Y");
  files.MoveFile(box.Path("dir/y.mis"), box.Path("DIR\\Y.mis"));
  EXPECT_EQ(box.Names("dir"), "Y.mis");
}

TEST(FileSystem, CopyOntoItselfIsRefusedBeforeAnythingIsOpened) {
  const Sandbox box;
  FileSystem files;
  box.Write("a.mis", "A");
  fs::create_symlink("a.mis", box.Path("link.mis"));
  fs::create_directory_symlink(box.Path(), box.Path("self"));
  int steps = 0;
  files.BeforeStep = [&](const FileStep&) { ++steps; };
  for (const char* other : {"a.mis", "A.MIS", "link.mis", "self/a.mis"}) {
    SCOPED_TRACE(other);
    EXPECT_EQ(FaultOf([&] { files.CopyFile(box.Path("a.mis"), box.Path(other)); }).Number,
              fault::Permission);
    EXPECT_EQ(FaultOf([&] { files.CopyFile(box.Path(other), box.Path("a.mis")); }).Number,
              fault::Permission);
  }
  EXPECT_EQ(steps, 0);
  EXPECT_EQ(box.Read("a.mis"), "A");
}

TEST(FileSystem, WritingThroughALinkChangesTheRealFile) {
  const Sandbox box;
  const FileSystem files;
  box.Write("real/a.mis", "old");
  box.Write("b.mis", "B");
  fs::create_symlink("real/a.mis", box.Path("link.mis"));
  files.ReplaceFile(box.Path("link.mis"), "new");
  EXPECT_EQ(box.Read("real/a.mis"), "new");
  files.CopyFile(box.Path("b.mis"), box.Path("link.mis"));
  EXPECT_EQ(box.Read("real/a.mis"), "B");
  EXPECT_TRUE(fs::is_symlink(box.Path("link.mis")));
  EXPECT_EQ(box.Names() + " " + box.Names("real"), "b.mis,link.mis,real a.mis");
}

TEST(FileSystem, ListingFollowsLinksAndSkipsDanglingOnes) {
  const Sandbox box;
  const FileSystem files;
  box.Write("a.mis", "");
  box.MakeFolder("dir");
  fs::create_symlink("a.mis", box.Path("link.mis"));
  fs::create_symlink("gone.mis", box.Path("dangling.mis"));
  fs::create_directory_symlink("dir", box.Path("folder.mis"));
  const auto missions = [](const std::string& name) { return name.ends_with(".mis"); };
  EXPECT_EQ(files.ListFileNames(box.Path(), missions), (Names{"a.mis", "link.mis"}));
  std::string all;
  for (const auto& entry : files.ListFolder(box.Path()))
    all += entry.Name + (entry.IsFolder ? "/ " : " ");
  EXPECT_EQ(all, "a.mis dir/ folder.mis/ link.mis ");
  EXPECT_FALSE(files.FileExists(box.Path("dangling.mis")));
}

#endif

}  // namespace
}  // namespace rws
