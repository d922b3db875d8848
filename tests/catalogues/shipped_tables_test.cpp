#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

#include "catalogues/aircraft.h"
#include "catalogues/countries.h"
#include "catalogues/dogfight.h"
#include "catalogues/maps.h"
#include "catalogues/squadrons.h"
#include "catalogues/table.h"
#include "services/faults.h"
#include "services/text.h"
#include "tests/support/doubles.h"
#include "tests/support/places.h"

namespace rws::test {
namespace {

/** The tables that the program is shipped with, read by its own loaders. */
struct ShippedTables : testing::Test {
  ShippedTables() {
    W.Services.ProgramPath = kFolder;
    LoadRegiments(Tables, W.Services);
    LoadAC(Tables, W.Services);
    LoadMaps(W.Doc, W.Services);
    LoadAircraftArray(W.Doc, Tables, W.Services);
    ReadDogFight(Tables, W.Services);
  }

  static inline const std::string kFolder = SourceFolder() + "/data";
  World W{"/nowhere"};
  Catalogues& Tables = W.Tables;
};

TEST_F(ShippedTables, AreComplete) {
  EXPECT_TRUE(W.Log.empty());
  EXPECT_FALSE(Tables.Countries.empty() || W.Doc.Maps.empty() || Tables.Squadrons.empty());
  std::set<std::string> codes, groups;
  for (const auto& squadron : Tables.Squadrons) {
    EXPECT_TRUE(groups.insert(squadron.Name).second) << squadron.Name;
    for (const auto& regiment : squadron.Regiments)
      EXPECT_TRUE(codes.insert(regiment.Code).second) << regiment.Code;
    const bool american =
        squadron.Name == "USAAF" || squadron.Name == "USMC" || squadron.Name == "US Navy";
    EXPECT_EQ(squadron.Country == "usa", american) << squadron.Name;
  }
}

TEST_F(ShippedTables, EveryAircraftFindsItsOwnLoadoutsAndOnlyThose) {
  // As a reader of the file sees it: the third column names a class, the block runs to "none".
  std::map<std::string, std::vector<std::string>> blocks;
  std::string current;
  const auto file =
      LineArray::FromFile(W.Services.Files.ReadFile(std::string(kFolder) + "/RWS_Weapons.txt"));
  for (std::size_t i = 0; i < file.size(); ++i) {
    const auto columns = SplitAt(file[i], ',');
    if (columns.size() > 2) current = columns[2];
    if (columns[0] == "none") {
      current.clear();
    } else {
      EXPECT_FALSE(current.empty()) << "a loadout of no class: " << file[i];
      blocks[current].push_back(std::string(columns[0]) + "," + Column(columns, 1));
    }
  }
  for (const auto& aircraft : Tables.Aircraft) {
    std::vector<std::string> found;
    for (std::size_t i = 1; i + 1 < aircraft.Weapons.size(); ++i)
      found.push_back(aircraft.Weapons[i].Text + "," + aircraft.Weapons[i].Key.value_or("?"));
    EXPECT_EQ(found, blocks[aircraft.Class]) << aircraft.Class;
    blocks.erase(aircraft.Class);
  }
  EXPECT_TRUE(blocks.empty()) << "loadouts of no aircraft: " << blocks.begin()->first;
}

TEST_F(ShippedTables, SidesAndNamesAreRight) {
  std::set<std::string> names, maps;
  std::string last;
  for (const auto& aircraft : Tables.Aircraft) {
    EXPECT_TRUE(names.insert(aircraft.Name).second) << aircraft.Name;
    EXPECT_TRUE(names.insert(aircraft.Class).second) << aircraft.Class;
    if (aircraft.Side == "Red") last = aircraft.Name;
  }
  EXPECT_TRUE(Contains(last, "YP-80")) << last;
  const std::pair<const char*, const char*> sides[] = {{"I_16TYPE24", "Red"}, {"P_51D20NA", "Red"},
                                                       {"SPITFIRE5B", "Red"}, {"BF_109F2", "Blue"},
                                                       {"JU_87B2", "Blue"},   {"A6M2", "Blue"}};
  for (const auto& [name, side] : sides) {
    const auto row = GetPlaneIndex(Tables, name);
    ASSERT_GE(row, 0) << name;
    EXPECT_EQ(At(Tables.Aircraft, row).Side, side) << name;
  }
  // How home bases spell an aircraft is not known of all of them.
  std::set<std::string> keys;
  for (const auto& plane : Tables.DogFightAircraft) {
    EXPECT_TRUE(IsKnownPlane(Tables, plane.DisplayName)) << plane.DisplayName;
    EXPECT_EQ(plane.NotDefault, !IsFlyable(Tables, plane.DisplayName)) << plane.DisplayName;
    EXPECT_TRUE(keys.insert(plane.InternalName).second) << plane.InternalName;
  }
  for (const auto& map : W.Doc.Maps) EXPECT_TRUE(maps.insert(map.Name).second) << map.Name;
}

TEST_F(ShippedTables, AreReadRightOnEverySystem) {
  const auto namesOn = [&](int page) {
    W.Services.Page = CodePage(page);
    Tables.Squadrons.clear();
    LoadRegiments(Tables, W.Services);
    LoadAircraftArray(W.Doc, Tables, W.Services);
    std::string names;
    for (const auto& squadron : Tables.Squadrons)
      for (const auto& regiment : squadron.Regiments) names += regiment.UserData + "\n";
    return W.Services.Page.ToUtf8(names);
  };
  const std::string western = namesOn(1252), russian = namesOn(1251);
  EXPECT_TRUE(Contains(western, "M\xC3\xB6lders"));
  EXPECT_TRUE(Contains(russian, "Molders"));
  EXPECT_EQ(std::count(russian.begin(), russian.end(), '?'),
            std::count(western.begin(), western.end(), '?'));
}

}  // namespace
}  // namespace rws::test
