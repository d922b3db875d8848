#include "catalogues/own_entries.h"

#include <gtest/gtest.h>

#include "catalogues/aircraft.h"
#include "catalogues/dogfight.h"
#include "services/faults.h"
#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"

namespace rws {
namespace {

const OwnAircraft kDuck{"DUCK", "Ente, die", true, false, "Du-ck", {"2xA", "4xB"}, "a.mis"};

TEST(OwnEntries, StayWhatTheyAreBesideANewOne) {
  const std::string first = WithOwnAircraft("", kDuck);
  EXPECT_TRUE(first.starts_with("# ")) << first;
  const std::string both = WithOwnMap(first, {"x/l.ini", "Ex\nY", ""});
  OwnEntries own = ParseOwnEntries(both);
  EXPECT_EQ(own.Aircraft, std::vector<OwnAircraft>{kDuck});
  EXPECT_EQ(own.Maps, (std::vector<OwnMap>{{"x/l.ini", "Ex Y", ""}}));
  EXPECT_TRUE(own.Troubles.empty());
  OwnAircraft other = kDuck;
  other.Loadouts.clear();
  other.Name = "Goose";
  const std::string note = "# mine\n[odd]\nstrange line";
  const std::string replaced = WithOwnAircraft(both + note, other);
  EXPECT_NE(replaced.find(note), replaced.npos) << "what is not understood is not lost";
  own = ParseOwnEntries(replaced);
  EXPECT_EQ(own.Aircraft, std::vector<OwnAircraft>{other});
  EXPECT_EQ(own.Maps.size(), 1U);
  EXPECT_EQ(own.Troubles.size(), 2U);
  const std::string noted =
      "[aircraft DUCK]\n# of DUCK\n name = x\nside=red\nodd\n\n# of l\n[map x/l.ini]\nname=y\n";
  EXPECT_EQ(WithOwnMap(WithOwnAircraft(noted, {"DUCK", "D"}), {"x/l.ini", "z"}),
            "# of DUCK\n\n# of l\n[aircraft DUCK]\r\nname=D\r\nside=red\r\nflyable=yes\r\nodd\n"
            "[map x/l.ini]\r\nname=z\r\n")
      << "only the lines of the old entries go";
  EXPECT_EQ(WithOwnMap("[aircraft A]\nname=1\n[map m]\nside=blue\nname", {"m", "z"}),
            "[aircraft A]\nname=1\n[map m]\r\nname=z\r\nside=blue\nname")
      << "what a map does not know is not given to an aircraft";
  own = ParseOwnEntries(
      "\xEF\xBB\xBF[aircraft A]\nside=green\nname=1\n[aircraft A]\nname=2\nflyable=no\n"
      "[aircraft ]\nname=3\n[map m]\nside=red");
  ASSERT_EQ(own.Aircraft.size(), 1U);
  EXPECT_EQ(own.Aircraft[0].Name, "2");
  EXPECT_EQ(own.Troubles.size(), 4U);
}

TEST(OwnEntries, WinOverTheTables) {
  test::Sandbox box;
  test::World world(box.Path());
  Catalogues tables;
  const std::vector<Loadout> loadouts = {{"Default", "default"}, {"Two", "2xa"}, {"Empty", "none"}};
  tables.Aircraft = {{"Red", "Old", "DUCK", "D", "", loadouts, true},
                     {"Red", "ENTE, die", "E", "", "", loadouts, true},
                     {"Blue", "Z", "Z", "", "", loadouts, true}};
  world.Doc.Maps = {{"Crimea", "X/L.ini"}, {"Berlin", "b"}};
  box.Write("RWS_DF.txt", ",Old,Du-ck\r\n");
  box.Write("RWS_Own.txt",
            WithOwnMap(WithOwnAircraft(WithOwnAircraft("", kDuck), {"NEW", "N", false, true}),
                       {"x/l.ini", "berlin", ""}));
  ApplyOwnEntries(world.Doc, tables, world.Services, ReadOwnEntries(world.Services));
  std::string text;
  for (const auto& row : tables.Aircraft) {
    text += row.Side + "," + row.Name + "," + row.Class + "," + row.Folder;
    for (const auto& one : row.Weapons) text += " " + *one.Key;
    text += row.Flyable ? " F|" : "|";
  }
  EXPECT_EQ(text,
            "Red,ENTE, die,E, default 2xa none F|Red,N,NEW,NEW default none F|"
            "Blue,Ente, die (DUCK),DUCK,D default 2xa 4xB none|Blue,Z,Z, default 2xa none F|");
  ASSERT_EQ(world.Doc.Maps.size(), 2U);
  EXPECT_EQ(world.Doc.Maps[1].Name, "berlin (x/l.ini)");
  ReadDogFight(tables, world.Services);
  ASSERT_EQ(tables.DogFightAircraft.size(), 1U);
  EXPECT_EQ(tables.DogFightAircraft[0].DisplayName, "Ente, die (DUCK)");
  world.Services.Files.BeforeStep = [](const FileStep& step) {
    if (step.Action == "read") throw Fault(fault::Permission, "no");
  };
  EXPECT_TRUE(ReadOwnEntries(world.Services).Aircraft.empty());
  EXPECT_EQ(world.Log.size(), 1U);
  EXPECT_FALSE(ResumeNext([&] { AddOwnMap(world.Services, {"x", "X"}); })) << "nor written over";
}

TEST(OwnEntries, OfAFileOfRubbishDoNotFillTheLog) {
  test::Sandbox box;
  test::World world(box.Path());
  std::string rubbish(100000, 'x');
  for (int i = 0; i < 1000; ++i) rubbish += "\n?";
  box.Write("RWS_Own.txt", rubbish);
  EXPECT_EQ(ReadOwnEntries(world.Services).Troubles.size(), 1001U);
  EXPECT_EQ(world.Log.size(), 21U);
  EXPECT_LT(world.Log[0].size(), 400U);
  AddOwnMap(world.Services, {"x", "X"});
  EXPECT_TRUE(box.Read("RWS_Own.txt").starts_with(rubbish));
}

}  // namespace
}  // namespace rws
