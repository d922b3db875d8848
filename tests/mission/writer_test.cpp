#include "mission/writer.h"

#include <gtest/gtest.h>

#include <functional>

#include "tests/support/doubles.h"

namespace rws {
namespace {

using test::Crlf;
using test::ReadInto;
using test::World;
using Lines = std::vector<std::string>;
using Edit = std::function<void(World&, Mission&)>;

Lines operator+(Lines a, const Lines& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

/** Reads a mission, edits it and gives what would be written; "<false>" when nothing would be. */
std::string Rewritten(World& world, const Lines& lines, const Edit& edit = {}) {
  ReadInto(world, Crlf(lines));
  if (edit) edit(world, world.Doc.Missions[0]);
  LineArray output;
  if (!BuildMissionFile(world.Doc, world.Services, output, 0)) return "<false>";
  return output.FileText();
}

/** A flight, its route and a tail, as they are written. */
Lines Body(const std::string& waypoint = "  NORMFLY 1.5 2.5 500.0 300.0 &0") {
  return {"[Wing]",      "  r0100",          "[r0100]",       "  Planes 1",
          "  Skill 1",   "  Class air.P_51", "  Fuel 100",    "  weapons default",
          "[r0100_Way]", waypoint,           "[NStationary]", "[Buildings]"};
}

TEST(BuildMissionFile, WritesTheHead) {
  struct Row {
    const char* Name;
    Lines Head, Expected;
    Edit Do;
  };
  const Lines cloudless = {"[MAIN]", "  TIME 12.0"};
  const Lines clouds = {"[MAIN]", "  TIME 12.0", "  CloudType 0", "  CloudHeight 500.0"};
  const Lines timeBefore = {"[MAIN]", "  timeConstant 1", "  TIME 12.0", "  CloudType 0"};
  const Lines sound = {"[MAIN]", "  BRIEFSOUND Music/a.wav", "  TIME 12.0"};
  const auto constants = [](std::int16_t time, std::int16_t weapons) -> Edit {
    return [=](World&, Mission& mission) {
      mission.TimeConstant = time;
      mission.WeaponsConstant = weapons;
    };
  };
  const auto player = [](const char* name, const char* number) -> Edit {
    return [=](World&, Mission& mission) {
      mission.Player = name;
      mission.PlayerNum = number;
    };
  };
  const auto brief = [](const char* line) -> Edit {
    return [=](World&, Mission& mission) { mission.BriefSoundLine = line; };
  };
  const Row rows[] = {
      {"nothing edited",
       {"[MAIN]", "MAP Moscow/sload.ini", "   TIME 12.5 ", "CloudType 2", "  CloudHeight 1200.7",
        "player r0100", "army 1", "PLAYERNUM 0", "", "[SEASON]", "", "", "\tYear 1942"},
       {"[MAIN]", "  MAP Moscow/sload.ini", "  TIME 12.5", "  CloudType 2", "  CloudHeight 1200.0",
        "  player r0100", "  army 1", "  playerNum 0", "[SEASON]", "  \tYear 1942"},
       {}},
      {"weather edited",
       clouds,
       {"[MAIN]", "  TIME 9.25", "  CloudType 4", "  CloudHeight 750.0"},
       [](World&, Mission& mission) {
         mission.Time = "9.25";
         mission.CloudType = "4";
         mission.CloudHeight = "750";
       }},
      {"constants ahead of the first cloud line",
       clouds,
       {"[MAIN]", "  TIME 12.0", "  TIMECONSTANT 1", "  WEAPONSCONSTANT 1", "  CloudType 0",
        "  CloudHeight 500.0"},
       constants(1, 1)},
      {"one constant ahead of a cloud height",
       {"[MAIN]", "  CloudHeight 500.0"},
       {"[MAIN]", "  WEAPONSCONSTANT 1", "  CloudHeight 500.0"},
       constants(0, 1)},
      {"constants without a cloud line", cloudless, cloudless, constants(1, 1)},
      {"a constant neither on nor off", clouds, clouds, constants(2, -1)},
      {"a later constant is doubled",
       {"[MAIN]", "  CloudType 0", "  timeConstant 1", "  TIME 12.0"},
       {"[MAIN]", "  TIMECONSTANT 1", "  CloudType 0", "  timeConstant 1", "  TIME 12.0"},
       {}},
      {"an earlier one is kept", timeBefore, timeBefore, {}},
      {"a constant switched off",
       timeBefore,
       {"[MAIN]", "  TIME 12.0", "  CloudType 0"},
       constants(0, 0)},
      {"a time emptied by the reader",
       {"[MAIN]", "  TIME 12.0", "[RespawnTime]", "  Ship 5"},
       {"[MAIN]", "  TIME", "[RespawnTime]", "  Ship 5"},
       {}},
      {"player added",
       {"[MAIN]", "  army 1", "[SEASON]"},
       {"[MAIN]", "  army 1", "[SEASON]", "  player r0100", "  playerNum 2"},
       player("r0100", "2")},
      {"player removed",
       {"[MAIN]", "  player r0100", "  army 1", "  playerNum 0"},
       {"[MAIN]", "  army 1"},
       player("", "")},
      {"player replaced in place",
       {"[MAIN]", "  Player x", "  playerNum 0", "  army 1"},
       {"[MAIN]", "  player r0100", "  playerNum 3", "  army 1"},
       player("r0100", "3")},
      {"number added, player in place",
       {"[MAIN]", "  player x", "  army 1"},
       {"[MAIN]", "  player x", "  army 1", "  playerNum 1"},
       player("x", "1")},
      {"a value twice in the line",
       {"[MAIN]", "  TIME 1 11", "  CloudType 2"},
       {"[MAIN]", "  TIME 7 77", "  CloudType 2"},
       [](World&, Mission& mission) { mission.Time = "7"; }},
      {"two blanks are left alone",
       {"[MAIN]", "  TIME  8.0", "  CloudType  2"},
       {"[MAIN]", "  TIME  8.0", "  CloudType  2"},
       [](World&, Mission& mission) { mission.CloudType = "5"; }},
      {"sound kept", sound, sound, {}},
      {"sound replaced",
       sound,
       {"[MAIN]", "  briefSound b.wav", "  TIME 12.0"},
       brief("  briefSound b.wav")},
      {"sound never removed", sound, sound, brief("")},
      {"sound inserted as it stands",
       {"[main]", "  TIME 12.0", "  BriefSound later.wav"},
       {"[main]", "briefSound b.wav", "  TIME 12.0", "  BriefSound later.wav"},
       brief("briefSound b.wav")},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Name);
    World world;
    EXPECT_EQ(Rewritten(world, row.Head + Body(), row.Do), Crlf(row.Expected + Body()));
    EXPECT_TRUE(world.Log.empty());
  }
}

TEST(BuildMissionFile, CompletesBareLinesFromTheWindow) {
  World world;
  world.Weather = 3;
  world.CloudText = "1200,5";
  world.ClockText = "12.30";
  EXPECT_EQ(Rewritten(world, Lines{"[MAIN]", "  TIME ", "CloudType", " CloudHeight"} + Body()),
            Crlf(Lines{"[MAIN]", "  TIME 12.5", "  CloudType 3", "  CloudHeight 1200.5"} + Body()));
  const Mission& mission = world.Doc.Missions[0];
  EXPECT_EQ(mission.Time, "12.5");
  EXPECT_EQ(mission.CloudType, "3");
  EXPECT_EQ(mission.CloudHeight, "1200,5");
}

TEST(BuildMissionFile, WritesWaypoints) {
  struct Row {
    const char *Line, *Expected;
    std::function<void(Waypoint&)> Do;
  };
  const auto marker = [](const char* text) {
    return [=](Waypoint& waypoint) { waypoint.Marker = text; };
  };
  const Row rows[] = {
      {"TAKEOFF 0.0 1000.55 0 0.00 &0", "  TAKEOFF 0 1000.55 0 0 &0", {}},
      {" NORMFLY 1 2 500.75 300.99 &0 ", "  NORMFLY 1 2 500.0 300.0 &0", {}},
      {"NORMFLY 1,5 2,5 500 300 &0", "  NORMFLY 1.5 2.5 500.0 300.0 &0", {}},
      {"NORMFLY 1 2 500 300 &0", "  NORMFLY 1 2 500.0 300.0 &1", marker("&1")},
      {"NORMFLY 1 2 500 300", "  NORMFLY 1 2 500.0 300.0 &0", {}},
      {"NORMFLY 1 2 500 300 &0", "  LANDING 1 2 1200.0 0 &0",
       [](Waypoint& waypoint) {
         waypoint.Type = "LANDING";
         waypoint.Alt = "1200";
         waypoint.Speed = "0";
         waypoint.X = 77;  // coordinates keep their text
       }},
      // The sixth word is exempt from the zero rule, those behind it are not.
      {"GATTACK 1 2 500 300 8_Chief 4 &0", "  GATTACK 1 2 500.0 300.0 8_Chief 4 0", {}},
      {"GATTACK 1 2 500 300 8_Chief 4 &0", "  GATTACK 1 2 500.0 300.0 8_Chief 4 0", marker("&1")},
      {"GATTACK 1 2 500 300 8_Chief 4 &1", "  GATTACK 1 2 500.0 300.0 8_Chief 4 &1", {}},
      {"GATTACK 1 2 500 300 8_Chief 4 &1", "  GATTACK 1 2 500.0 300.0 8_Chief 4 &0", marker("&0")},
      {"GATTACK 1 2 500 300 0.0 0.0 &1", "  GATTACK 1 2 500.0 300.0 0.0 0 &1", {}},
      {"NORMFLY 1 2 500 300 &1 F2", "  NORMFLY 1 2 500.0 300.0 &1 0 &0", {}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.Line) + " > " + row.Expected);
    World world;
    const Edit edit = [&](World&, Mission& mission) {
      if (row.Do) row.Do(mission.Flights.at(0).Waypoints.at(0));
    };
    EXPECT_EQ(Rewritten(world, Lines{"[MAIN]"} + Body(row.Line), edit),
              Crlf(Lines{"[MAIN]"} + Body(row.Expected)));
  }
}

TEST(BuildMissionFile, ABrokenRouteKeepsItsWaypoints) {
  World world;
  const Lines start = {
      "[MAIN]",    "[Wing]",           "  r0100",    "[r0100]",           "  Planes 1",
      "  Skill 1", "  Class air.P_51", "  Fuel 100", "  weapons default", "[r0100_Way]"};
  const Lines route = {"  TAKEOFF 1 2 0 0 &0", "  NORMFLY 1 2 500.0 300.0 &0"};
  const Lines end = {"[NStationary]", "[end]"};
  EXPECT_EQ(Rewritten(world, start + route + Lines{""} + end), Crlf(start + route + end));
  EXPECT_EQ(world.Doc.Missions[0].Flights.at(0).LastWaypoint, "");
}

TEST(FlightArray, WritesKeysInTheirOrder) {
  Flight full;
  full.Name = "r0101";
  full.Planes = "3";
  full.Skill = "Custom";
  full.OnlyAI = "0";
  full.Parachute = "0";
  full.Class = "P_51";
  full.Fuel = "30";
  full.Weapons = "2x";
  full.StartTime = "15";
  full.PlaneSlots = {{{"2", "a b.bmp", "", "", "", ""},
                      {"", "", "n.bmp", "p.bmp", "", "0"},
                      {"3", "", "", "", "", ""},
                      {"1", "above.bmp", "", "", "", ""}}};
  const Lines fullLines = {
      "[r0101]",          "  Planes 3",      "  OnlyAI 1",     "  Parachute 0",    "  Skill0 2",
      "  Skill2 3",       "  skin0 a b.bmp", "  pilot1 p.bmp", "  noseart1 n.bmp", "  numberOn1 0",
      "  Class air.P_51", "  Fuel 30",       "  weapons 2x",   "  StartTime 15"};
  Flight nine = full;
  nine.Planes = "9";
  nine.Skill = "2";
  nine.OnlyAI = nine.StartTime = "";
  nine.Parachute = "1";
  const Lines nineLines = {"[r0101]",          "  Planes 9",        "  Skill 2",
                           "  skin0 a b.bmp",  "  skin3 above.bmp", "  pilot1 p.bmp",
                           "  noseart1 n.bmp", "  numberOn1 0",     "  Class air.P_51",
                           "  Fuel 30",        "  weapons 2x"};
  const Flight bare;
  const Lines bareLines = {"[]", "  Planes", "  Skill", "  Class air.", "  Fuel", "  weapons"};
  for (const auto& [flight, lines] :
       {std::pair(full, fullLines), std::pair(nine, nineLines), std::pair(bare, bareLines)}) {
    World world;
    LineArray output;
    FlightArray(world.Services, output, flight);
    EXPECT_EQ(output.FileText(), Crlf(lines));
    EXPECT_TRUE(world.Log.empty());
  }
}

TEST(BuildMissionFile, WritesFlightsOfOneNameTwiceEach) {
  const auto section = [](const char* fuel) -> Lines {
    return {"[r0100]",
            "  Planes 1",
            "  Skill 1",
            "  Class air.X",
            std::string("  Fuel ") + fuel,
            "  weapons none",
            "[r0100_Way]",
            "  T 1 2 0 0 &0"};
  };
  const Lines start = {"[MAIN]", "[Wing]", "  r0100", "  r0100"}, end = {"[Target]", "[end]"};
  World world;
  EXPECT_EQ(Rewritten(world, start + section("1") + section("2") + end),
            Crlf(start + section("1") + section("2") + section("1") + section("2") + end));
}

TEST(BuildMissionFile, FindsTheTail) {
  struct Row {
    const char* Name;
    Lines Read, Expected;
  };
  const Lines noRoute = {"[MAIN]", "  TIME 12.0"};
  const Row rows[] = {
      {"no route: the head twice", noRoute + Lines{"", "[Wing]", "[NStationary]", "x", ""},
       noRoute + Lines{"[Wing]"} + noRoute + Lines{"  ", "[Wing]", "[NStationary]", "  x", "  "}},
      {"no [Wing]", noRoute + Lines{"[Chiefs]", "  0_Chief a", "[NStationary]", "  x"},
       noRoute + Lines{"[Wing]"} + noRoute +
           Lines{"[Chiefs]", "  0_Chief a", "[NStationary]", "  x"}},
      {"home bases behind a route",
       Body() + Lines{"[BORNPLACE]", "  1 3000 100 200 0 more", "  2 500 3 4", "[Born]", "[T]", "",
                      " x ", "[e]"},
       Body() + Lines{"[BornPlace]", "  1 3000 100 200", "  2 500 3 4", "[T]", "  ", "  x", "[e]"}},
      {"the line that ends the skip has no indent",
       Body() + Lines{"[BornPlace]", "  1 3000 100 200", "loose", " x", "[e]"},
       Body() + Lines{"[BornPlace]", "  1 3000 100 200", "  0 0 0 0", "loose", "  x", "[e]"}},
      {"home bases, no route, [Chiefs]: no [Wing]",
       noRoute + Lines{"[Wing]", "[Chiefs]", "  0_Chief a", "[BornPlace]", "  1 3000 100 200",
                       "[BornPlace0]", "  P-51 ", "[e]"},
       noRoute + Lines{"[Chiefs]", "  0_Chief a", "[BornPlace]", "  1 3000 100 200", "[BornPlace0]",
                       "  P-51", "[e]"}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Name);
    World world;
    EXPECT_EQ(Rewritten(world, row.Read), Crlf(row.Expected));
  }
}

TEST(BuildMissionFile, IsFalseWhenTheTextCannotBeMade) {
  struct Row {
    const char* Name;
    Lines Read;
    bool Logged;
  };
  const Row rows[] = {
      {"no place for home bases", {"[MAIN]", "[Wing]", "[BornPlace]", "  1 2 3 4", "[e]"}, false},
      {"home bases at the very end", Body() + Lines{"[BornPlace]", "  1 2 3 4"}, true},
      {"a bare header at the very end", Body() + Lines{"[BornPlace]"}, true},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Name);
    World world;
    EXPECT_EQ(Rewritten(world, row.Read), "<false>");
    EXPECT_EQ(world.Log, row.Logged ? Lines{"Subscript out of rangeBuildMissionFile"} : Lines{});
  }
  World world;
  EXPECT_EQ(Rewritten(world, Body(), [](World&, Mission& mission) { mission.Loaded = false; }),
            "<false>");
  LineArray output;
  EXPECT_FALSE(BuildMissionFile(world.Doc, world.Services, output, 5));
}

TEST(NewBornPlace, NumbersTheListsByPlace) {
  World world;
  Mission mission;
  mission.BornPlaces = {{1, 3000, {}, 100, -200}, {2, 500, {"A", "B c"}, 0, 7}};
  LineArray output;
  NewBornPlace(world.Services, output, mission);
  EXPECT_EQ(output.FileText(), Crlf({"[BornPlace]", "  1 3000 100 -200", "  2 500 0 7",
                                     "[BornPlace1]", "  A", "  B c"}));
}

}  // namespace
}  // namespace rws
