#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/support/doubles.h"
#include "tests/support/run_cli.h"

namespace rws {
namespace {

using Json = nlohmann::json;

class CliFind : public test::CliTest {
 protected:
  CliFind() {
    always_ = "find --codepage 1252 --tables tables ";
    box_.Write("tables/RWS_Maps.txt", "Schwarzes Meer,Crimea/l.ini\r\n");
    box_.Write("tables/RWS_Aircraft.txt", "F,Bf 109 G-6,BF_109G6,,,,\r\n");
    box_.Write("tables/RWS_Squadron.txt", "Germany,Germany,JG52,blue,,Geschwader 52\r\n");
    box_.Write(
        "Missions/Single/b.mis",
        test::CrlfText("[MAIN]|MAP Crimea/l.ini|TIME 5.5|CloudType 5|player JG5200|[JG5200]|"
                       "Planes 4|Class air.BF_109G6|[NStationary]|0 vehicles.planes.Plane$X 1 1 2 "
                       "3|[BornPlace]|1 2 3 4|2 2 3 4"));
    box_.Write("Missions/Single/b.properties", "Name \xC4rger, \"und\" mehr\r\nShort kurz\r\n");
    box_.Write("a.mis", test::CrlfText("[MAIN]|MAP other/x.ini|TIME 0|[BornPlace]|1 2 3 4"));
    box_.Write("bad.mis", "no mission");
  }
};

TEST_F(CliFind, PrintsATable) {
  ASSERT_EQ(Run(". --recursive --where \"-is:broken\""), 0) << err_;
  EXPECT_EQ(
      Slashed(out_),
      "Mission                  Kind       Map             Time   Weather    Flights  Player's "
      "aircraft  Trouble\n"
      "./Missions/Single/b.mis  single     Schwarzes Meer  05:30  Rain/Snow        1  Bf 109 "
      "G-6\n"
      "./a.mis                  dogfight?  other/x.ini     00:00                   0\n");
  ASSERT_EQ(Run("."), 0);
  EXPECT_EQ(out_.find("b.mis"), out_.npos);
  EXPECT_NE(out_.find("The file holds no section"), out_.npos);
}

TEST_F(CliFind, PrintsForPrograms) {
  ASSERT_EQ(Run("Missions/Single --where text:CRIMEA --format json"), 0) << err_;
  Json json = Json::parse(out_);
  EXPECT_EQ(Slashed(json["path"]), "Missions/Single/b.mis");
  EXPECT_EQ(json["briefing"], "\xC3\x84rger, \"und\" mehr");
  EXPECT_EQ(json["short"], "kurz");
  EXPECT_EQ(json["flights"], 1);
  EXPECT_EQ(json["player_aircraft"], "Bf 109 G-6");
  EXPECT_EQ(json["flight_list"],
            Json::parse(R"([{"aircraft":"Bf 109 G-6","class":"BF_109G6","squadron":"JG52",
                             "planes":4,"only_ai":false}])"));
  ASSERT_EQ(Run("Missions/Single/b.mis --format csv --where squadron:gesch"), 0) << err_;
  EXPECT_TRUE(Slashed(out_).starts_with(
      "Mission,Folder,Briefing,Kind,Map,Time,"
      "Weather,Flights,Planes,Player's aircraft,Parked,Home "
      "bases,Changed,Trouble\nb.mis,Missions/Single,\"\xC3\x84rger, "
      "\"\"und\"\" mehr\",single,Schwarzes Meer,05:30,Rain/Snow,1,4,Bf 109 G-6,1,2,20"))
      << out_;
}

TEST_F(CliFind, TellsWhatIsWrong) {
  EXPECT_EQ(Run(". --where \"a foo:x\""), 2);
  EXPECT_NE(err_.find("  a foo:x\n    ^^^^"), err_.npos) << err_;
  EXPECT_EQ(Run(". --where map:"), 2);
  EXPECT_EQ(Run(". --format xml"), 2);
  EXPECT_EQ(Run(""), 2);
  EXPECT_EQ(out_, "");
  // The rest is shown all the same.
  EXPECT_EQ(Run("nowhere . --where a.mis"), 1);
  EXPECT_NE(err_.find("nowhere"), err_.npos) << err_;
  EXPECT_NE(Slashed(out_).find("./a.mis"), out_.npos) << out_;
  EXPECT_EQ(Run(". --where nothing"), 0);
}

}  // namespace
}  // namespace rws
