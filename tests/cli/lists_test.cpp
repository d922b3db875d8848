#include <gtest/gtest.h>

#include "services/paths.h"
#include "services/text.h"
#include "tests/support/doubles.h"
#include "tests/support/run_cli.h"
#include "tests/support/sandbox.h"

namespace rws {
namespace {

TEST(CliLists, NameWhatTheTablesLack) {
  test::Sandbox box;
  box.Write("tables/RWS_Aircraft.txt", "F,Bf 109 G-6,BF_109G6,,,,\r\n");
  box.Write("tables/RWS_Weapons.txt", "x,x,BF_109G6\r\nnone\r\n");
  box.Write("game/#UP#/STD/com/maddox/il2/objects/air.ini", "[AIR]\nHe-1 air.HE_1 2\nodd\n");
  box.Write("game/#UP#/STD/i18n/plane.properties", "He-1 Heinkel\n");
  box.Write("game/Missions/a.mis",
            test::CrlfText("[MAIN]|MAP x/y.ini|[Wing]|JG5200|[JG5200]|Planes 1|Class air.HE_1|"
                           "weapons default|[JG5200_Way]|NORMFLY 1 2 3 4 &0"));
  std::string out, err;
  const auto run = [&](const std::string& arguments) {
    const int code = test::RunCli(box.Path(), "--codepage 1252 --tables tables " + arguments);
    out = Replace(box.Read("out.txt"), std::string(1, kSeparator), "/");
    err = box.Read("err.txt");
    return code;
  };
  EXPECT_EQ(run("lists --game game"), 0) << err;
  EXPECT_TRUE(out.starts_with("#UP#: 1 aircraft, 0 loadouts, 0 maps, 0 squadrons")) << out;
  EXPECT_NE(out.find("air.ini:3: Not an aircraft: \"odd\""), out.npos) << out;
  EXPECT_EQ(run("lists --game game --format json"), 0) << err;
  EXPECT_NE(out.find("{\"list\":\"aircraft\",\"entries\":1,"), out.npos) << out;
  EXPECT_EQ(run("lists"), 2);
  const std::string find = "find game/Missions --where aircraft:heinkel --game game";
  EXPECT_EQ(run(find), 0) << err;
  EXPECT_NE(out.find("a.mis"), out.npos) << out;
  EXPECT_EQ(run(find + " --no-lists"), 0) << err;
  EXPECT_EQ(out.find("a.mis"), out.npos) << out;
  run("check game/Missions --game game");
  EXPECT_EQ(out.find("HE_1"), out.npos) << out;
  run("check game/Missions --game game --no-lists");
  EXPECT_NE(out.find("HE_1"), out.npos) << out;
  const std::string edit =
      "edit game/Missions/a.mis --dry-run --set flight[*].Class=HE_1 --game game";
  EXPECT_EQ(run(edit), 0) << err;
  box.MakeFolder("game/#SAS/x");
  EXPECT_EQ(run("lists --game game"), 1);
  EXPECT_NE(err.find("--pack"), err.npos) << err;
  EXPECT_EQ(run("lists --game game --pack \"#up#\""), 0) << err;
}

}  // namespace
}  // namespace rws
