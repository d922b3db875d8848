#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/support/doubles.h"
#include "tests/support/run_cli.h"

namespace rws {
namespace {

class CliCheck : public test::CliTest {
 protected:
  CliCheck() {
    always_ = "check --codepage 1252 --tables tables ";
    const std::string mission =
        "[MAIN]|MAP Crimea/l.ini|TIME 5.5|[Wing]|JG5200|[JG5200]|Planes 4|Fuel 100|Class "
        "air.BF_109G6|weapons default|[JG5200_Way]|NORMFLY 1 2 3 4 &0|NORMFLY 1 3 3 4 &0";
    box_.Write("tables/RWS_Maps.txt", "Crimea,Crimea/l.ini\r\n");
    box_.Write("tables/RWS_Aircraft.txt", "F,Bf 109 G-6,BF_109G6,,,,\r\n");
    box_.Write("tables/RWS_Weapons.txt", "x,x,BF_109G6\r\nnone\r\n");
    box_.Write("tables/RWS_Squadron.txt", "Germany,Germany,JG52,blue,,JG 52\r\n");
    box_.Write("right/a.mis", test::CrlfText(mission));
    box_.Write("right/a.properties", "Name a\r\n");
    box_.Write("fuel/a.mis", test::CrlfText(Replace(mission, "Fuel 100", "Fuel 130")));
    box_.Write("wrong/b/a.mis", test::CrlfText(Replace(mission, "BF_109G6", "\xC4X")));
  }
};

TEST_F(CliCheck, ExitsByWhatItFinds) {
  EXPECT_EQ(Run("fuel/a.mis"), 0) << "warnings alone " << out_;
  EXPECT_NE(out_.find("The fuel \"130\" is not from 0 to 100"), out_.npos) << out_;
  EXPECT_EQ(Run("wrong"), 0) << "not the folders below";
  EXPECT_EQ(out_, "");
  EXPECT_EQ(Run("wrong --recursive"), 1);
  EXPECT_NE(out_.find("The tables lack the aircraft \"\xC3\x84X\""), out_.npos) << out_;
  EXPECT_EQ(err_, "");
  EXPECT_EQ(Run("nowhere fuel"), 1) << "the rest is shown all the same";
  EXPECT_NE(err_.find("nowhere"), err_.npos) << err_;
  EXPECT_NE(Slashed(out_).find("fuel/a.mis"), out_.npos) << out_;
  EXPECT_EQ(Run(""), 2);
  EXPECT_EQ(Run("fuel --format xml"), 2);
}

TEST_F(CliCheck, OffersNoMendOfWhatAnEditWouldNotFind) {
  box_.Write("fuel/a.mis", Replace(box_.Read("fuel/a.mis"), "Planes 4", "Plans 4"));
  Run("fuel --format csv");
  EXPECT_NE(out_.find("The fuel"), out_.npos) << out_;
  EXPECT_EQ(out_.find("flight["), out_.npos) << out_;
}

TEST_F(CliCheck, TellsOfAMissingPictureOnce) {
  box_.Write("game/il2fb.exe", "");
  box_.Write("game/PaintSchemes/Pilots/Other.bmp", "");
  box_.Write("game/Missions/a.mis",
             Replace(box_.Read("right/a.mis"), "Fuel 100",
                     "pilot0 Lost.bmp\r\npilot1 Gone.bmp\r\npilot2 Lost.bmp\r\nFuel 100"));
  Run("game/Missions/a.mis");
  EXPECT_NE(out_.find("no pilot \"Lost.bmp\", which 2 planes have."), out_.npos) << out_;
  EXPECT_NE(out_.find("no pilot \"Gone.bmp\"."), out_.npos) << out_;
  EXPECT_EQ(out_.find("Lost"), out_.rfind("Lost")) << out_;
}

TEST_F(CliCheck, PrintsForPrograms) {
  ASSERT_EQ(Run("fuel right --format json"), 0) << err_;
  std::map<std::string, nlohmann::json> found;
  for (const auto line : SplitAt(out_, '\n'))
    if (!line.empty()) {
      const auto json = nlohmann::json::parse(line);
      found[Slashed(json["path"].get<std::string>()) + " " + json["kind"].get<std::string>()] =
          json;
    }
  const auto& fuel = found["fuel/a.mis fuel"];
  EXPECT_EQ(fuel["severity"], "warning");
  EXPECT_EQ(fuel["flight"], "JG5200");
  EXPECT_EQ(fuel["line"], 8);
  EXPECT_EQ(fuel["plane"], nullptr);
  // What it takes to mend it can be handed to another command as it is.
  EXPECT_EQ(fuel["mend"], "flight[JG5200].Fuel=100");
  EXPECT_EQ(test::RunCli(box_.Path(), "edit --tables tables --no-backup fuel/a.mis --set " +
                                          fuel["mend"].get<std::string>()),
            0);
  ASSERT_EQ(Run("fuel --format csv"), 0) << err_;
  EXPECT_TRUE(
      out_.starts_with("Mission,Severity,Kind,Section,Flight,Plane,Waypoint,Line,"
                       "Finding,Mend\r\n"))
      << out_;
  EXPECT_EQ(out_.find(",fuel,"), out_.npos) << out_;
}

}  // namespace
}  // namespace rws
