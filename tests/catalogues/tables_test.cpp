#include <gtest/gtest.h>

#include "catalogues/countries.h"
#include "catalogues/dogfight.h"
#include "catalogues/maps.h"
#include "catalogues/squadrons.h"
#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"

namespace rws::test {
namespace {

struct TablesTest : testing::Test {
  Sandbox Box;
  World W{Box.Path()};
  Catalogues Cat;
};

TEST_F(TablesTest, GroupsLinesOfOneName) {
  Box.Write("RWS_Squadron.txt",
            Crlf({"USSR,VVS,r01,red,,first,x,x,x,x,x,x,x", "  ", "other,VVS, 1st ,blue",
                  "USA,USAAF,usa01,RED,skip,late \xE9", "USSR,VVS,r01,white,,again"}));
  LoadRegiments(Cat, W.Services);
  ASSERT_EQ(Cat.Squadrons.size(), 3u);
  EXPECT_EQ(Cat.Squadrons[0].Country, "USSR");
  EXPECT_EQ(Cat.Squadrons[0].Color, "red");
  ASSERT_EQ(Cat.Squadrons[0].Regiments.size(), 2u);
  EXPECT_EQ(Cat.Squadrons[0].Regiments[1].Code, " 1st ");
  EXPECT_EQ(Cat.Squadrons[2].Regiments[0].UserData, "again");
  // A shorter table read later replaces from the first row on and drops none.
  Box.Write("RWS_Squadron.txt", "Japan,IJA,ja01,blue\n");
  LoadRegiments(Cat, W.Services);
  ASSERT_EQ(Cat.Squadrons.size(), 3u);
  EXPECT_EQ(Cat.Squadrons[0].Regiments.size(), 1u);
  EXPECT_EQ(Cat.Squadrons[0].Name, "IJA");
  EXPECT_EQ(Cat.Squadrons[1].Name, "USAAF");
}

TEST_F(TablesTest, LooksUpGroups) {
  Box.Write("RWS_Squadron.txt", Crlf({"USSR,VVS,r01,red,,first", "USSR,VVS, 1st ,red,,second",
                                      "usa,USAAF,usa01,blue,,", "Japan,IJA,r01,white,,late"}));
  LoadRegiments(Cat, W.Services);
  // Army, country, name, user data, colour.
  const std::pair<const char*, const char*> rows[] = {{"r0100", "red|USSR|VVS|first|red"},
                                                      {"R0100", "|Unknown|None||red"},
                                                      {"1st12", "red|USSR|VVS||red"},
                                                      {" 1st 12", "|Unknown|None|second|"},
                                                      {"usa01xx", "blue|usa|USAAF||blue"},
                                                      {"jap", "|Unknown|None||white"},
                                                      {"japans", "|Unknown|None||"},
                                                      {"00", "|Unknown|None||"},
                                                      {"r", "|Unknown|None||"},
                                                      {"", "|Unknown|None||"}};
  for (const auto& [group, expected] : rows) {
    std::string found = GetArmyByGroup(Cat, W.Services, group);
    for (const auto lookup :
         {GetCountryByGroup, GetCntyNameByGroup, GetUserDatabyGroup, GetColorByGroup})
      found += "|" + lookup(Cat, W.Services, group);
    EXPECT_EQ(found, expected) << group;
  }
  // Each of the five lookups of the two short groups.
  EXPECT_EQ(W.Log.size(), 10u);
  EXPECT_EQ(W.Log[0], "Invalid procedure call or argumentGetArmyByGroup");
}

TEST_F(TablesTest, ReadsCountriesAndHomeBaseAircraft) {
  Box.Write("RWS_Countries.txt", "USSR,VVS,ru,red\nUSA,USAAF,us,red,x,x\n");
  EXPECT_TRUE(LoadAC(Cat, W.Services));
  ASSERT_EQ(Cat.Countries.size(), 2u);
  EXPECT_EQ(Cat.Countries[1].AltName, "USAAF");
  EXPECT_EQ(Cat.Countries[1].StaticCode, "us");
  EXPECT_EQ(Cat.Countries[1].FlightCode, "red");
  EXPECT_TRUE(W.Log.empty());
  Box.Write("RWS_Countries.txt", "USSR,VVS,ru\r\n");
  EXPECT_FALSE(LoadAC(Cat, W.Services));
  EXPECT_EQ(W.Log, (std::vector<std::string>{"Subscript out of rangeLoadAC"}));

  Box.Write("RWS_DF.txt", Crlf({"F,Avenger,AvengerMkIII", ",Duck,A-1,x", "f,Short"}));
  ReadDogFight(Cat, W.Services);
  ReadDogFight(Cat, W.Services);
  ASSERT_EQ(Cat.DogFightAircraft.size(), 2u);
  EXPECT_EQ(Cat.DogFightAircraft[0].DisplayName, "Avenger");
  EXPECT_EQ(Cat.DogFightAircraft[0].InternalName, "AvengerMkIII");
  EXPECT_EQ(Cat.DogFightAircraft[0].State, "R");
  EXPECT_TRUE(Cat.DogFightAircraft[0].NotDefault && !Cat.DogFightAircraft[1].NotDefault);
}

TEST_F(TablesTest, IsSilentOverMissingEmptyAndFolderTables) {
  W.Doc.Maps.resize(1);
  Cat.Countries.resize(1);
  Cat.DogFightAircraft.resize(1);
  Box.Write("RWS_Maps.txt", "");
  Box.MakeFolder("RWS_Countries.txt");
  Box.MakeFolder("RWS_Squadron.txt");
  LoadMaps(W.Doc, W.Services);
  LoadRegiments(Cat, W.Services);
  ReadDogFight(Cat, W.Services);
  EXPECT_FALSE(LoadAC(Cat, W.Services));
  EXPECT_TRUE(W.Doc.Maps.empty() && Cat.Squadrons.empty() && Cat.DogFightAircraft.empty());
  EXPECT_TRUE(W.Log.empty());
}

}  // namespace
}  // namespace rws::test
