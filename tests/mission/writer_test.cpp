#include "mission/writer.h"

#include <gtest/gtest.h>

#include <functional>

#include "tests/support/doubles.h"

namespace rws {
namespace {

using std::string;
using test::CrlfText;
using test::World;
using Edit = std::function<void(Mission&)>;

/** Reads a mission, edits it and gives what would be written; "<false>" when nothing would be. */
string Rewritten(World& world, const string& lines, const Edit& edit = {}) {
  Mission& mission = test::ReadLines(world, lines);
  if (edit) edit(mission);
  LineArray output;
  if (!BuildMissionFile(world.Doc, world.Services, output, 0, world.Shown)) return "<false>";
  return output.FileText();
}

/** A flight with its route, as they are written. */
string Body(const string& route = "  NORMFLY 1.5 2.5 500.0 300.0 &0") {
  return "[Wing]|  r0100|[r0100]|  Planes 1|  Skill 1|  Class air.P_51|  Fuel 100|"
         "  weapons default|[r0100_Way]|" +
         route + "|[NStationary]|[Buildings]";
}

Edit Set(string Mission::*field, const char* value) {
  return [=](Mission& mission) { mission.*field = value; };
}
Edit Constants(std::int16_t time, std::int16_t weapons) {
  return [=](Mission& mission) {
    mission.TimeConstant = time;
    mission.WeaponsConstant = weapons;
  };
}
Edit Player(const char* name, const char* number) {
  return [=](Mission& mission) {
    mission.Player = name;
    mission.PlayerNum = number;
  };
}

TEST(BuildMissionFile, WritesTheHead) {
  struct Row {
    string Head, Expected;
    Edit Do;
  };
  const string clouds = "TIME 12.0|  CloudType 0|  CloudHeight 500.0";
  const string timeBefore = "timeConstant 1|  TIME 12.0|  CloudType 0";
  const string sound = "BRIEFSOUND a.wav|  TIME 12.0";
  const Row rows[] = {
      {"MAP a/load.ini|   TIME 12.5 |CloudType 2|  CloudHeight 1200.7|player r0100|army 1|"
       "PLAYERNUM 0||[SEASON]|||\tYear 1942",
       "MAP a/load.ini|  TIME 12.5|  CloudType 2|  CloudHeight 1200.0|  player r0100|  army 1|"
       "  playerNum 0|[SEASON]|  \tYear 1942",
       {}},
      {clouds, "TIME 9.25|  CloudType 0|  CloudHeight 500.0", Set(&Mission::Time, "9.25")},
      {clouds, "TIME 12.0|  CloudType 4|  CloudHeight 500.0", Set(&Mission::CloudType, "4")},
      {clouds, "TIME 12.0|  CloudType 0|  CloudHeight 750.0", Set(&Mission::CloudHeight, "750")},
      // Constants stand ahead of the first cloud line, or nowhere.
      {clouds, "TIME 12.0|  TIMECONSTANT 1|  WEAPONSCONSTANT 1|  CloudType 0|  CloudHeight 500.0",
       Constants(1, 1)},
      {"CloudHeight 500.0", "WEAPONSCONSTANT 1|  CloudHeight 500.0", Constants(0, 1)},
      {"TIME 12.0", "TIME 12.0", Constants(1, 1)},
      {clouds, clouds, Constants(2, -1)},
      {"CloudType 0|  timeConstant 1", "TIMECONSTANT 1|  CloudType 0|  timeConstant 1", {}},
      {timeBefore, timeBefore, {}},
      {timeBefore, "TIME 12.0|  CloudType 0", Constants(0, 0)},
      // The reader took the time from the line of another key.
      {"TIME 12.0|[RespawnTime]|  Ship 5", "TIME|[RespawnTime]|  Ship 5", {}},
      {"army 1|[SEASON]", "army 1|[SEASON]|  player r01|  playerNum 2", Player("r01", "2")},
      {"player r0100|  army 1|  playerNum 0", "army 1", Player("", "")},
      {"Player x|  playerNum 0|  army 1", "player r01|  playerNum 3|  army 1", Player("r01", "3")},
      {"player x|  army 1", "player x|  army 1|  playerNum 1", Player("x", "1")},
      {"TIME 1 11|  CloudType 2", "TIME 7 77|  CloudType 2", Set(&Mission::Time, "7")},
      {"CloudType  2", "CloudType  2", Set(&Mission::CloudType, "5")},
      {sound, sound, {}},
      {sound, "briefSound b.wav|  TIME 12.0", Set(&Mission::BriefSoundLine, "  briefSound b.wav")},
      {sound, sound, Set(&Mission::BriefSoundLine, "")},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Head + " > " + row.Expected);
    World world;
    EXPECT_EQ(Rewritten(world, "[MAIN]|  " + row.Head + "|" + Body(), row.Do),
              CrlfText("[MAIN]|  " + row.Expected + "|" + Body()));
    EXPECT_TRUE(world.Log.empty());
  }
  World world;  // A new sound line stands behind the header, as it is.
  EXPECT_EQ(Rewritten(world, "[main]|  TIME 1|  BriefSound later.wav|" + Body(),
                      Set(&Mission::BriefSoundLine, "briefSound b.wav")),
            CrlfText("[main]|briefSound b.wav|  TIME 1|  BriefSound later.wav|" + Body()));
}

TEST(BuildMissionFile, CompletesBareLinesFromTheWindow) {
  World world;
  world.Shown.WeatherRow = 3;
  world.Shown.CloudHeight = "1200,5";
  world.Shown.Clock = "12.30";
  EXPECT_EQ(Rewritten(world, "[MAIN]|  TIME |CloudType| CloudHeight|" + Body()),
            CrlfText("[MAIN]|  TIME 12.5|  CloudType 3|  CloudHeight 1200.5|" + Body()));
  const Mission& mission = world.Doc.Missions[0];
  EXPECT_EQ(test::Joined({mission.Time, mission.CloudType, mission.CloudHeight}), "12.5|3|1200,5");
}

TEST(BuildMissionFile, WritesWaypoints) {
  struct Row {
    const char *Line, *Expected, *Marker = nullptr;
  };
  const Row rows[] = {
      {"TAKEOFF 0.0 1000.55 0 0.00 &0", "TAKEOFF 0 1000.55 0 0 &0"},
      {" NORMFLY 1 2 500.75 300.99 &0 ", "NORMFLY 1 2 500.0 300.0 &0"},
      {"NORMFLY 1,5 2,5 500 300 &0", "NORMFLY 1.5 2.5 500.0 300.0 &0"},
      {"NORMFLY 1 2 500 300 &0", "NORMFLY 1 2 500.0 300.0 &1", "&1"},
      {"NORMFLY 1 2 500 300", "NORMFLY 1 2 500.0 300.0 &0"},
      // The sixth word is exempt from the zero rule, those behind it are not.
      {"GATTACK 1 2 500 300 8_Chief 4 &0", "GATTACK 1 2 500.0 300.0 8_Chief 4 0", "&1"},
      {"GATTACK 1 2 500 300 8_Chief 4 &1", "GATTACK 1 2 500.0 300.0 8_Chief 4 &1"},
      {"GATTACK 1 2 500 300 8_Chief 4 &1", "GATTACK 1 2 500.0 300.0 8_Chief 4 &0", "&0"},
      {"GATTACK 1 2 500 300 0.0 0.0 &1", "GATTACK 1 2 500.0 300.0 0.0 0 &1"},
      {"NORMFLY 1 2 500 300 &1 F2", "NORMFLY 1 2 500.0 300.0 &1 0 &0"},
      // A short line ends the route; what stood ahead of it is kept.
      {"T 1 2 0 0 &0|  N 1 2 500.0 300.0 &0|", "T 1 2 0 0 &0|  N 1 2 500.0 300.0 &0"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Line);
    World world;
    const Edit edit = [&](Mission& mission) {
      if (row.Marker) mission.Flights.at(0).Waypoints.at(0).Marker = row.Marker;
    };
    EXPECT_EQ(Rewritten(world, "[MAIN]|" + Body(row.Line), edit),
              CrlfText("[MAIN]|" + Body(string("  ") + row.Expected)));
  }
  World world;
  EXPECT_EQ(Rewritten(world, "[MAIN]|" + Body("NORMFLY 1.50 2 500 300 &0"),
                      [](Mission& mission) {
                        Waypoint& waypoint = mission.Flights.at(0).Waypoints.at(0);
                        waypoint.Type = "LANDING";
                        waypoint.Alt = "1200";
                        waypoint.X = 77;  // coordinates keep their text
                      }),
            CrlfText("[MAIN]|" + Body("  LANDING 1.50 2 1200.0 300.0 &0")));
}

TEST(FlightArray, WritesKeysInTheirOrder) {
  Flight flight;
  const auto expect = [&](const char* lines) {
    World world;
    LineArray output;
    FlightArray(world.Services, output, flight);
    EXPECT_EQ(output.FileText(), CrlfText(lines));
    EXPECT_TRUE(world.Log.empty());
  };
  expect("[]|  Planes|  Skill|  Class air.|  Fuel|  weapons");
  flight.Name = "r0101";
  flight.Planes = "3";
  flight.Skill = "Custom";
  flight.OnlyAI = flight.Parachute = "0";
  flight.Class = "P_51";
  flight.Fuel = "30";
  flight.Weapons = "2x";
  flight.StartTime = "15";
  flight.PlaneSlots = {{{"2", "a b.bmp", "", "", "", ""},
                        {"", "", "n.bmp", "p.bmp", "", "0"},
                        {"3", "", "", "", "", ""},
                        {"1", "above.bmp", "", "", "", ""}}};
  expect(
      "[r0101]|  Planes 3|  OnlyAI 1|  Parachute 0|  Skill0 2|  Skill2 3|  skin0 a b.bmp|"
      "  pilot1 p.bmp|  noseart1 n.bmp|  numberOn1 0|  Class air.P_51|  Fuel 30|  weapons 2x|"
      "  StartTime 15");
  flight.Planes = "9";
  flight.Skill = "2";
  flight.OnlyAI = flight.StartTime = "";
  flight.Parachute = "1";
  expect(
      "[r0101]|  Planes 9|  Skill 2|  skin0 a b.bmp|  skin3 above.bmp|  pilot1 p.bmp|"
      "  noseart1 n.bmp|  numberOn1 0|  Class air.P_51|  Fuel 30|  weapons 2x");
}

TEST(BuildMissionFile, FindsTheTail) {
  const string head = "[MAIN]|  TIME 12.0|", bases = "[BornPlace]|  1 3000 100 200";
  const string keys = "|  Planes 1|  Skill 1|  Class air.X|  Fuel 1|  weapons none|";
  const string twins = "[r0100]" + keys + "[r0100_Way]|  T 1 2 0 0 &0|[r0100]" + keys +
                       "[r0100_Way]|  L 1 2 0 0 &0|";
  const std::pair<string, string> rows[] = {
      // No route: the head stands twice.
      {head + "|[Wing]|[NStationary]|x|",
       head + "[Wing]|" + head + "  |[Wing]|[NStationary]|  x|  "},
      {head + "[Chiefs]|  0_Chief a|[NStationary]|  x",
       head + "[Wing]|" + head + "[Chiefs]|  0_Chief a|[NStationary]|  x"},
      {Body() + "|[BORNPLACE]|  1 3000 100 200 0 more|  2 500 3 4|[Born]|[T]|| x |[e]",
       Body() + "|" + bases + "|  2 500 3 4|[T]|  |  x|[e]"},
      // The line that ends the skip has no indent.
      {Body() + "|" + bases + "|loose| x|[e]", Body() + "|" + bases + "|loose|  x|[e]"},
      // Home bases without a route need [Chiefs]; [Wing] is lost.
      {head + "[Wing]|[Chiefs]|  0_Chief a|" + bases + "|[BornPlace0]|  P-51 |[e]",
       head + "[Chiefs]|  0_Chief a|" + bases + "|[BornPlace0]|  P-51|[e]"},
      {"[MAIN]|[Wing]|[BornPlace]|  1 2 3 4|[e]", "<false>"},
      // Flights of one name are written once for each of them.
      {"[MAIN]|[Wing]|  r0100|  r0100|" + twins + "[e]",
       "[MAIN]|[Wing]|  r0100|  r0100|" + twins + twins + "[e]"},
  };
  for (const auto& [read, expected] : rows) {
    SCOPED_TRACE(read);
    World world;
    EXPECT_EQ(Rewritten(world, read), expected == "<false>" ? expected : CrlfText(expected));
    EXPECT_TRUE(expected != "<false>" || world.Log.empty());
  }
}

TEST(BuildMissionFile, IsFalseWhenTheTextCannotBeMade) {
  for (const char* tail : {"|[BornPlace]|  1 2 3 4", "|[BornPlace]"}) {
    SCOPED_TRACE(tail);
    World world;
    EXPECT_EQ(Rewritten(world, Body() + tail), "<false>");
    EXPECT_EQ(test::Joined(world.Log), "Subscript out of rangeBuildMissionFile");
  }
  World world;
  EXPECT_EQ(Rewritten(world, Body(), [](Mission& mission) { mission.Loaded = false; }), "<false>");
  LineArray output;
  EXPECT_FALSE(BuildMissionFile(world.Doc, world.Services, output, 5, {}));
}

TEST(NewBornPlace, NumbersTheListsByPlace) {
  World world;
  Mission mission;
  mission.BornPlaces = {
      {1, 3000, {}, 100, -200, true, {}}, {2, 500, {"A", "B c"}, 0, 7, true, {}}, {}};
  mission.BornPlaces[2].HasNumbers = false;
  LineArray output;
  NewBornPlace(world.Services, output, mission);
  EXPECT_EQ(output.FileText(),
            CrlfText("[BornPlace]|  1 3000 100 -200|  2 500 0 7|[BornPlace1]|  A|  B c"));
}

}  // namespace
}  // namespace rws
