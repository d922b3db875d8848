#include <gtest/gtest.h>

#include "tests/support/doubles.h"
#include "tests/support/run_cli.h"

namespace rws {
namespace {

using CliLists = test::CliTest;

TEST_F(CliLists, NameWhatTheTablesLack) {
  always_ = "--codepage 1252 --tables tables ";
  box_.Write("tables/RWS_Aircraft.txt", "F,Bf 109 G-6,BF_109G6,,,,\r\n");
  box_.Write("tables/RWS_Weapons.txt", "x,x,BF_109G6\r\nnone\r\n");
  box_.Write("game/#UP#/STD/com/maddox/il2/objects/air.ini", "[AIR]\nHe-1 air.HE_1 2\nodd\n");
  box_.Write("game/#UP#/STD/i18n/plane.properties", "He-1 Heinkel\n");
  box_.Write("game/Missions/a.mis",
             test::CrlfText("[MAIN]|MAP x/y.ini|[Wing]|JG5200|[JG5200]|Planes 1|Class air.HE_1|"
                            "weapons default|[JG5200_Way]|NORMFLY 1 2 3 4 &0"));
  EXPECT_EQ(Run("lists --game game"), 0) << err_;
  EXPECT_TRUE(out_.starts_with("#UP#: 1 aircraft, 0 loadouts, 0 maps, 0 squadrons")) << out_;
  EXPECT_NE(out_.find("air.ini:3: Not an aircraft: \"odd\""), out_.npos) << out_;
  EXPECT_EQ(Run("lists --game game --format json"), 0) << err_;
  EXPECT_NE(out_.find("{\"list\":\"aircraft\",\"entries\":1,"), out_.npos) << out_;
  EXPECT_EQ(Run("lists"), 2);
  const std::string find = "find game/Missions --where aircraft:heinkel --game game";
  EXPECT_EQ(Run(find), 0) << err_;
  EXPECT_NE(out_.find("a.mis"), out_.npos) << out_;
  EXPECT_EQ(Run(find + " --no-lists"), 0) << err_;
  EXPECT_EQ(out_.find("a.mis"), out_.npos) << out_;
  Run("check game/Missions --game game");
  EXPECT_EQ(out_.find("HE_1"), out_.npos) << out_;
  Run("check game/Missions --game game --no-lists");
  EXPECT_NE(out_.find("HE_1"), out_.npos) << out_;
  const std::string edit =
      "edit game/Missions/a.mis --dry-run --set flight[*].Class=HE_1 --game game";
  EXPECT_EQ(Run(edit), 0) << err_;
  box_.MakeFolder("game/#SAS/x");
  EXPECT_EQ(Run("lists --game game"), 1);
  EXPECT_NE(err_.find("--pack"), err_.npos) << err_;
  EXPECT_EQ(Run("lists --game game --pack \"#up#\""), 0) << err_;
}

}  // namespace
}  // namespace rws
