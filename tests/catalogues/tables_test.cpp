#include <gtest/gtest.h>

#include "catalogues/countries.h"
#include "catalogues/dogfight.h"
#include "catalogues/paint_schemes.h"
#include "catalogues/squadrons.h"
#include "catalogues/table_text.h"
#include "services/checksum.h"
#include "services/faults.h"
#include "services/paths.h"
#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"

namespace rws::test {
namespace {

using Rows = std::vector<std::string>;

struct TablesTest : testing::Test {
  TablesTest() { W.Doc.GamePath = Box.Path("game"); }

  Sandbox Box;
  World W{Box.Path()};
  Catalogues Cat;
};

TEST_F(TablesTest, GroupsLinesOfOneName) {
  Box.Write("RWS_Squadron.txt",
            Crlf({"USSR,VVS,r01,red,,first,x,x,x,x,x,x,x", "  ", "other,VVS, 1st ,blue",
                  "USA,USAAF,usa01,RED,skip,late \xE9", "USSR,VVS,r01,white,,again"}));
  LoadRegiments(Cat, W.Services);
  // A shorter table read later replaces from the first row on and drops none.
  for (const char* expected : {"USSR|VVS|red|r01| 1st ;USA|USAAF|RED|usa01;USSR|VVS|white|r01;",
                               "Japan|IJA|blue|ja01;USA|USAAF|RED|usa01;USSR|VVS|white|r01;"}) {
    std::string found;
    for (const auto& squadron : Cat.Squadrons) {
      found += squadron.Country + "|" + squadron.Name + "|" + squadron.Color;
      for (const auto& regiment : squadron.Regiments) found += "|" + regiment.Code;
      found += ";";
    }
    EXPECT_EQ(found, expected);
    Box.Write("RWS_Squadron.txt", "Japan,IJA,ja01,blue\n");
    LoadRegiments(Cat, W.Services);
  }
}

TEST_F(TablesTest, LooksUpGroups) {
  Box.Write("RWS_Squadron.txt", Crlf({"USSR,VVS,r01,red,,first", "USSR,VVS, 1st ,red,,second",
                                      "usa,USAAF,usa01,blue,,", "Japan,IJA,r01,white,,late"}));
  LoadRegiments(Cat, W.Services);
  // Army, country, name, user data, colour.
  const Rows rows{"R0100>|Unknown|None||red", "r0100>red|USSR|VVS|first|red",
                  "jap>|Unknown|None||white", " 1st 12>|Unknown|None|second|",
                  "1st12>red|USSR|VVS||red",  "usa01xx>blue|usa|USAAF||blue",
                  "r>|Unknown|None||",        "japans>|Unknown|None||",
                  ">|Unknown|None||"};
  for (const auto& row : rows) {
    const std::string group = row.substr(0, row.find('>'));
    std::string found = group + ">" + GetArmyByGroup(Cat, W.Services, group);
    for (const auto lookup :
         {GetCountryByGroup, GetCntyNameByGroup, GetUserDatabyGroup, GetColorByGroup})
      found += "|" + lookup(Cat, W.Services, group);
    EXPECT_EQ(found, row);
  }
  // Each of the five lookups of the two short groups.
  EXPECT_EQ(W.Log.size(), 10u);
  EXPECT_EQ(W.Log[0], "Invalid procedure call or argumentGetArmyByGroup");
}

TEST_F(TablesTest, ReadsCountriesAndHomeBaseAircraft) {
  Box.Write("RWS_Countries.txt", "USSR,VVS,ru,red\nUSA,USAAF,us,blue,x,x\n");
  EXPECT_TRUE(LoadAC(Cat, W.Services));
  const auto& country = Cat.Countries.back();
  EXPECT_EQ(country.AltName + country.StaticCode + country.FlightCode, "USAAFusblue");
  EXPECT_TRUE(W.Log.empty());
  Box.Write("RWS_Countries.txt", "USSR,VVS,ru\r\n");
  EXPECT_FALSE(LoadAC(Cat, W.Services));
  EXPECT_EQ(W.Log, Rows{"Subscript out of rangeLoadAC"});

  Box.Write("RWS_DF.txt", Crlf({"F,Avenger,AvengerMkIII", ",Duck,A-1,x", "f,Short"}));
  for (int times = 0; times < 2; ++times) ReadDogFight(Cat, W.Services);
  ASSERT_EQ(Cat.DogFightAircraft.size(), 2u);
  const auto& plane = Cat.DogFightAircraft[0];
  EXPECT_EQ(plane.DisplayName + " " + plane.InternalName + " " + plane.State,
            "Avenger AvengerMkIII R");
  EXPECT_TRUE(plane.NotDefault && !Cat.DogFightAircraft[1].NotDefault);
}

TEST(TableText, KeepsColumnsWhateverThePageLacks) {
  const std::string mark = "\xEF\xBB\xBF";
  const std::tuple<int, std::string, std::string> rows[] = {
      {1251, "\xFC,own page", "\xFC,own page"},
      {1251, mark + "M\xC3\xBCller,\xD0\x90", "Muller,\xC0"},
      {1252, mark + "M\xC3\xBCller,\xD0\x90", "M\xFCller,?"},
      {1253, mark + "\xC3\x9F\xC3\x86\xC5\x93\xC8\x98,\xC5\xBD", "ssAEoeS,Z"},
      {1250, mark + "\xE2\x80\x9A\xC3\xB0\xC2\xB8",
       "\x82"
       "d\xB8"},
      {1251, mark + "\xC2\xBE\xCB\x86", "3/4?"}};
  for (const auto& [page, bytes, text] : rows) EXPECT_EQ(TableText(CodePage(page), bytes), text);
}

TEST(Sha1, OfPublishedExamples) {
  EXPECT_EQ(Sha1("abc"), "a9993e364706816aba3e25717850c26c9cd0d89d");
  EXPECT_EQ(Sha1(""), "da39a3ee5e6b4b0d3255bfef95601890afd80709");
  EXPECT_EQ(Sha1(std::string(1'000'000, 'a')), "34aa973cd4c4daa4f61eeb2bdbad27316534016f");
}

TEST_F(TablesTest, ListsTheSkinsOfEachFolder) {
  for (const char* name : {"Il-2_3.M/b.BMP", "Il-2_3.M/A.bmp", "Il-2_3.M/no.txt", "loose.bmp"})
    Box.Write(std::string("game/paintschemes/SKINS/") + name, "");
  Box.MakeFolder("game/paintschemes/SKINS/bare");
  LoadPlaneSkins(W.Doc, Cat, W.Services);
  ASSERT_EQ(Cat.Skins.size(), 2u);
  EXPECT_EQ(Cat.HighestSkin, 1);
  EXPECT_EQ(Cat.Skins[0].Files, Rows{"default"});
  EXPECT_EQ(Cat.Skins[1].Folder, "Il23.M");
  const std::string found = kPosixFiles ? "game/paintschemes/SKINS" : "game/PaintSchemes/SKINS";
  EXPECT_EQ(Cat.Skins[1].Path, Box.Path(found + "/Il-2_3.M"));
  EXPECT_EQ(Cat.Skins[1].Files, (Rows{"default", "A.bmp", "b.BMP"}));
  Box.Write("game/paintschemes/SKINS/bare/new.bmp", "");
  ReLoadSinglePlaneSkin(Cat, W.Services, 0);
  EXPECT_EQ(Cat.Skins[0].Files, (Rows{"default", "new.bmp"}));
  ReLoadSinglePlaneSkin(Cat, W.Services, 2);
  EXPECT_EQ(W.Log, Rows{"Subscript out of rangeReLoadSinglePlaneSkin"});

  // A folder that cannot be read keeps "default".
  W.Services.Files.BeforeStep = [](const FileStep& step) {
    if (step.Path.ends_with(kSeparator + std::string("bare")))
      throw Fault(fault::Permission, "no ");
  };
  LoadPlaneSkins(W.Doc, Cat, W.Services);
  EXPECT_EQ(Cat.Skins[0].Files, Rows{"default"});
  EXPECT_EQ(Cat.Skins[1].Files.size(), 3u);
  EXPECT_EQ(W.Log.back(), "no LoadPlaneSkins");
  // Given up, the rest keeps "default" alone, and the user hears of it.
  std::vector<WorkStep> told;
  W.Services.Window.Progress = [&](const WorkStep& step) {
    told.push_back(step);
    return false;
  };
  std::string notice;
  W.Services.Ask.Notice = [&](const std::string& text) { notice = text; };
  LoadPlaneSkins(W.Doc, Cat, W.Services);
  EXPECT_EQ(Cat.Skins[1].Files, Rows{"default"});
  EXPECT_NE(notice.find("not all read"), notice.npos);
  ASSERT_EQ(told.size(), 2u);
  EXPECT_TRUE(told[0].Done == 1 && told[0].Of == 2 && told[1].Done == told[1].Of);
  W.Services.Window.Progress = WindowSeam().Progress;
  // A close that is asked for during the scan: nothing is filled.
  W.Services.System.PumpEvents = [&] { W.Doc.Closing = true; };
  LoadPlaneSkins(W.Doc, Cat, W.Services);
  EXPECT_TRUE(Cat.Skins.empty());
}

}  // namespace
}  // namespace rws::test
