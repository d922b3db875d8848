#include "tools/logic/backups.h"

#include <gtest/gtest.h>

#include "tests/support/desk.h"
#include "tools/logic/compare_rows.h"

namespace rws::test {
namespace {

std::string Text(int lines, const std::string& changed = "") {
  std::string text;
  for (int i = 0; i < lines; ++i)
    text += changed.find(static_cast<char>('a' + i)) == changed.npos ? std::to_string(i) + "\n"
                                                                     : "other\n";
  return text;
}

/** Rows as "old:new", "|" before a difference, "*count" for a fold. */
std::string Rows(const std::string& before, const std::string& after, bool unfold = false) {
  auto rows = MakeCompareRows(DiffLines(SplitLines(before), SplitLines(after)));
  const auto starts = DifferenceRows(rows);
  std::string shown;
  const auto line = [](std::size_t number) {
    return number == CompareRow::kNoLine ? "-" : std::to_string(number);
  };
  for (std::size_t i = 0; i < rows.size(); ++i) {
    shown += i == 0 ? "" : " ";
    if (std::find(starts.begin(), starts.end(), i) != starts.end()) shown += "|";
    if (rows[i].Folded > 0 && unfold) {
      for (const auto& row : HiddenRows(rows[i]))
        shown += line(row.Old) + ":" + line(row.New) + ";";
      continue;
    }
    shown += line(rows[i].Old) + ":" + line(rows[i].New);
    if (rows[i].Folded > 0) shown += "*" + std::to_string(rows[i].Folded);
  }
  return shown;
}

TEST(CompareRows, StandSideBySideAndFoldWhatIsEqual) {
  EXPECT_EQ(Rows("", ""), "");
  EXPECT_EQ(Rows(Text(9), Text(9)).find('*'), std::string::npos) << "nothing to find there";
  EXPECT_EQ(Rows("a\nb\nc\n", "a\nx\ny\nc\nz\n"), "0:0 |1:1 -:2 2:3 |-:4");
  // Seven lines before a difference and ten between two.
  EXPECT_EQ(Rows(Text(20, "hs"), Text(20)),
            "0:0*4 4:4 5:5 6:6 |7:7 8:8 9:9 10:10 11:11*4 15:15 16:16 17:17 |18:18 19:19");
  EXPECT_EQ(Rows(Text(20, "hr"), Text(20)).substr(0, 57),
            "0:0*4 4:4 5:5 6:6 |7:7 8:8 9:9 10:10 11:11 12:12 13:13 14");
  EXPECT_EQ(Rows("x\n" + Text(7), Text(7), true), "|0:- 1:0 2:1 3:2 4:3;5:4;6:5;7:6;");
}

constexpr char kBackup[] = "RWS Backup/a.mis.bak", kStamped[] = "a.mis.03-04-26 05-06-07.bak";

/** A mission and a backup of it. */
struct RestoreDesk : Desk {
  RestoreDesk() : Desk("in/a.mis=now") {
    Box.Write(std::string("app/") + kBackup, "then");
    World.Services.AppPath = Box.Path("app");
    World.Prefs.bBackup = false;
    NoteBackup(World.Services, BackupFile(), Box.Path("in/a.mis"));
  }
  std::string BackupFile() const { return Box.Path(std::string("app/") + kBackup); }
  bool Restore() { return RestoreBackup(World.Services, World.Prefs, Record(), BackupFile()); }
};

TEST(RestoreBackup, KeepsWhatStoodThere) {
  RestoreDesk desk;
  desk.World.Prefs.BackupsKept = 1;
  desk.Box.Write("app/RWS Backup/a.mis.01-01-01 01-01-01.bak", "old");
  NoteBackup(desk.World.Services, "a.mis.01-01-01 01-01-01.bak", desk.Box.Path("in/a.mis"));
  EXPECT_TRUE(desk.Restore());
  EXPECT_EQ(desk.Disk(), "a.mis=then");
  EXPECT_EQ(desk.Box.Read("app/RWS Backup/" + std::string(kStamped)), "now");
  EXPECT_EQ(desk.Box.Names("app/RWS Backup"), "Origins.txt," + std::string(kStamped) + ",a.mis.bak")
      << "no more than one with a time";
  EXPECT_EQ(ListBackups(desk.World.Services, desk.Box.Path("in/a.mis"))[0].Origin,
            BackupOrigin::ThisMission);
  EXPECT_NE(desk.Notices().find("is again as it was on 20"), std::string::npos);
}

}  // namespace
}  // namespace rws::test
