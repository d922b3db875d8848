#include "session/file_store.h"

#include <gtest/gtest.h>

#include "session/half_renamed.h"
#include "session/journal.h"
#include "tests/support/session_desk.h"

namespace rws::test {
namespace {

constexpr char kStore[] = "program/Recovery/Files";

TEST(FileStore, KeepsEachFileUnderANameOfItsOwn) {
  SessionDesk desk({}, "in/x.mis=1|out/x.mis=22");
  const Services& services = desk.World.Services;
  std::vector<std::string> kept;
  for (const char* file : {"in/x.mis", "out/x.mis", "in/x.mis"}) {
    kept.push_back(KeepInStore(services, desk.Box.Path(file)));
    EXPECT_EQ(FileSystem().ReadFile(kept.back()), desk.Box.Read(file));
  }
  EXPECT_EQ(desk.Box.Names(kStore),
            "2026-03-04 05-06-07 001 x.mis,2026-03-04 05-06-07 002 x.mis,"
            "2026-03-04 05-06-07 003 x.mis");
  EXPECT_EQ(StoreBytes(services), 4u);
  // What is written over the file does not change what is kept.
  services.Files.ReplaceFile(desk.Box.Path("in/x.mis"), "new");
  EXPECT_EQ(FileSystem().ReadFile(kept[0]), "1");
}

/** Files of the store by their days, each of 10 bytes; today is 2026-03-04. */
TEST(FileStore, IsLimitedByAgeAndSizeAndTheOldestGoFirst) {
  struct Row {
    std::string Names;
    StoreLimits Limits;
    std::string Left;
  };
  const std::string own = " 01-02-03 001 a.mis";
  const std::string old = "2026-02-01" + own, edge = "2026-02-02" + own, late = "2026-03-03" + own,
                    later = "2026-03-04" + own, future = "2031-01-01" + own;
  const Row rows[] = {
      {"", {}, ""},
      {old + "," + edge + "," + late, {}, edge + "," + late},
      {edge + "," + late + "," + later, {30, 29}, late + "," + later},
      {edge + "," + late + "," + later, {30, 30}, edge + "," + late + "," + later},
      {edge + "," + late, {30, 0}, ""},
      // The clock has gone backwards: what is of a later day is young.
      {old + "," + future, {}, future},
      {late + "," + future, {30, 10}, future},
      // None of the store's files.
      {"notes.txt," + old, {}, "notes.txt"},
      {"9999-99-99,0000-00-00" + own, {}, "9999-99-99"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Names);
    SessionDesk desk({});
    desk.Box.MakeFolder(kStore);
    for (std::size_t start = 0; start < row.Names.size();) {
      const std::size_t end = std::min(row.Names.find(',', start), row.Names.size());
      desk.Box.Write(kStore + ("/" + row.Names.substr(start, end - start)), "0123456789");
      start = end + 1;
    }
    LimitStore(desk.World.Services, row.Limits);
    EXPECT_EQ(desk.Box.Names(kStore), row.Left);
  }
  LimitStore(SessionDesk({}).World.Services, {});
}

TEST(HalfRenamed, AreFoundAndGetTheirNames) {
  struct Row {
    const char *Files, *Found, *Disk, *Reason;
  };
  const Row rows[] = {
      {"", "", "", ""},
      {"in/a.mis=1|in/b.tmp=2|in/mistmp=3", "", "a.mis=1|b.tmp=2|mistmp=3", ""},
      {"in/a.mistmp=1|in/a.propertiestmp=P|in/B.MISTMP=2", "a.mis|a.properties|B.MIS",
       "B.MIS=2|a.mis=1|a.properties=P", ""},
      {"in/a.mistmp=1|in/a.mis=X|in/b.mistmp=2", "a.mis|b.mis", "a.mis=X|a.mistmp=1|b.mis=2",
       "already exists: \""},
      {"in/a.propertiestmp=P|in/a.properties=X", "a.properties", "a.properties=X|a.propertiestmp=P",
       "a.properties"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Files);
    SessionDesk desk({}, row.Files);
    const auto found = FindHalfRenamed(desk.World.Services, desk.Box.Path("in"));
    std::vector<std::string> wanted;
    for (const auto& file : found) wanted.push_back(file.Wanted.substr(desk.Path("").size() - 4));
    EXPECT_EQ(Joined(wanted), row.Found);
    const std::string before = desk.Files();
    std::string reason;
    RecordFiles(desk.World, "Names", [&] { reason = FinishRenames(desk.World.Services, found); });
    EXPECT_EQ(desk.Disk(), row.Disk);
    EXPECT_NE(reason.find(row.Reason), std::string::npos) << reason;
    EXPECT_EQ(reason.empty(), !*row.Reason);
    desk.Run("undo");
    EXPECT_EQ(desk.Files(), before);
  }
  EXPECT_TRUE(FindHalfRenamed(SessionDesk({}).World.Services, "/no such folder").empty());
}

}  // namespace
}  // namespace rws::test
