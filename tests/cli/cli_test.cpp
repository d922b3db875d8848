#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "tests/support/doubles.h"
#include "tests/support/run_cli.h"

namespace rws {
namespace {

using Cli = test::CliTest;
using Json = nlohmann::json;

const std::string kMission = test::CrlfText(
    "[MAIN]|  briefSound a/b.wav|  MAP Moscow/sload.ini|  TIME 12.0|[Wing]|  r0100|[r0100]|"
    "  Planes 1|  Skill 1|  skin0 \xE9.bmp|  Class air.X|  Fuel 100|  weapons none|[r0100_Way]|"
    "  T 1 2 3.0 4.0 &0|[BornPlace]|  1 3000 5 6|[end]");

TEST_F(Cli, ShowPrintsEveryField) {
  box_.Write("g/il2fb.exe", "");
  box_.Write("g/m/a.mis", kMission);
  box_.Write("tables/RWS_Maps.txt", "Moscow winter,moscow/sload.ini\r\n");
  ASSERT_EQ(Run("show g/m/a.mis --tables tables"), 0) << err_;
  EXPECT_EQ(std::count(out_.begin(), out_.end(), '\n'), 1);
  EXPECT_NE(out_.find(R"("Skin":"\u00e9.bmp")"), out_.npos);
  for (const char byte : out_) ASSERT_LT(static_cast<unsigned char>(byte), 0x80);
  const Json mission = Json::parse(out_);
  const Json& flight = mission["Flights"][0];
  EXPECT_EQ(flight["PlaneSlots"][3].dump(),
            R"({"NoseArt":"","NumberOn":"","Pilot":"","Reserved":"","Skill":"","Skin":""})");
  EXPECT_EQ(flight["Waypoints"],
            Json::parse(R"([{"Alt":"3","Speed":"4","Type":"T","Marker":"&0","X":1.0,"Y":2.0,
                             "Dist":0.0,"Line":"  T 1 2 3.0 4.0 &0"}])"));
  EXPECT_EQ(mission["BornPlaces"],
            Json::parse(R"([{"Army":1,"Radius":3000,"Planes":[],"X":5,"Y":6,"HasNumbers":true}])"));
  EXPECT_EQ(mission["Loaded"], true);
  EXPECT_EQ(mission["MapName"], "Moscow winter");
  EXPECT_EQ(mission["Lines"].size(), 18U);
  const std::string sound = mission["BriefSound"];
  EXPECT_TRUE(sound.ends_with(BuildPath("g", "a\\b.wav"))) << sound;
  ASSERT_EQ(Run("--game elsewhere show g/m/a.mis"), 0);
  EXPECT_EQ(Json::parse(out_)["BriefSound"], BuildPath("elsewhere", "a\\b.wav"));
}

TEST_F(Cli, ReadsInThePageOfTheLocaleOrTheOneGiven) {
  if (!test::kPosixFiles) GTEST_SKIP() << "the code page is that of the system, not of a variable";
  // The letter is a Cyrillic capital in one page and no letter in the other.
  box_.Write("a.mis", test::CrlfText("[Wing]|[r0100]|  Planes 1|  skin0 \xD7.bmp|[end]"));
  struct Row {
    const char *Locale, *Arguments, *Letter;
  };
  const Row rows[] = {{"C.UTF-8", "", R"(\u00d7)"},
                      {"ru_RU.UTF-8", "", R"(\u00f7)"},
                      {"ru_RU.UTF-8", "--codepage 1252", R"(\u00d7)"},
                      {"C", "--codepage 1251", R"(\u00f7)"}};
  const std::string before = std::getenv("LC_ALL") ? std::getenv("LC_ALL") : "";
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.Locale) + " " + row.Arguments);
    test::SetVariable("LC_ALL", row.Locale);
    EXPECT_EQ(Run(std::string("show a.mis ") + row.Arguments), 0) << err_;
    EXPECT_NE(out_.find(std::string(R"("Skin":")") + row.Letter), out_.npos);
  }
  test::SetVariable("LC_ALL", before);
}

TEST_F(Cli, TakesPatternsOfFiles) {
  for (const char* name : {"m/b.mis", "m/A.mis", "m/a.misx", "m/[x]#.mis"})
    box_.Write(name, kMission);
  ASSERT_EQ(Run("show m/?.mis"), 0) << err_;
  EXPECT_EQ(std::count(out_.begin(), out_.end(), '\n'), 2);
  EXPECT_LT(out_.find("A.mis"), out_.find("b.mis"));
  ASSERT_EQ(Run("show m/*#.mis m/b.mis"), 0) << err_;
  EXPECT_LT(out_.find("[x]#.mis"), out_.find("b.mis"));
  EXPECT_EQ(Run("show m/*.none"), 1);
  EXPECT_NE(err_.find("*.none"), err_.npos) << err_;
}

TEST_F(Cli, RewriteGivesWhatAnUpdateWouldWrite) {
  std::string broken = kMission;  // its line ends are repaired in memory only
  std::replace(broken.begin(), broken.end(), '\r', '\n');
  for (const std::string& bytes : {kMission, broken}) {
    const std::string path = box_.Write("a.mis", bytes);
    const auto time = std::filesystem::last_write_time(test::ToFsPath(path));
    ASSERT_EQ(Run("rewrite a.mis --output out.mis"), 0) << err_;
    EXPECT_EQ(out_ + err_, "");
    EXPECT_EQ(box_.Read("out.mis"), kMission);
    ASSERT_EQ(Run("show a.mis"), 0) << err_;
    EXPECT_EQ(Json::parse(out_)["Lines"].size(), 18U);
    EXPECT_EQ(box_.Read("a.mis"), bytes);
    EXPECT_EQ(std::filesystem::last_write_time(test::ToFsPath(path)), time);
  }
}

TEST_F(Cli, NamesOfAnyKindAreFiles) {
  box_.Write("-2704.mis", kMission);
  box_.Write("coop Dogfight, med, Japanese D3A1.Mis", kMission);
  EXPECT_EQ(Run("show -- -2704.mis"), 0) << err_;
  EXPECT_EQ(Json::parse(out_)["BaseName"], "-2704");
  EXPECT_EQ(Run("rewrite --output=out.mis -- -2704.mis"), 0) << err_;
  EXPECT_TRUE(box_.Exists("out.mis"));
  EXPECT_EQ(Run("show \"coop Dogfight, med, Japanese D3A1.Mis\""), 0) << err_;
  EXPECT_EQ(Json::parse(out_)["BaseName"], "coop Dogfight, med, Japanese D3A1");
  box_.Write("\xC3\xA9\xD0\x96.mis", kMission);
  EXPECT_EQ(Run("show \xC3\xA9\xD0\x96.mis"), 0) << err_;
  EXPECT_EQ(Json::parse(out_)["Loaded"], true);
}

TEST_F(Cli, ExitsWithOneOrTwo) {
  box_.Write("a.mis", kMission);
  box_.Write("unwritable.mis", test::CrlfText("[MAIN]|[Wing]|[BornPlace]|  1 2 3 4"));
  const std::string rows =  // exit code and arguments
      "0 --help|2|2 shew a.mis|2 show|2 show --no-such-option a.mis|2 show --codepage 1 a.mis|2 "
      "rewrite a.mis|"
      "2 rewrite a.mis --output|1 show .|1 rewrite gone.mis --output out.mis|"
      "1 rewrite unwritable.mis --output out.mis|1 rewrite a.mis --output no/such/out.mis|"
      "0 --version";
  for (const auto row : SplitAt(rows, '|')) {
    const std::string arguments(row.substr(1));
    const int code = row[0] - '0';
    SCOPED_TRACE(arguments);
    EXPECT_EQ(Run(arguments), code) << err_;
    EXPECT_EQ(err_.empty(), code == 0);
    EXPECT_FALSE(box_.Exists("out.mis"));
  }
  EXPECT_TRUE(out_.starts_with("rws-cli ")) << out_;
  // One mission that is gone does not hide the others.
  EXPECT_EQ(Run("show gone.mis a.mis"), 1);
  EXPECT_EQ(Json::parse(out_)["BaseName"], "a");
}

TEST_F(Cli, RefusesToReplaceTheMissionItself) {
  box_.Write("a.mis", kMission);
  box_.MakeFolder("sub");
  std::vector<std::string> same = {"a.mis", "A.MIS", "./a.mis", "sub/../a.mis"};
  if (test::kPosixFiles) {
    box_.Link("link.mis", "a.mis");
    same.push_back("link.mis");
  }
  for (const auto& output : same) {
    SCOPED_TRACE(output);
    EXPECT_EQ(Run("rewrite a.mis --output " + output), 2);
    EXPECT_NE(err_.find("would replace the mission itself"), err_.npos);
    EXPECT_EQ(box_.Read("a.mis"), kMission);
    box_.Write("a.mis", kMission);
  }
  EXPECT_EQ(box_.Names(),
            test::kPosixFiles ? "a.mis,err.txt,link.mis,out.txt,sub" : "a.mis,err.txt,out.txt,sub");
}

}  // namespace
}  // namespace rws
