#include "catalogues/aircraft.h"

#include <gtest/gtest.h>

#include <sstream>
#include <tuple>

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
  // Side, name, folder, companion, flyable, nose art, weapons.
  const Rows expected{"Red|Il-2|IL2||11|2", "Red|Yp-80 late|YP80A1|CREW|00|2",
                      "Blue|Bf 109\xE9|Bf109||10|3"};
  Rows found;
  for (const auto& a : Cat.Aircraft)
    found.push_back(a.Side + "|" + a.Name + "|" + a.Folder + "|" + a.Companion + "|" +
                    (a.Flyable ? "1" : "0") + (a.NoseArtOk ? "1|" : "0|") +
                    std::to_string(a.Weapons.size()));
  EXPECT_EQ(found, expected);
}

TEST_F(AircraftTest, LooksUpByTheRuleOfEachOperation) {
  Load(Crlf({"F,Duck,A_1,d,,*", ",Goose,A_2", ",Duck,A_3", ",A_1,A_4"}));
  // Name, class, folder, known, flyable, nose art, index.
  const Rows rows{"A_1>Duck|A_4|d|111|0",      "a_1>Duck|a_1||000|-1",
                  "Duck>Duck|A_1|d|111|0",     " Duck > Duck | Duck ||000|0",
                  "GOOSE>Goose|GOOSE||000|-1", "A_3>Duck|A_3|A3|100|2"};
  for (const auto& row : rows) {
    const std::string text = row.substr(0, row.find('>'));
    std::ostringstream found;
    found << GetPlaneName(Cat, W.Services, text) << '|' << GetIntPlaneName(Cat, text) << '|'
          << GetPlaneFolder(Cat, text) << '|' << IsKnownPlane(Cat, text) << IsFlyable(Cat, text)
          << IsNoseart(Cat, text) << '|' << GetPlaneIndex(Cat, text);
    EXPECT_EQ(text + ">" + found.str(), row);
  }
  EXPECT_EQ(GetPlaneIndex(Cat, ""), -1);
}

TEST_F(AircraftTest, SurvivesBadTablesAndEndsTheProgramWithoutWeapons) {
  W.Script.Expect("Unable to load \"RWS_Weapons.txt\", RWS can not run without it.");
  Box.Write("RWS_Aircraft.txt", "F,A,A_1\r\n");
  LoadAircraftArray(W.Doc, Cat, W.Services);
  EXPECT_TRUE(W.Doc.Closing && Cat.Aircraft.empty() && W.Log.empty());
  EXPECT_EQ(W.CloseRequests, 1);
  W.Doc.Closing = false;
  Load("");
  EXPECT_EQ(W.Log, Rows{"Input past end of fileLoadAircraftArray"});
  Load("F,A,A_1\nF,B,B_1,b\r\n\nF,C,C_1", "x,kx,B_1\ny,ky\nnone\n");
  ASSERT_EQ(Cat.Aircraft.size(), 3u);
  EXPECT_EQ(Cat.Aircraft[1].Weapons.size(), 4u);
  W.Script.Expect("Unable to load \"RWS_Aircraft.txt\", you will not be able to use all features.");
  W.Services.AppPath = W.Services.ProgramPath = Box.Path("program");
  Box.MakeFolder("program/RWS_Aircraft.txt");
  Box.Write("program/RWS_Weapons.txt", "none");
  LoadAircraftArray(W.Doc, Cat, W.Services);
  EXPECT_EQ(W.Log.size(), 1u);
}

TEST(GetWeapons, TakesTheBlockOfTheFirstLineWithTheClass) {
  const std::tuple<const char*, Rows, Rows> cases[] = {
      {"IL_2", {"a,1,IL_2", "b,2", "x none", "c,3"}, {"a,1", "b,2"}},
      {"IL_2", {"a,1,IL_2M", "none", "b,2,IL_2", "none"}, {"a,1"}},
      {"P3", {"a,1,I_1", "none", "b,2,P3", "none"}, {"b,2"}},
      {"IL_2", {"a,1,il_2", "none", "b,2,IL_2", "NONE"}, {"b,2", "NONE"}},
      {"IL_2", {"x", "a,1,IL_2"}, {}},
      {"IL_2", {"x", "a,1,IL_2", "none"}, {"a,1"}},
      {"IL_2", {"none,1,IL_2", "b,2", "none"}, {}},
      {"", {"a,1,IL_2", "none"}, {}},
      {"IL_2", {}, {}}};
  for (const auto& [name, lines, block] : cases) {
    Rows expected = block, found;
    expected.insert(expected.begin(), "Default,default");
    expected.push_back("Empty (No Ammo),none");
    std::vector<Loadout> weapons{{"old", "old"}};
    GetWeapons(LineArray::FromFile(Crlf(lines)), name, weapons);
    for (const auto& [text, key] : weapons) found.push_back(text + (key ? "," + *key : ""));
    EXPECT_EQ(found, expected) << name << " in " << Crlf(lines);
  }
}

TEST_F(AircraftTest, ShowsAndLearnsWeapons) {
  Load(Crlf({"F,Duck,A_1", "F,Goose,G_1"}),
       Crlf({"Bombs,Bmb,A_1", "Bombs,bmb2", "none", "Rockets,r1,G_1", "none"}));
  // Each text, and "+" where the key was new.
  const Rows rows{"DEFAULT>Default", "bmb>Bombs", "none>Empty (No Ammo)",
                  "New>New+",        "NEW>New",   "p,q>p,q+",
                  "p,q>p,q",         ">"};
  for (const auto& row : rows) {
    const std::string key = row.substr(0, row.find('>'));
    const ShownWeapon shown = DisplayWeps(Cat, W.Services, "Duck", key);
    EXPECT_EQ(key + ">" + shown.Text + (shown.Learnt ? "+" : ""), row);
  }
  const WeaponList list = MakeWeaponList(Cat, " A_1 ");
  EXPECT_EQ(list.Tag, "Duck");
  EXPECT_EQ(list.Rows, (Rows{"Default", "Bombs", "Bombs", "New", "p,q", "Empty (No Ammo)"}));
  EXPECT_EQ(GetWeaponName(Cat, W.Services, "A_1", "Bombs"), "bmb2");
  EXPECT_EQ(GetWeaponName(Cat, W.Services, "Goose", "rockets"), "");
  EXPECT_EQ(GetWeaponName(Cat, W.Services, "unknown", "Bombs"), "bmb2");
  EXPECT_TRUE(W.Log.empty());
}

}  // namespace
}  // namespace rws::test
