#include "tools/logic/folder_tools.h"

#include <gtest/gtest.h>

#include <deque>
#include <functional>

#include "services/paths.h"
#include "services/pickers.h"
#include "services/setting_values.h"
#include "services/text.h"
#include "tests/support/desk.h"
#include "tests/support/failing_step.h"

namespace rws {
namespace {

using Out = ToolOutcome;
using Strings = std::vector<std::string>;

/** The tools, on missions whose content was noted, with the answers that the user types. */
struct Bench : test::Desk {
  explicit Bench(const std::string& files, const std::string& answers = "") : Desk(files) {
    for (const auto answer : SplitAt(answers, '|')) Answers.emplace_back(answer);
    Box.MakeFolder("from");
    World.Services.Ask.InputBox = [this](const std::string& prompt, const std::string& title,
                                         const std::string& initial) {
      Asked.push_back(prompt + "/" + title + "/" + initial);
      std::string answer = Answers.empty() ? "" : Answers.front();
      if (!Answers.empty()) Answers.pop_front();
      return answer == "<cancel>" ? std::nullopt : std::optional(answer);
    };
    for (const auto& path : World.Doc.MissionFiles) Contents.push_back(Read(path));
  }
  std::string Read(const std::string& path) const { return FileSystem().ReadFile(path); }
  /** Whatever went wrong, each record leads to the file that it was read from. */
  void ExpectFollowed() const {
    for (std::size_t i = 0; i < Contents.size(); ++i) {
      const std::string& path = World.Doc.MissionFiles[i];
      EXPECT_TRUE(Box.Exists(path.substr(Box.Path().size() + 1))) << path;
      EXPECT_EQ(Read(path), Contents[i]) << path;
      for (const auto* record : {&World.Doc.Missions[i], &World.Doc.MissionShadow[i]})
        EXPECT_EQ(record->FileName + record->BaseName, GetFileName(path) + GetBaseName(path));
    }
  }
  ToolResult All() { return RenameAll(World.Doc, World.Services, Seam); }
  ToolResult Case(int index) { return RenameCase(World.Doc, World.Services, index, Seam); }
  ToolResult Convert(const std::string& to = "out") {
    World.Script.ExpectPath("Please select the campaign directory", Box.Path("from"));
    World.Script.ExpectPath("Please select the destination directory", Box.Path(to));
    return ConvertMissionFolder(World.Doc, World.Services, Seam);
  }
  ToolResult Copy(const std::string& names) {
    Strings paths;
    for (const auto name : SplitAt(names, '|'))
      if (!name.empty()) paths.push_back(Box.Path("from/" + std::string(name)));
    World.Script.ExpectPath("Select files to copy", test::Joined(paths));
    return CopyFrom(World.Doc, World.Services, Seam);
  }

  ToolSeam Seam;
  std::deque<std::string> Answers;
  Strings Asked, Contents;
};

constexpr int kAll = -1;

TEST(FolderTools, MissionsAreRenamedAndNoneIsReplaced) {
  struct Row {
    std::string Files, Answers;
    int Index;
    Out Outcome;
    std::string Disk, Notice = "", Text = "";
  };
  const std::string one = "in/a.mis=1", pair = "in/a.mis=1|in/a.properties=P",
                    left = "a.mis=1|a.properties=P", stays = "has no briefing. Mission \"";
  std::vector<Row> rows = {
      {"in/a.mis=1|in/a.properties=A|in/b.mis=2|in/C.MIS=3|in/c.properties=C", "N|9", kAll,
       Out::Reread, "N09.mis=1|N09.properties=A|N10.mis=2|N11.mis=3|c.properties=C"},
      {"in/n01.mis=1|in/n02.mis=2|in/n02.properties=B", "n|2", kAll, Out::Reread,
       "n02.mis=1|n03.mis=2|n03.properties=B"},
      {"in/a01.mis=1", "A|100", kAll, Out::Reread, "A100.mis=1"},
      {pair, "<cancel>", kAll, Out::Nothing, left},
      {pair, "n|", kAll, Out::Nothing, left},
      {pair, "n|1,5", kAll, Out::Nothing, left},
      {pair, "n|1e999", kAll, Out::Nothing, left, "verflow"},
      {pair, "../n", kAll, Out::Nothing, left, "../n"},
      {"", "n|1", kAll, Out::Nothing, ""},
      // The rest of the run so far is finished.
      {"in/a.mis=1|in/b.mis=2|in/c.mis=3|in/n02.mistmp=X", "n|1", kAll, Out::Rows,
       "b.mis=2|c.mis=3|n01.mis=1|n02.mistmp=X", "n02.mistmp"},
      {"in/a.mis=1|in/a.properties=A|in/b.mis=2|in/n01.properties=X", "n|1", kAll, Out::Rows,
       "n01.mis=1|n01.properties=X|n01.propertiestmp=A|n02.mis=2", "n01.properties"},
      {pair, "New one", 0, Out::Reread, "New one.mis=1|New one.properties=P"},
      {pair, "a", 0, Out::Reread, left},
      {pair, "", 0, Out::Nothing, left},
      {pair, "out/b", 0, Out::Nothing, left, "out/b"},
      {pair, "b\\c", 0, Out::Nothing, left, "b\\c"},
      {pair, "b?", 0, Out::Nothing, left, "b?"},
      {one, "", 3, Out::RowText, "A.mistmp=1", stays, "A"},
      {one, "b", 0, Out::RowText, "b.mistmp=1", stays, "b"},
      {"in/a.MIS=1|in/a.properties=P", "", 3, Out::RowText, "A.mistmp=1|a.properties=P", stays,
       "A"},
      {pair + "|in/b.mistmp=X", "b", 0, Out::Nothing, left + "|b.mistmp=X", "b.mistmp"},
      {pair + "|in/b.propertiestmp=X", "b", 0, Out::RowText,
       "a.properties=P|b.mistmp=1|b.propertiestmp=X",
       "stands as \"b.mistmp\", its briefing as \"a.properties\".", "b"},
      {pair + "|in/b.mis=X", "b", 0, Out::RowText, "b.mis=X|b.mistmp=1|b.properties=P",
       "already exists: \"", "b"},
      {pair + "|in/b.mis=X", "b", 0, Out::RowText, "b.mis=X|b.mistmp=1|b.properties=P",
       ". Mission \"a\" now stands as \"b.mistmp\", its briefing as \"b.properties\".", "b"}};
  if (test::kPosixFiles) {
    rows.push_back({"in/A.mis=1|in/a.mis=2|in/a.properties=B", "n|1", kAll, Out::Reread,
                    "n01.mis=1|n02.mis=2|n02.properties=B"});
    rows.push_back({"in/A.mis=1|in/a.mis=2|in/a.properties=P", "", 1, Out::RowText,
                    "A.mistmp=1|a.mis=2|a.properties=P", stays, "A"});
  }
  const std::string single = "Enter the new name for a/RWS Edit/a",
                    all =
                        "Enter the new mission name.\nThe format will be - NewNameXX.\nWhere XX "
                        "is an incremented number./RWS Edit/|Please enter a starting "
                        "number./RWS Edit/1";
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Files + " " + row.Answers + " " + std::to_string(row.Index));
    Bench desk(row.Files, row.Answers);
    const auto result = row.Index == kAll ? desk.All() : desk.Case(row.Index);
    EXPECT_TRUE(result.Outcome == row.Outcome) << static_cast<int>(result.Outcome);
    EXPECT_EQ(result.Text, row.Text);
    EXPECT_EQ(desk.Disk(), row.Disk);
    desk.ExpectFollowed();
    EXPECT_EQ(desk.Notices().empty(), row.Notice.empty());
    EXPECT_TRUE(Contains(desk.Notices(), row.Notice)) << desk.Notices();
    EXPECT_EQ(desk.Asked.empty(), row.Index > 0);
    EXPECT_TRUE((row.Index == kAll ? all : single).starts_with(test::Joined(desk.Asked)));
  }
}

TEST(FolderTools, TheCaseOfANameFollowsItsLetters) {
  struct Row {
    std::string Base;
    int Index;
    std::string Result;
  };
  std::vector<Row> rows = {{"ALPHA bRAVO-x", 1, "Alpha Bravo-x"},
                           {"ÄRA éTÉ ЖУК", 1, "Ära Été Жук"},
                           {"AB", 2, "ab"},
                           {"aßÿž÷ώ", 3, "AßŸŽ÷Ώ"}};
  if (test::kPosixFiles) rows.push_back({"\xFF\x41", 2, "\xFF\x61"});
  for (const auto& [base, index, name] : rows) {
    Bench desk("in/" + base + ".mis=1|in/" + base + ".properties=P");
    EXPECT_EQ(desk.Case(index).Text, name);
    EXPECT_EQ(desk.Disk(), name + ".mis=1|" + name + ".properties=P");
    desk.ExpectFollowed();
  }
}

TEST(FolderTools, AFolderIsConvertedWithoutItsPlayers) {
  const std::string players = test::CrlfText("[MAIN]|  player x|player y|   playerNum 0| army 1"),
                    bare = "[MAIN]\n  Player x\n army 1\n", other = "not player\r\n\r\nend",
                    clean = test::CrlfText("[MAIN]|player y| army 1");
  const std::string from = "from/a.mis=" + players + "|from/A1.Mis=" + bare +
                           "|from/b.mis=" + other +
                           "|from/a.properties=P|from/c.properties=C|out/b.mis=X";
  const std::string army = test::CrlfText("[MAIN]| army 1"), rest = other + "\r\n";
  // Briefings are paired by position: the second mission takes that of "c".
  const std::pair<std::string, std::string> rows[] = {
      {"",
       "A1.Mis=" + army + "|a.mis=" + clean + "|a.properties=P|b.mis=" + rest + "|c.properties=C"},
      {"n", "b.mis=X|n-01.mis=" + clean + "|n-01.properties=P|n-02.mis=" + army +
                "|n-02.properties=C|n-03.mis=" + rest}};
  for (const auto& [typed, disk] : rows) {
    Bench desk(from, typed);
    const std::string before = desk.Disk("from");
    const auto result = desk.Convert();
    EXPECT_TRUE(result.Outcome == Out::GoToFolder && result.Text == desk.Box.Path("out"));
    EXPECT_EQ(desk.Disk("out"), disk) << desk.Notices();
    EXPECT_EQ(desk.Disk("from"), before);
    EXPECT_EQ(test::Joined(desk.World.Script.StartFolders),
              ExistingFolder(desk.World.Services, "") + "|" + desk.Box.Path());
    EXPECT_EQ(ReadSetting(desk.World.Services.Settings, setting::CampaignPath),
              desk.Box.Path("from"));
  }
  Strings refused = {"from", "FROM", "none"};
  if (test::kPosixFiles) refused.insert(refused.end(), {"link", "leads"});
  for (const auto& to : refused) {
    SCOPED_TRACE(to);
    Bench desk("from/a.mis=1|from/b.mis=2|from/a.properties=P|leads/x=");
    if (test::kPosixFiles) {
      desk.Box.Link("link", "from");
      desk.Box.Link("leads/a.mis", "from/b.mis");
    }
    EXPECT_TRUE(desk.Convert(to).Outcome == Out::Nothing);
    EXPECT_EQ(desk.Disk("from"), "a.mis=1|a.properties=P|b.mis=2");
    EXPECT_EQ(desk.World.Script.Notices.size(), 1u);
  }
  for (const std::string stop : {"<cancel>", "a/b"}) {
    Bench desk("from/a.mis=1", stop);
    EXPECT_TRUE(desk.Convert().Outcome == Out::Nothing);
    EXPECT_EQ(desk.Disk("out"), "");
  }
}

TEST(FolderTools, ChosenMissionsAreCopiedAndNoneReplaced) {
  const std::string from = "from/a.mis=1|from/A.properties=P|from/B.MIS=2|from/b.properties=Q";
  struct Row {
    std::string Files, Names;
    Out Outcome;
    std::string Disk;
  };
  for (const Row& row :
       {Row{"", "a.mis|B.MIS", Out::Reread, "A.properties=P|B.MIS=2|a.mis=1|b.properties=Q"},
        Row{"", "", Out::Nothing, ""}, Row{"", "no.mis|a.mis", Out::Nothing, ""},
        Row{"|in/b.mis=X", "a.mis|B.MIS|a.mis", Out::Nothing, "A.properties=P|a.mis=1|b.mis=X"},
        Row{"|in/a.properties=X", "a.mis|B.MIS", Out::Nothing, "a.mis=1|a.properties=X"}}) {
    SCOPED_TRACE(row.Files + row.Names);
    Bench desk(from + row.Files);
    EXPECT_TRUE(desk.Copy(row.Names).Outcome == row.Outcome);
    EXPECT_EQ(desk.Disk(), row.Disk);
    EXPECT_EQ(desk.Notices().empty(), row.Names.empty() || row.Outcome == Out::Reread);
  }
}

const std::string kWorld =
    "in/a.mis=1|in/a.properties=A|in/b.mis=2|in/b.properties=B|from/x.mis=3\r\n|"
    "from/x.properties=X|from/y.mis=4\r\n|from/y.properties=Y|out/x.mis=old|out/x.properties=oldX";

struct Tool {
  std::string Answers;
  std::function<ToolResult(Bench&)> Run;
};

const Tool kTools[] = {{"b|1", &Bench::All},
                       {"n", [](Bench& desk) { return desk.Case(0); }},
                       {"", [](Bench& desk) { return desk.Case(3); }},
                       {"", [](Bench& desk) { return desk.Convert(); }},
                       {"", [](Bench& desk) { return desk.Copy("x.mis|y.mis"); }}};

TEST(FolderTools, EachFileIsToldAndACloseEndsTheRun) {
  // A numbering brings back what it has begun.
  struct Row {
    std::size_t Tool;
    std::string Told, Folder, Disk;
  };
  for (const Row& row :
       {Row{0, "a.mis 1/4 ", "in", "b.mis=2|b.properties=B|b01.mis=1|b01.properties=A"},
        Row{3, "x.mis 1/2 ", "out", "x.mis=3\r\n|x.properties=X"},
        Row{4, "x.mis 1/2 ", "in",
            "a.mis=1|a.properties=A|b.mis=2|b.properties=B|x.mis=3\r\n|x.properties=X"}}) {
    SCOPED_TRACE(row.Tool);
    Bench desk(kWorld, kTools[row.Tool].Answers);
    std::string told;
    desk.Seam.Told = [&](const WorkStep& step) {
      told += std::string(step.Name) + " " + std::to_string(step.Done) + "/" +
              std::to_string(step.Of) + " ";
      return true;
    };
    desk.World.Services.System.PumpEvents = [&] { desk.World.Doc.Closing = !told.empty(); };
    const Out outcome = kTools[row.Tool].Run(desk).Outcome;
    EXPECT_TRUE(outcome == Out::Nothing || outcome == Out::Rows);
    EXPECT_EQ(told, row.Told);
    EXPECT_EQ(desk.Disk(row.Folder), row.Disk);
    desk.ExpectFollowed();
  }
}

TEST(FolderTools, ACancelledNumberingGivesAllTheirOldNames) {
  // The new names are old ones of others.
  const std::string files = "in/n01.mis=1|in/n01.properties=A|in/n02.mis=2|in/n03.mis=3",
                    before = "n01.mis=1|n01.properties=A|n02.mis=2|n03.mis=3";
  for (std::size_t last = 1; last < 6; ++last)
    test::ForEachFailingStep([&](test::FailingStep& step) {
      Bench desk(files, "n|2");
      std::size_t told = 0;
      desk.Seam.Told = [&](const WorkStep& at) { return (told = at.Done) < last; };
      Out outcome{};
      step.During(desk.World.Services.Files, [&] { outcome = desk.All().Outcome; });
      SCOPED_TRACE(std::to_string(last) + step.Path());
      EXPECT_TRUE(outcome == Out::Rows || step.Failed());
      desk.ExpectFollowed();
      EXPECT_EQ(desk.Disk() == before || step.Failed(), true) << desk.Disk();
      EXPECT_EQ(Contains(desk.Notices(), "Cancelled"), !step.Failed()) << desk.Notices();
    });
  for (const auto& [tool, disk] : {std::pair{3, "x.mis=3\r\n|x.properties=X"},
                                   std::pair{4,
                                             "a.mis=1|a.properties=A|b.mis=2|b.properties=B|"
                                             "x.mis=3\r\n|x.properties=X"}}) {
    Bench desk(kWorld, kTools[tool].Answers);
    desk.Seam.Told = [](auto...) { return false; };
    const Out outcome = kTools[tool].Run(desk).Outcome;
    EXPECT_TRUE(outcome == (tool == 3 ? Out::Nothing : Out::Reread)) << "what is copied is shown";
    EXPECT_EQ(desk.Disk(tool == 3 ? "out" : "in"), disk);
    EXPECT_TRUE(Contains(desk.Notices(), "Cancelled"));
  }
}

TEST(FolderTools, SettlesBehindTheLastQuestionAndBeforeTheFirstChange) {
  for (const Tool& tool : kTools) {
    SCOPED_TRACE(&tool - kTools);
    if (&tool == &kTools[2]) continue;  // does not reread
    Bench desk(kWorld, tool.Answers);
    const std::string before = desk.Disk("in") + desk.Disk("out");
    int settled = 0;
    desk.Seam.Settle = [&] {
      desk.World.Script.AllAsked();
      EXPECT_TRUE(tool.Answers.empty() || desk.Answers.empty());
      return ++settled > 1;
    };
    EXPECT_TRUE(tool.Run(desk).Outcome == Out::Nothing);
    EXPECT_EQ(settled, 1);
    EXPECT_EQ(desk.Disk("in") + desk.Disk("out"), before);
  }
  Bench desk(kWorld, "n");
  desk.Seam.Settle = [&] {
    desk.World.Doc.MissionFiles.erase(desk.World.Doc.MissionFiles.begin());
    return true;
  };
  desk.Case(0);
  EXPECT_TRUE(desk.Box.Exists("in/b.mis")) << "the mission that was asked about is not there";
  EXPECT_TRUE(Contains(desk.Notices(), "a.mis"));
}

}  // namespace
}  // namespace rws
