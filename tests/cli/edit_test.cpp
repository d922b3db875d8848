#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <thread>
#include <vector>

#include "tests/support/doubles.h"
#include "tests/support/run_cli.h"

namespace rws {
namespace {

/** A mission as later versions of the game write it, with a line that no record knows. */
const std::string kMission = test::CrlfText(
    "[MAIN]|  MAP Moscow/sload.ini|  TIME 12.0|  CloudType 1|  CloudHeight 900.0|  player 4ShAPL00|"
    "  army 1|  playerNum 0|[WEATHER]|\tWindSpeed 2.0|[Wing]|  4ShAPL00|  I_JG5401|[4ShAPL00]|"
    "  Planes 2|  Skill 1|  skin0 Old.bmp|  Class air.IL_2Type3|  Fuel 100|  weapons default|"
    "  spawn0 7_Static|[4ShAPL00_Way]|  TAKEOFF 1.50 2.50 0 0 &0|"
    "  NORMFLY 3.00 4.00 500.00 300.00 I_JG5401 1 &0 F2|  LANDING 5.00 6.00 0 0 &0|[I_JG5401]|"
    "  Planes 1|  OnlyAI 1|  Skill 3|  Class air.BF_109G6Late|  Fuel 50|  weapons default|"
    "[I_JG5401_Way]|  NORMFLY 7.00 8.00 900.00 350.00 &0|  NORMFLY 9.00 9.00 900.00 350.00 &0|"
    "[NStationary]|[BornPlace]|  1 3000 5 6 1 1000|  2 3000 7 8 1 1000|[Bridge]|[House]");

/** Runs the tool from a folder of its own, where it keeps its backups. */
class CliEdit : public test::CliTest {
 protected:
  void SetUp() override {
    always_ = "--tables \"" + test::SourceFolder() + "/data\" ";
    box_.MakeFolder("bin");
    const auto program = test::ToFsPath(program_);
    const auto own = test::ToFsPath(box_.Path("bin")) / program.filename();
    std::error_code error;
    std::filesystem::create_hard_link(program, own, error);
    if (error) std::filesystem::copy_file(program, own);
    program_ = box_.Path("bin/" + program.filename().string());
    box_.Write("a.mis", kMission);
  }
  /** What differs from the mission, as "old>new" for each line of a dry run's diff. */
  std::string Changes() const {
    const std::string diff = Replace(out_, "\r", "");
    std::string changes;
    for (const auto line : SplitAt(diff, '\n')) {
      if (line.empty() || line.starts_with("---") || line.starts_with("+++")) continue;
      if (line[0] != '-' && line[0] != '+') continue;
      if (!changes.empty()) changes += "|";
      changes.append(line.substr(0, 1)).append(Trim(line.substr(1)));
    }
    return changes;
  }
  std::string Folder() const { return box_.Names() + ";" + box_.Names("bin"); }
};

TEST_F(CliEdit, ChangesTheWordsOfAValueAlone) {
  const std::pair<const char*, const char*> rows[] = {
      {"--set Time=5.5", "-TIME 12.0|+TIME 5.5"},
      {"--set Time=12", ""},
      {"--set CloudHeight=1500 --set CloudType=6",
       "-CloudType 1|-CloudHeight 900.0|+CloudType 6|+CloudHeight 1500.0"},
      {"--set TimeConstant=1 --set Army=2", "+TIMECONSTANT 1|-army 1|+army 2"},
      {"--set Player=", "-player 4ShAPL00|-playerNum 0"},
      {"--set PlayerNum=1 --set player=4SHAPL00", "-playerNum 0|+playerNum 1"},
      {"--set flight[*].Fuel=50", "-Fuel 100|+Fuel 50"},
      {"--set flight[class=il_2*].StartTime=5", "+StartTime 5"},
      {"--set flight[army=blue].Parachute=0", "+Parachute 0"},
      {"--set flight[4shapl00].Skill=Custom", "-Skill 1|+Skill0 1|+Skill1 1|+Skill2 1|+Skill3 1"},
      {"--set flight[4ShAPL00].plane[1].Skill=3",
       "-Skill 1|+Skill0 1|+Skill1 3|+Skill2 1|+Skill3 1"},
      {"--set flight[4ShAPL00].plane[0].Skin=a=b.bmp", "-skin0 Old.bmp|+skin0 a=b.bmp"},
      {"--set flight[4ShAPL00].plane[*].Skin=", "-skin0 Old.bmp"},
      {"--set flight[4ShAPL00].plane[0].NumberOn=0", "+numberOn0 0"},
      {"--set flight[4ShAPL00].Planes=3 --set flight[4ShAPL00].plane[2].Pilot=Leo.bmp",
       "-Planes 2|+Planes 3|+pilot2 Leo.bmp"},
      {"--set flight[4ShAPL00].Weapons=4XFAB100", "-weapons default|+weapons 4xFAB100"},
      {"--set flight[I_JG5401].Weapons=Odd --force", "-weapons default|+weapons Odd"},
      {"--set flight[4ShAPL00].Class=air.YAK_9D",
       "-skin0 Old.bmp|-Class air.IL_2Type3|+Class air.YAK_9D"},
      {"--set flight[*].waypoint[1].Alt=1234",
       "-NORMFLY 3.00 4.00 500.00 300.00 I_JG5401 1 &0 F2|"
       "+NORMFLY 3.00 4.00 1234.00 300.00 I_JG5401 1 &0 F2|"
       "-NORMFLY 9.00 9.00 900.00 350.00 &0|+NORMFLY 9.00 9.00 1234.00 350.00 &0"},
      {"--set \"flight[4ShAPL00].waypoint[1].Marker=&1\" --set "
       "flight[4ShAPL00].waypoint[1].Type=gattack",
       "-NORMFLY 3.00 4.00 500.00 300.00 I_JG5401 1 &0 F2|"
       "+GATTACK 3.00 4.00 500.00 300.00 I_JG5401 1 &1 F2"},
      {"--set base[1].Army=1 --set base[0].Radius=600",
       "-1 3000 5 6 1 1000|-2 3000 7 8 1 1000|+1 600 5 6 1 1000|+1 3000 7 8 1 1000"},
      {"--remove flight[army=blue]",
       "-I_JG5401|-[I_JG5401]|-Planes 1|-OnlyAI 1|-Skill 3|-Class air.BF_109G6Late|-Fuel 50|"
       "-weapons default|-[I_JG5401_Way]|-NORMFLY 7.00 8.00 900.00 350.00 &0|"
       "-NORMFLY 9.00 9.00 900.00 350.00 &0"}};
  for (const auto& [arguments, changes] : rows) {
    SCOPED_TRACE(arguments);
    EXPECT_EQ(Run(std::string("edit a.mis --dry-run ") + arguments), 0);
    EXPECT_EQ(err_.empty(), !Contains(arguments, "--remove")) << err_;
    EXPECT_EQ(Changes(), changes);
  }
  EXPECT_EQ(box_.Read("a.mis"), kMission);
  EXPECT_FALSE(box_.Exists("bin/RWS Backup"));
}

TEST_F(CliEdit, TouchesNoFileWhenSomethingIsWrong) {
  box_.Write("b.mis", kMission);
  box_.Write("brief.mis", "Name A briefing\r\nShort none\r\n");
  box_.Write("respawn.mis", Replace(kMission, "[WEATHER]", "[RespawnTime]\r\n  Bigship 1800"));
  box_.MakeFolder("folder.mis");
  const std::string before = Folder();
  struct Row {
    int Code;
    const char *Arguments, *Told;
  };
  const Row rows[] = {
      {1, "--set Time=24", "a.mis: Time=24: the time is to be in decimal hours"},
      {1, "--set Time=5:30", "decimal hours"},
      {1, "--set Time=", "decimal hours"},
      {1, "--set CloudHeight=49", "from 50 to 2500"},
      {1, "--set CloudType=7", "from 0 to 6"},
      {1, "--set Player=nobody", "the player's flight \"nobody\" does not exist"},
      {1, "--set Player=I_JG5401", "is left to the computer"},
      {1, "--set PlayerNum=2", "has no plane 2"},
      {1, "--set flight[*].Fuel=101", "flight[*].Fuel=101: it is to be a whole number"},
      {1, "--set flight[*].Fuel=1.5", "whole number"},
      {1, "--set flight[*].Skill=4", "a skill from 0 to 3, or Custom"},
      {1, "--set flight[*].Planes=5", "from 1 to 4"},
      {1, "--set flight[*].StartTime=121", "from 0 to 120"},
      {1, "--set flight[4ShAPL00].OnlyAI=1", "is left to the computer"},
      {1, "--set flight[4ShAPL00].Weapons=nukes", "no loadout \"nukes\" for class \"IL_2Type3\""},
      {1, "--set flight[4ShAPL00].Class=Kite", "no class \"Kite\""},
      {1, "--set flight[I_JG5401].plane[0].NoseArt=a.bmp", "carries no nose art"},
      {1, "--set flight[4ShAPL00].plane[2].Skin=", "names nothing in this mission"},
      {1, "--set flight[4ShAPL00].plane[0].Skin=../a.bmp", "the name of a picture"},
      {2, "--set \"flight[4ShAPL00].plane[0].Skin=a // b.bmp\"", "a comment"},
      {2, "--set flight[4ShAPL00].plane[0].Skin=a#b.bmp", "a comment"},
      {1, "--set flight[4ShAPL00].waypoint[99].Alt=1", "names nothing in this mission"},
      {1, "--set flight[4ShAPL00].waypoint[1].Alt=1e3", "whole number"},
      {1, "--set flight[4ShAPL00].waypoint[0].Type=LANDING", "one of TAKEOFF, NORMFLY, GATTACK"},
      {1, "--set flight[4ShAPL00].waypoint[1].Marker=0", "&0 or &1"},
      {1, "--set base[0].Army=17", "from 0 to 16"},
      {1, "--set base[2].Army=1", "names nothing in this mission"},
      {1, "--set flight[nobody].Fuel=1", "flight[nobody].Fuel=1: names nothing in this mission"},
      {1, "--set flight[no*].Fuel=1", "names nothing in any mission"},
      {1, "--remove flight[nobody]", "flight[nobody]: names nothing in this mission"},
      {1, "--set Time=1 --lines anew respawn.mis", "respawn.mis: Time=1: the value would be lost"},
      {1, "--set Time=1 gone.mis", "gone.mis"},
      {1, "--set Time=1 folder.mis", "folder.mis"},
      {1, "--set Time=1 brief.mis", "brief.mis: this is no mission"},
      {2, "", "give --set or --remove"},
      {2, "--set Fuel=1", "--set Fuel=1: there is no such value"},
      {2, "--remove Fuel", "only flight[...] can be removed"},
      {2, "--codepage 1252 --set flight[*].plane[0].Skin=\xD0\x96.bmp",
       "code page 1252 lacks a letter of it"},
      {2, "--set Time=1 ./a.mis", "the file is named twice"},
      {2, "--set Time=1 --output A.MIS", "would replace the mission itself"},
      {2, "--set Time=1 b.mis --output o.mis", "--output takes one file"},
      {2, "--set Time=1 --backup x --no-backup", "excludes"},
      {2, "--set Time=1 --lines some", "--lines"},
      {1, "--set Time=1 --output no/such/o.mis", "Path not found"},
      {1, "--set Time=1 --backup no/such", "no/such"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Arguments);
    // The mission that could be changed stands first, and there is a change that could be made.
    EXPECT_EQ(Run(std::string("edit a.mis ") + row.Arguments), row.Code);
    EXPECT_NE(err_.find(row.Told), err_.npos) << err_;
    EXPECT_EQ(out_, "");
    ASSERT_EQ(box_.Read("a.mis"), kMission);
    box_.Remove("out.txt"), box_.Remove("err.txt");
    ASSERT_EQ(Folder(), before);
  }
}

TEST_F(CliEdit, RefusesLineEndsInValues) {
  EXPECT_EQ(Run("edit a.mis --set \"Player=4ShAPL00\r\n[x]\""), 2);
  EXPECT_NE(err_.find("no line end"), err_.npos) << err_;
  EXPECT_EQ(box_.Read("a.mis"), kMission);
}

TEST_F(CliEdit, WritesAsAnUpdateDoes) {
  const std::string other = Replace(kMission, "4ShAPL00", "5ShAPL00");
  const auto changed = [](const std::string& text) {
    return Replace(text, "TIME 12.0", "TIME 3.25");
  };
  const auto path = test::ToFsPath(box_.Write("m/b.mis", other));
  namespace fs = std::filesystem;
  fs::permissions(path, fs::perms::owner_all);
  const auto rights = fs::status(path).permissions();
  // A pattern need be in one of the files only.
  ASSERT_EQ(Run("edit a.mis m/b.mis --set Time=3.25 --set flight[5*].Fuel=7"), 0) << err_;
  EXPECT_EQ(box_.Read("a.mis"), changed(kMission));
  EXPECT_EQ(box_.Read("m/b.mis"), Replace(changed(other), "Fuel 100", "Fuel 7"));
  EXPECT_EQ(fs::status(path).permissions(), rights);
  EXPECT_EQ(box_.Names("bin/RWS Backup"), "Origins.txt,a.mis.bak,b.mis.bak");
  EXPECT_EQ(box_.Read("bin/RWS Backup/b.mis.bak"), other);
  EXPECT_EQ(box_.Names("bin").find("$$$"), std::string::npos);
  // What has its value already is not written.
  const auto time = fs::last_write_time(path);
  ASSERT_EQ(Run("edit m/b.mis --set Time=3.250 --backup kept"), 0) << err_;
  EXPECT_EQ(fs::last_write_time(path), time);
  EXPECT_EQ(box_.Names("kept"), "");
  ASSERT_EQ(Run("edit m/b.mis --set Army=2 --backup kept"), 0) << err_;
  ASSERT_EQ(Run("edit m/b.mis --set Army=1 --no-backup"), 0) << err_;
  EXPECT_EQ(box_.Names("kept"), "b.mis.bak");
  EXPECT_EQ(box_.Read("kept/b.mis.bak"), Replace(changed(other), "Fuel 100", "Fuel 7"));
  ASSERT_EQ(Run("edit a.mis --set Time=12.0 --output out.mis"), 0) << err_;
  EXPECT_EQ(box_.Read("out.mis"), kMission);
  EXPECT_EQ(box_.Read("a.mis"), changed(kMission));
  EXPECT_EQ(box_.Names("bin/RWS Backup"), "Origins.txt,a.mis.bak,b.mis.bak");
  // Nobody write-protects a mission for nothing.
  fs::permissions(path, fs::perms::owner_read);
  EXPECT_EQ(Run("edit a.mis m/b.mis --set Time=9"), 1);
  EXPECT_NE(err_.find("read-only"), err_.npos) << err_;
  EXPECT_EQ(box_.Read("a.mis"), changed(kMission));
  fs::permissions(path, fs::perms::owner_all);
}

TEST_F(CliEdit, ChangesTheMissionsThatAQueryFinds) {
  const std::string other = Replace(kMission, "4ShAPL00", "5ShAPL00");
  box_.Write("m/b.mis", other);
  box_.Write("m/n/c.mis", Replace(kMission, "TIME 12.0", "TIME 6"));
  box_.Write("m/brief.mis", "Name A briefing");
  const auto changed = [](const std::string& text) { return Replace(text, "TIME 12.0", "TIME 3"); };

  EXPECT_EQ(Run("edit . --recursive --where time:12 --set Time=3 --dry-run"), 0) << err_;
  EXPECT_EQ(Changes(), "-TIME 12.0|+TIME 3|-TIME 12.0|+TIME 3");
  ASSERT_EQ(Run("edit . --recursive --where \"time:12 -b\" --set Time=3"), 0) << err_;
  EXPECT_EQ(out_ + err_, "");
  EXPECT_EQ(box_.Read("a.mis"), changed(kMission));
  EXPECT_EQ(box_.Read("m/b.mis"), other);
  EXPECT_EQ(box_.Names("bin/RWS Backup"), "Origins.txt,a.mis.bak");

  // Who cannot be changed is named, the others are changed.
  EXPECT_EQ(Run("edit m a.mis --where \"\" --backup kept --set flight[5ShAPL00].Fuel=9"), 1);
  for (const char* told : {"a.mis: flight[5ShAPL00].Fuel=9: names nothing in this mission",
                           "brief.mis: this is no", "1 done, 2 left out"})
    EXPECT_TRUE(Contains(err_, told)) << err_;
  EXPECT_EQ(box_.Read("m/b.mis"), Replace(other, "Fuel 100", "Fuel 9"));
  EXPECT_EQ(box_.Names("kept"), "b.mis.bak");
  EXPECT_EQ(Run("edit m --where b.mis --remove flight[I_JG5401]"), 0) << err_;
  EXPECT_FALSE(Contains(box_.Read("m/b.mis"), "[I_JG5401]"));
  EXPECT_EQ(Run("edit m --where b.mis --set flight[no*].Fuel=9"), 1);
  EXPECT_TRUE(Contains(err_, "flight[no*].Fuel=9: names nothing in any mission")) << err_;

  for (const char* arguments :
       {"--where foo:x --set Time=3", "--where a", "--recursive --set Time=3",
        "--where a --set Time=3 --output o.mis", "--where a --set Fuel=3"})
    EXPECT_EQ(Run(std::string("edit m ") + arguments), 2) << arguments;
  EXPECT_EQ(box_.Read("m/n/c.mis"), Replace(kMission, "TIME 12.0", "TIME 6"));
}

TEST_F(CliEdit, TellsWhoStillNamesARemovedFlight) {
  EXPECT_EQ(Run("edit a.mis --dry-run --remove flight[*]"), 0);
  EXPECT_EQ(err_, "rws-cli: a.mis: flight \"4ShAPL00\" is removed, and still named by Player\n");
  EXPECT_EQ(Run("edit a.mis --dry-run --remove flight[I_JG5401]"), 0);
  EXPECT_TRUE(
      err_.starts_with("rws-cli: a.mis: flight \"I_JG5401\" is removed, and still named by "))
      << err_;
}

TEST_F(CliEdit, LeavesOrRewritesTheOtherLines) {
  const std::string odd =
      Replace(Replace(kMission, "\r\n", "\n"), "\n[WEATHER]", "\r\n\n[WEATHER]");
  box_.Write("odd.mis", odd);
  EXPECT_EQ(Run("diff odd.mis"), 0) << err_;
  EXPECT_EQ(out_ + err_, "");
  ASSERT_EQ(Run("edit odd.mis --set Time=1"), 0) << err_;
  EXPECT_EQ(box_.Read("odd.mis"), Replace(odd, "TIME 12.0", "TIME 1"));
  EXPECT_EQ(Run("diff a.mis --lines anew"), 1);
  EXPECT_TRUE(out_.starts_with("--- a.mis\n+++ a.mis\n@@ ")) << out_;
  EXPECT_NE(out_.find("\n-  spawn0 7_Static\r\n"), out_.npos) << out_;
  EXPECT_EQ(Run("edit a.mis --lines anew --set flight[4ShAPL00].Fuel=9"), 0) << err_;
  const std::string anew = box_.Read("a.mis");
  EXPECT_NE(anew.find("  Fuel 9\r\n"), anew.npos);
  EXPECT_EQ(anew.find("spawn0"), anew.npos);
  EXPECT_EQ(Run("diff gone.mis"), 2);
  EXPECT_NE(err_.find("gone.mis"), err_.npos);
}

TEST_F(CliEdit, ManyAtOnceDoNotHinderEachOther) {
  constexpr int kRuns = 50;
  const std::string program = box_.Names("bin");
  std::vector<std::thread> atOnce;
  for (const std::string folder : {"x", "y"}) {
    box_.Write(folder + "/a.mis", kMission);
    atOnce.emplace_back([this, folder] {
      for (int i = 1; i <= kRuns; ++i) {
        const std::string value = std::to_string(i);
        const int code = test::RunCli(box_.Path(folder),
                                      "edit a.mis --set flight[4ShAPL00].Fuel=" + value, program_);
        EXPECT_EQ(code, 0) << folder << value << ": " << box_.Read(folder + "/err.txt");
      }
    });
  }
  for (std::thread& one : atOnce) one.join();
  for (const std::string folder : {"x", "y"}) {
    EXPECT_EQ(box_.Names(folder), "a.mis,err.txt,out.txt");
    EXPECT_EQ(box_.Read(folder + "/a.mis"), Replace(kMission, "Fuel 100", "Fuel 50"));
  }
  // A backup for each, and the list of origins.
  const std::string backups = box_.Names("bin/RWS Backup");
  EXPECT_EQ(std::count(backups.begin(), backups.end(), ','), 2 * kRuns);
  EXPECT_EQ(box_.Names("bin"), "RWS Backup," + program);
}

}  // namespace
}  // namespace rws
