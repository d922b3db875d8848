#include "catalogues/aircraft.h"

#include <gtest/gtest.h>

#include <sstream>

#include "catalogues/weapons.h"
#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"

namespace rws::test {
namespace {

using Rows = std::vector<std::string>;

/** A world whose tables lie in a sandbox. */
struct AircraftTest : testing::Test {
  Sandbox Box;
  World W{Box.Path()};
  Catalogues Cat;

  void Load(const std::string& aircraft, const std::string& weapons = "none\r\n") {
    Box.Write("RWS_Aircraft.txt", aircraft);
    Box.Write("RWS_Weapons.txt", weapons);
    LoadAircraftArray(W.Doc, Cat, W.Services);
  }
};

TEST_F(AircraftTest, ReadsColumnsSidesAndFolders) {
  Load(Crlf({"F,Il-2,IL_2,,,*,,x,x,x,x,x,x,x", "f,Yp-80 late,YP_80.A-1, ,CREW", "",
             "F,Bf 109\xE9,BF_109,Bf109,,,"}),
       Crlf({"Bombs,b2,BF_109", "none"}));
  ASSERT_EQ(Cat.Aircraft.size(), 3u);
  const Aircraft &first = Cat.Aircraft[0], &marker = Cat.Aircraft[1], &last = Cat.Aircraft[2];
  EXPECT_EQ(first.Folder, "IL2");
  EXPECT_TRUE(first.Flyable && first.NoseArtOk);
  EXPECT_EQ(first.Weapons, (Rows{"Default,default", "Empty (No Ammo),none"}));
  EXPECT_EQ(marker.Side, "Red");
  EXPECT_EQ(marker.Folder, "YP80A1");
  EXPECT_EQ(marker.Companion, "CREW");
  EXPECT_FALSE(marker.Flyable || marker.NoseArtOk);
  EXPECT_EQ(last.Side, "Blue");
  EXPECT_EQ(last.Name, "Bf 109\xE9");
  EXPECT_EQ(last.Folder, "Bf109");
  EXPECT_EQ(last.Weapons, (Rows{"Default,default", "Bombs,b2,BF_109", "Empty (No Ammo),none"}));
}

TEST_F(AircraftTest, LooksUpByTheRuleOfEachOperation) {
  Load(Crlf({"F,Duck,A_1,duckdir,,*", ",Goose,A_2", ",Duck,A_3", ",A_1,A_4"}));
  // Name, class, folder, known, flyable, nose art, index.
  const std::pair<const char*, const char*> rows[] = {{"A_1", "Duck|A_4|duckdir|111|0"},
                                                      {"a_1", "Duck|a_1||000|-1"},
                                                      {"Duck", "Duck|A_1|duckdir|111|0"},
                                                      {" Duck ", " Duck | Duck ||000|0"},
                                                      {"GOOSE", "Goose|GOOSE||000|-1"},
                                                      {"A_3", "Duck|A_3|A3|100|2"},
                                                      {"", "|||000|-1"}};
  for (const auto& [text, expected] : rows) {
    std::ostringstream found;
    found << GetPlaneName(Cat, W.Services, text) << '|' << GetIntPlaneName(Cat, text) << '|'
          << GetPlaneFolder(Cat, text) << '|' << IsKnownPlane(Cat, text) << IsFlyable(Cat, text)
          << IsNoseart(Cat, text) << '|' << GetPlaneIndex(Cat, text);
    EXPECT_EQ(found.str(), expected) << text;
  }
}

TEST_F(AircraftTest, SurvivesBadTables) {
  W.Script.Expect("Unable to load \"RWS_Aircraft.txt\", you will not be able to use all features.");
  Box.MakeFolder("program/RWS_Aircraft.txt");
  Box.Write("program/RWS_Weapons.txt", "none");
  W.Services.ProgramPath = Box.Path("program");
  LoadAircraftArray(W.Doc, Cat, W.Services);
  EXPECT_EQ(GetPlaneName(Cat, W.Services, "A_1"), "A_1");
  EXPECT_TRUE(W.Log.empty());
  Load("");
  EXPECT_EQ(W.Log, (Rows{"Input past end of fileLoadAircraftArray"}));
  Load("F,A,A_1\nF,B,B_1,b\r\n\nF,C,C_1", "x,kx,B_1\ny,ky\nnone\n");
  ASSERT_EQ(Cat.Aircraft.size(), 3u);
  EXPECT_EQ(Cat.Aircraft[1].Folder, "b");
  EXPECT_EQ(Cat.Aircraft[1].Weapons.size(), 4u);
  std::string aircraft, weapons;
  for (int i = 0; i < 50'000; ++i) {
    aircraft += "F,Plane,CLASS_" + std::to_string(i) + ",,,,\r\n";
    weapons += "Two heavy bombs,key," + std::to_string(i) + "\r\n";
  }
  Load(aircraft, weapons);
  EXPECT_EQ(Cat.Aircraft.size(), 50'000u);
}

TEST_F(AircraftTest, EndsTheProgramWithoutWeapons) {
  W.Script.Expect("Unable to load \"RWS_Weapons.txt\", RWS can not run without it.");
  Box.Write("RWS_Aircraft.txt", "F,A,A_1\r\n");
  LoadAircraftArray(W.Doc, Cat, W.Services);
  EXPECT_TRUE(W.Doc.Closing && Cat.Aircraft.empty());
  EXPECT_EQ(W.CloseRequests, 1);
}

TEST(GetWeapons, TakesTheBlockOfTheFirstLineWithTheClass) {
  struct Case {
    const char *What, *Class;
    Rows Lines, Block;
  };
  const Case cases[] = {
      {"up to none", "IL_2", {"a,1,IL_2", "b,2", "x none", "c,3"}, {"a,1,IL_2", "b,2"}},
      {"inside another class", "IL_2", {"a,1,IL_2M", "none", "b,2,IL_2", "none"}, {"a,1,IL_2M"}},
      {"short class", "P3", {"a,1,I_1", "none", "b,2,P3", "none"}, {"b,2,P3"}},
      {"letter case", "IL_2", {"a,1,il_2", "none", "b,2,IL_2", "NONE"}, {"b,2,IL_2", "NONE"}},
      {"no end", "IL_2", {"x", "a,1,IL_2", "b,2"}, {"a,1,IL_2", "b,2"}},
      {"last line", "IL_2", {"x", "a,1,IL_2"}, {}},
      {"line before it", "IL_2", {"x", "a,1,IL_2", "none"}, {"a,1,IL_2"}},
      {"starts with none", "IL_2", {"none,1,IL_2", "b,2", "none"}, {}},
      {"no class", "", {"a,1,IL_2", "none"}, {}},
      {"no lines", "IL_2", {}, {}}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.What);
    Rows expected{"Default,default"}, weapons{"old"};
    expected.insert(expected.end(), c.Block.begin(), c.Block.end());
    expected.push_back("Empty (No Ammo),none");
    GetWeapons(MakeWeaponsFile(LineArray::FromFile(Crlf(c.Lines))), c.Class, weapons);
    EXPECT_EQ(weapons, expected);
  }
}

TEST_F(AircraftTest, ShowsAndLearnsWeapons) {
  Load(Crlf({"F,Duck,A_1", "F,Goose,G_1"}),
       Crlf({"Bombs,Bmb,A_1", "Bombs,bmb2", "none", "Rockets,r1,G_1", "none"}));
  // Each text, and "+" where the key was new.
  const std::pair<const char*, const char*> cases[] = {
      {"default", "Default"}, {"DEFAULT", "Default"}, {"bmb", "Bombs"}, {"none", "Empty (No Ammo)"},
      {"New", "New+"},        {"NEW", "New"},         {"p,q", "p,q+"},  {"p,q", "p,q"}};
  for (const auto& [key, expected] : cases) {
    const ShownWeapon shown = DisplayWeps(Cat, W.Services, "Duck", key);
    EXPECT_EQ(shown.Text + (shown.Learnt ? "+" : ""), expected) << key;
  }
  const WeaponList list = MakeWeaponList(Cat, " A_1 ");
  EXPECT_EQ(list.Tag, "Duck");
  EXPECT_EQ(list.Rows, (Rows{"Default", "Bombs", "Bombs", "New", "p", "Empty (No Ammo)"}));
  EXPECT_EQ(GetWeaponName(Cat, W.Services, "A_1", "Bombs"), "bmb2");
  EXPECT_EQ(GetWeaponName(Cat, W.Services, "Goose", "Default"), "default");
  EXPECT_EQ(GetWeaponName(Cat, W.Services, "Goose", "rockets"), "");
  EXPECT_EQ(GetWeaponName(Cat, W.Services, "unknown", "Bombs"), "bmb2");
  EXPECT_TRUE(W.Log.empty());
}

TEST_F(AircraftTest, LearnsNothingForAnUnknownAircraft) {
  Load(Crlf({"F,Duck,A_1"}), Crlf({"A_1", "Bombs,b", "none"}));
  const WeaponList list = MakeWeaponList(Cat, "X_9");
  EXPECT_EQ(list.Rows, (Rows{"Default"}));
  EXPECT_EQ(DisplayWeps(Cat, W.Services, list.Tag, "new").Text, "Default");
  // An entry without a key ends the walk.
  EXPECT_EQ(DisplayWeps(Cat, W.Services, "A_1", "b").Text, "Default");
  EXPECT_EQ(Cat.Aircraft[0].Weapons.size(), 4u);
  EXPECT_EQ(GetWeaponName(Catalogues(), W.Services, "A_1", "Default"), "");
  EXPECT_EQ(W.Log, (Rows{"Subscript out of rangeDisplayWeps", "Subscript out of rangeDisplayWeps",
                         "Subscript out of rangeGetWeaponName"}));
}

}  // namespace
}  // namespace rws::test
