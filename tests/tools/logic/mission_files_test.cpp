#include "tools/logic/mission_files.h"

#include <gtest/gtest.h>

#include <functional>

#include "services/paths.h"
#include "services/setting_values.h"
#include "services/text.h"
#include "tests/support/desk.h"
#include "tests/support/failing_step.h"
#include "tools/logic/mission_menu.h"

namespace rws {
namespace {

using Result = ToolOutcome;

/** One mission and its briefing, a game directory, and what the mission menu does. */
struct Menu : test::Desk {
  explicit Menu(const std::string& name = "a.mis", const std::string& folder = "in",
                const std::string& briefing = "a.properties")
      : Desk(folder + "/" + name + "=M" +
                 (briefing.empty() ? "" : "|" + folder + "/" + briefing + "=P"),
             folder) {
    Box.MakeFolder("game/snd");
    World.Doc.GamePath = Box.Path("game");
  }
  ToolOutcome SaveAs(const std::string& target) {
    World.Script.ExpectPath("SaveAs", target.empty() ? "" : Box.Path(target));
    return SaveMissionAs(World.Doc, World.Services);
  }
  ToolOutcome Move(const std::string& target) {
    World.Script.ExpectPath("Select a directory to move the mission to",
                            target.empty() ? "" : Box.Path(target));
    return MoveMission(World.Doc, World.Services);
  }
  ToolOutcome Delete(Answer answer = Answer::Yes) {
    World.Script.Expect("Are you sure you want to delete\n", answer);
    return DeleteMission(World.Doc, World.Services);
  }
  /** `warning` is the text of the box behind the last question, if one comes. */
  bool AddSound(const std::string& target, const std::string& warning = "",
                Answer answer = Answer::Ok) {
    World.Script.ExpectPath("Choose sound file to copy", Box.Path("tapes/gun.1.wav"));
    World.Script.Expect("gun.1 is ready to copy", answer);
    if (answer == Answer::Ok)
      World.Script.ExpectPath("Select destination to copy sound file to", target);
    if (!warning.empty()) World.Script.Expect(warning);
    return AddSoundFile(World.Doc, World.Services);
  }
  /** The folder and, behind ";", the folder "out". */
  std::string Both(const std::string& folder = "in") const {
    return Disk(folder) + ";" + Disk("out");
  }
  std::string Setting(const SettingValue& value) const {
    return ReadSetting(World.Services.Settings, value);
  }
};

const std::string kBoth = "a.mis=M|a.properties=P;";

TEST(MissionFiles, TakeTheirBriefingAlong) {
  struct Row {
    std::string Folder, Name, Briefing;
    bool Taken;
  };
  // The replaced path of a folder is not there, and an upper-case ending is not replaced.
  for (const Row& row :
       {Row{"in", "-a b, c.mis", "-a b, c.properties", true},
        Row{"in", "x.mis.mis", "x.properties.properties", true}, Row{"in", "a.mis", "", false},
        Row{"in.misc", "a.mis", "a.properties", false},
        Row{"in", "A.MIS", "A.properties", false}}) {
    SCOPED_TRACE(row.Folder + "/" + row.Name);
    const std::string mission = row.Name + "=M";
    const std::string briefing = row.Briefing.empty() ? "" : row.Briefing + "=P";
    const std::string both = briefing.empty() ? mission : mission + "|" + briefing;
    const std::string stays = row.Taken ? "" : briefing;
    Menu moved(row.Name, row.Folder, row.Briefing), saved(row.Name, row.Folder, row.Briefing),
        deleted(row.Name, row.Folder, row.Briefing);
    EXPECT_EQ(moved.Move("out"), Result::Reread);
    EXPECT_EQ(moved.Both(row.Folder), stays + ";" + (row.Taken ? both : mission));
    EXPECT_EQ(moved.Setting(setting::LastMovePath), moved.Box.Path("out"));
    EXPECT_EQ(saved.SaveAs("out/n.mis"), Result::Reread);
    EXPECT_EQ(saved.Both(row.Folder), both + ";n.mis=M" + (row.Taken ? "|n.properties=P" : ""));
    EXPECT_EQ(saved.Setting(setting::LastSavAsPath), saved.Box.Path("out") + kSeparator);
    EXPECT_EQ(saved.World.Script.StartFolders[0], saved.Box.Path(row.Folder) + kSeparator);
    EXPECT_EQ(deleted.Delete(), Result::Reread);
    EXPECT_EQ(deleted.Both(row.Folder), stays + ";");
    const auto& box = deleted.World.Script.Boxes[0];
    EXPECT_EQ(box.Text, "Are you sure you want to delete\n" + GetBaseName(row.Name) + "?");
    EXPECT_TRUE(box.Buttons == Buttons::YesNo && box.Icon == Icon::Exclamation);
    EXPECT_EQ(box.Title, "Confirm Delete");
  }
}

TEST(MissionFiles, AFailureAtAnyStepLeavesWholeFilesAndIsTold) {
  const std::string old = "old.mis=old|old.properties=oldP", start = kBoth + old;
  struct Row {
    std::function<ToolOutcome(Menu&)> Run;
    /** What may stand, in this order. */
    std::vector<std::string> Stages;
  };
  const Row rows[] = {
      {[](Menu& desk) { return desk.SaveAs("out/old.mis"); },
       {start, kBoth + "old.mis=M|old.properties=oldP", kBoth + "old.mis=M|old.properties=P"}},
      {[](Menu& desk) { return desk.Move("out"); },
       {start, "a.properties=P;a.mis=M|" + old, ";a.mis=M|a.properties=P|" + old}},
      {[](Menu& desk) { return desk.Delete(); }, {start, "a.properties=P;" + old, ";" + old}}};
  for (const auto& row : rows)
    for (const std::string reason : {"disk full", "not permitted"}) {
      std::size_t stage = 0;
      test::ForEachFailingStep([&](test::FailingStep& step) {
        Menu desk;
        desk.Box.Write("out/old.mis", "old");
        desk.Box.Write("out/old.properties", "oldP");
        Result outcome{};
        step.During(
            desk.World.Services.Files, [&] { outcome = row.Run(desk); }, reason);
        const bool taken = !desk.Box.Exists("in/a.mis");
        const Result stopped = taken ? Result::Gone : Result::Nothing;
        EXPECT_EQ(outcome, step.Failed() ? stopped : Result::Reread);
        while (stage < row.Stages.size() && desk.Both() != row.Stages[stage]) ++stage;
        ASSERT_LT(stage, row.Stages.size()) << step.Path() << ": " << desk.Both();
        const std::string notices = desk.Notices();
        EXPECT_EQ(Contains(notices, reason), step.Failed()) << notices;
        EXPECT_TRUE(Contains(notices, step.Path())) << notices;
        const bool left = step.Failed() && taken && desk.Box.Exists("in/a.properties");
        EXPECT_EQ(Contains(notices, "Its briefing is still in"), left) << notices;
        EXPECT_EQ(Contains(notices, ". The mission is "), step.Failed() && taken) << notices;
        EXPECT_EQ(test::Joined(desk.World.Log), "");
      });
      EXPECT_EQ(stage, row.Stages.size() - 1);
    }
}

TEST(MissionFiles, RefuseWhatWouldCostAFile) {
  struct Row {
    std::string Name, Existing, Notice, Disk;
    std::function<ToolOutcome(Menu&)> Run;
  };
  const auto gone = [](Menu& desk) -> Menu& {
    desk.World.Services.Files.DeleteFile(desk.World.Doc.MissionFiles[0]);
    return desk;
  };
  const std::string left = "a.properties=P;b.mis=X";
  std::vector<Row> rows = {
      {"own name", "", "same file", kBoth, [](Menu& d) { return d.SaveAs("in/a.mis"); }},
      {"to no folder", "", "Path not found", kBoth, [](Menu& d) { return d.SaveAs("no/b.mis"); }},
      {"move onto itself", "", "already exists", kBoth, [](Menu& d) { return d.Move("in"); }},
      {"move to no folder", "", "Path not found", kBoth, [](Menu& d) { return d.Move("no"); }},
      {"mission stands", "out/a.mis", "already exists", kBoth + "a.mis=X",
       [](Menu& d) { return d.Move("out"); }},
      {"briefing stands", "out/a.properties", "already exists",
       "a.properties=P;a.mis=M|a.properties=X", [](Menu& d) { return d.Move("out"); }},
      {"gone, save", "out/b.mis", "not found", left,
       [&](Menu& d) { return gone(d).SaveAs("out/b.mis"); }},
      {"gone, move", "out/b.mis", "not found", left, [&](Menu& d) { return gone(d).Move("out"); }},
      {"gone, delete", "out/b.mis", "not found", left, [&](Menu& d) { return gone(d).Delete(); }}};
  rows.push_back({"own name in another case", "",
                  test::kPosixFiles ? "already exists" : "same file", kBoth,
                  [](Menu& d) { return d.SaveAs("in/A.mis"); }});
  const auto link = [](Menu& desk) -> Menu& {
    desk.Box.Link("out/l.mis", "in/a.mis");
    return desk;
  };
  if (test::kPosixFiles) {
    rows.push_back({"through a link", "", "same file", kBoth + "l.mis=M",
                    [&](Menu& d) { return link(d).SaveAs("out/l.mis"); }});
    rows.push_back({"a spelling the dialog did not ask about", "out/B.mis", "already exists",
                    kBoth + "B.mis=X", [](Menu& d) { return d.SaveAs("out/b.mis"); }});
  }
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Name);
    Menu desk;
    if (!row.Existing.empty()) desk.Box.Write(row.Existing, "X");
    const Result outcome = row.Run(desk);
    EXPECT_EQ(desk.Both(), row.Disk);
    const bool there = desk.Box.Exists("in/a.mis") || row.Name == "gone, save";
    EXPECT_EQ(outcome, there ? Result::Nothing : Result::Gone);
    EXPECT_TRUE(Contains(desk.Notices(), row.Notice)) << desk.Notices();
    EXPECT_EQ(desk.Setting(setting::LastSavAsPath) + desk.Setting(setting::LastMovePath), "");
  }
}

TEST(MissionFiles, CancelAndAnEmptyListChangeNothing) {
  Menu desk;
  EXPECT_TRUE(desk.SaveAs("") == Result::Cancelled && desk.Move("") == Result::Cancelled &&
              desk.Delete(Answer::No) == Result::Cancelled);
  desk.World.Doc.MissionFiles.clear();
  desk.World.Doc.Missions.clear();
  EXPECT_TRUE(desk.SaveAs("out/b.mis") == Result::Nothing && desk.Move("out") == Result::Nothing &&
              desk.Delete() == Result::Nothing);
  EXPECT_EQ(desk.Both(), kBoth);
}

TEST(MissionFiles, TheBriefingOfAMissionInAnotherCaseIsNotTouched) {
  if (!test::kPosixFiles) GTEST_SKIP() << test::kNeedsPosixFiles;
  Menu desk("a.mis", "in", "A.properties");
  desk.Box.Write("in/A.mis", "other");
  EXPECT_EQ(desk.Delete(), Result::Reread);
  EXPECT_EQ(desk.Both(), "A.mis=other|A.properties=P;");
}

TEST(MissionMenu, ASoundIsRecordedAndNotCopied) {
  Menu desk;
  bool asks = true;
  const auto save = desk.World.Services.Ask.SaveFile;
  desk.World.Services.Ask.SaveFile = [&](const FileQuestion& question) {
    asks = question.AsksToReplace;
    return save(question);
  };
  EXPECT_TRUE(desk.AddSound(desk.Box.Path("game/snd/gun.wav")));
  const std::string sound = BuildPath(desk.Box.Path("game"), "snd\\gun.wav");
  EXPECT_EQ(desk.Record().BriefSoundLine, "  briefSound snd/gun.wav");
  EXPECT_EQ(desk.Record().BriefSound, sound);
  EXPECT_EQ(desk.Box.Names("game/snd"), "");
  EXPECT_FALSE(asks) << "the sound must stand there, and nothing replaces it";
  EXPECT_EQ(test::Joined(desk.World.Script.StartFolders),
            desk.Box.Path("game") + "|" + desk.Box.Path("game"));
  EXPECT_EQ(desk.Setting(setting::SoundFrom), desk.Box.Path("tapes"));
  EXPECT_EQ(desk.Setting(setting::SoundTo), desk.Box.Path("game/snd"));
  EXPECT_TRUE(desk.World.Script.Boxes[0].Buttons == Buttons::OkCancel);
  // Outside the game the whole path is the line; without a blank in it no file name is found.
  EXPECT_TRUE(desk.AddSound("/gamer/gun.wav"));
  EXPECT_EQ(desk.Record().BriefSoundLine + desk.Record().BriefSound, "/gamer/gun.wav" + sound);
  EXPECT_TRUE(desk.AddSound(desk.Box.Path("game/my snd/a gun.wav"),
                            "a gun.wav\": it reads the path of a sound up to the first"));
  EXPECT_EQ(desk.Record().BriefSoundLine, "  briefSound my snd/a gun.wav") << "told, and attached";
  desk.Record() = {};
  EXPECT_FALSE(desk.AddSound("", "", Answer::Cancel));
  EXPECT_FALSE(desk.AddSound(""));
  for (const std::string bad : {"\xE6\x97\xA5.wav", "a\nb.wav"})
    EXPECT_FALSE(desk.AddSound(desk.Box.Path("game/snd/" + bad))) << "no mission can hold it";
  EXPECT_EQ(desk.World.Script.Notices.size(), 2u);
  EXPECT_EQ(desk.Record().BriefSoundLine + desk.Record().BriefSound, "");
}

TEST(MissionMenu, TheTextIsShownOrTheReasonTold) {
  Menu desk("-a b.mis");
  const std::string path = desk.World.Doc.MissionFiles[0];
  const auto view = [&] { ViewMissionText(desk.World.Doc, desk.World.Services); };
  view();
  EXPECT_EQ(test::Joined(desk.World.ShellCalls), "text " + path);
  desk.World.Services.System.OpenText = [](const std::string&) { return 31; };
  view();
  desk.World.Services.Files.DeleteFile(path);
  view();
  EXPECT_EQ(desk.Notices(), "Cannot open: \"" + path +
                                "\": no text editor could be started|File not found: \"" + path +
                                "\"");
}

TEST(MissionMenu, TheBriefingIsOpenedWithWhatTheMissionHas) {
  Menu desk("-A b.Mis", "In.mis");
  desk.Record().CloudHeight = "1500";
  desk.Record().MapName = "Moscow";
  const auto fields = [&](const std::string& clouds, const std::string& time) {
    desk.Record().CloudType = clouds;
    desk.Record().Time = time;
    const BriefFields made =
        MakeBriefFields(desk.World.Doc, desk.World.Services, {"Clear", "Good"});
    EXPECT_EQ(made.BriefName, desk.Box.Path("In.mis/-a b.properties"));
    EXPECT_EQ(made.MissionPath, desk.Record().DirPath);
    return test::Joined({made.Weather, made.Map, made.MisTime, made.Clouds});
  };
  EXPECT_EQ(fields("1", "7.5"), "Good|Moscow|7:30|1500");
  EXPECT_EQ(fields("", "noon"), "Clear|Moscow||1500");
  for (const std::string none : {"7", "-1", "99999"}) EXPECT_EQ(fields(none, ""), "|Moscow||1500");
}

TEST(MissionMenu, ABriefingIsNotThatOfAMissionInAnotherCase) {
  if (!test::kPosixFiles) GTEST_SKIP() << test::kNeedsPosixFiles;
  const struct {
    const char *Briefings, *Opened;
    bool Other;
  } rows[] = {{"", "b.properties", false},
              {"", "B.properties", true},
              {"b.properties", "b.properties", false},
              {"b.properties", "B.properties", true},
              {"B.properties", "B.properties", true},
              {"b.properties|B.properties", "B.properties", true}};
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.Briefings) + (row.Other ? " of two" : ""));
    Menu desk("B.mis", "in.mis", "");
    if (row.Other) desk.Box.Write("in.mis/b.mis", "other");
    for (const auto briefing : SplitAt(row.Briefings, '|'))
      if (!briefing.empty()) desk.Box.Write("in.mis/" + std::string(briefing), "P");
    EXPECT_EQ(MakeBriefFields(desk.World.Doc, desk.World.Services, {}).BriefName,
              desk.Box.Path("in.mis/" + std::string(row.Opened)));
  }
}

}  // namespace
}  // namespace rws
