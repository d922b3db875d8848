#include "mainwindow/logic/flight_commands.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

#include "mainwindow/logic/add_special.h"
#include "mainwindow/logic/change_aircraft.h"
#include "mainwindow/logic/duplicate_flight.h"
#include "mainwindow/logic/flight_names.h"
#include "mission/update.h"
#include "mission/writer.h"
#include "services/text.h"
#include "tests/support/doubles.h"

namespace rws::test {
namespace {

using Indexes = std::vector<std::size_t>;

/** A fighter, a carrier that nobody may fly, its companion, and a carrier whose companion no table
    knows. */
Catalogues MakeTables() {
  const std::vector<Loadout> weapons{
      {"Default", "default"}, {"Bombs", "b1"}, {"Empty (No Ammo)", "none"}};
  Catalogues tables;
  tables.Aircraft = {{"Red", "Duck", "A_1", "", "", weapons, true, false},
                     {"Red", "Big 3", "TB_3", "", " I_16D", {{"Default", "default"}}, false, false},
                     {"Red", "Drone", "I_16D", "", "", {}, false, false},
                     {"Blue", "Ghost", "X_1", "", "NONE", weapons, true, false}};
  tables.Squadrons = {{"red", "USSR", "VVS", {{"r01", ""}}}};
  return tables;
}

/** A flight section and its route, its parts joined by "|". */
std::string FlightLines(const std::string& name, const std::string& type, const std::string& rest,
                        const std::string& route) {
  return "[" + name + "]|Planes 3|" + rest + "|Class air." + type +
         "|Fuel 90|weapons b1|StartTime 5|[" + name + "_Way]|" + route + "|";
}

Mission& ReadFlights(World& world, const std::string& flights) {
  return ReadLines(world, "[MAIN]|player r0100|playerNum 1|[Wing]|x|" + flights + "[end]|x");
}

std::string Names(const Mission& mission) {
  std::vector<std::string> names;
  for (const auto& flight : mission.Flights) names.push_back(flight.Name);
  return Joined(names);
}

TEST(FlightNames, GoOnByFlightAndSquadron) {
  struct Row {
    const char *Taken, *Name, *Next;
    std::size_t Logged = 0;
  };
  const Row rows[] = {
      {"R0105", " r0105 ", "r0105"},
      {"r0100 r0101", "r0100", "r0102"},
      {"r0103 r0110 r0111", "r0103", "r0112"},
      {"r0005", "r0005", "r0012"},
      {"a99", "a99", "a106"},
      {"9999999999999999999999", "9999999999999999999999", "10000000000000000000006"},
      {"7", "7", "14"},
      {"r", "r", "r00", 1},
      {"ab00 ab", "ab", "ab01", 1},
      {"00", "", "01", 1}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Next);
    World world;
    Mission& mission = world.Doc.Missions.emplace_back();
    for (const auto name : SplitAt(row.Taken, ' ')) mission.Flights.emplace_back().Name = name;
    EXPECT_EQ(NextFlightName(world.Doc, world.Services, row.Name), row.Next);
    EXPECT_EQ(world.Log.size(), row.Logged);
  }
}

TEST(OffsetWaypoints, MovesALine) {
  struct Row {
    const char *Line, *Alt;
    WaypointOffsets Offsets;
    const char *NewLine, *NewAlt;
  };
  const Row rows[] = {
      {"  N 1000.55 2000 500.0 3 &0", "500", {10, -600, 0}, "  N 1010.55 2010 500.0 3 &0", "-100"},
      {"N 1.00 200 11.00 3 &0", "11", {1, 0, 0}, "N 2 201 12 3 &0", "11"},
      {"N 1,5 2 0 3 &0", "0", {10, 1, 0}, "N 11.5 12 0 3 &0", "1"},
      {"TakeOff 1,5 2 0 3 &0", "0", {10, 1, 9}, "TakeOff 1.5 2 0 3 &0", "0"},
      {"GATTACK 10 20 30 40 Bridge3", "30", {100, 0, 0}, "GATTACK 110 120 30 40 ", "30"},
      {" gattack 10 20 30 40 40 ", "30", {0, 0, 0}, " gattack 10 20 30 40 ", "30"},
      {"GATTACK 10 20 30 40 B 0 &0", "30", {5, 0, 0}, "GATTACK 15 25 30 40 B 0 &0", "30"},
      {"N 1 8 5 4 &0", "5", {-32768, 32767, 0}, "N -32767 -32760 5 4 &0", "32772"},
      {"N 16777216 3 1 1 &0", "1", {1, 0, 0}, "N 16777216 4 1 1 &0", "1"},
      {"N 1", "5", {10, 10, 0}, "N 1", "5"},
      {"LANDING 15 2 0 3", "x", {10, 10, 9}, "LANDING 15 2 0 3", "x"},
      {"N 1e39 2 3 4 &0", "5", {10, 10, 0}, "N 1e39 2 3 4 &0", "5"},
      {"N 1 y 3 4 &0", "5", {10, 10, 0}, "N 1 y 3 4 &0", "5"},
      {"takeoff_005 1 2 5 4", "5", {10, 10, 0}, "takeoff_005 1 2 5 4", "5"},
      {"LANDING_104 1 2 5 4", "5", {10, 10, 0}, "LANDING_104 1 2 5 4", "5"},
      {"Triggers 0 10,5 20 0", "20", {10, 10, 0}, "Triggers 0 10,5 20 0", "20"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Line);
    std::vector<Waypoint> route(1);
    route[0].Line = row.Line;
    route[0].Type = SplitAt(Trim(row.Line), ' ')[0];
    route[0].Alt = row.Alt;
    OffsetWaypoints(route, row.Offsets);
    EXPECT_EQ(route[0].Line, row.NewLine);
    EXPECT_EQ(route[0].Alt, row.NewAlt);
  }
  std::vector<Waypoint> route(3);
  route[0].Type = route[2].Type = "LANDING";
  for (auto& waypoint : route) waypoint.Speed = "200";
  OffsetWaypoints(route, {0, 0, -15});
  EXPECT_EQ(Joined({route[0].Speed, route[1].Speed, route[2].Speed}), "200|185|200");
  route[1].Type = "TRIGGERS";  // no waypoint: the one that it stands behind is meant
  route[2].Type = "LANDING_104";
  OffsetWaypoints(route, {0, 0, -15});
  EXPECT_EQ(Joined({route[0].Speed, route[1].Speed, route[2].Speed}), "185|185|200");
}

TEST(DuplicateFlight, StepsAwayFromItsSource) {
  World world;
  const char route[] = "TAKEOFF 1000 2000 0 0 &1|N 1000 2000 500.7 300 &0";
  Mission& mission = ReadFlights(world, FlightLines("r0102", "TB_3", "Skill0 2|Skill2 1", route));
  EXPECT_TRUE(DuplicateFlight(world.Doc, MakeTables(), world.Services, {10, 0, 0}, 3));
  EXPECT_EQ(Names(mission), "r0102|r0103|r0110|r0111|r0112|r0113|r0120");
  EXPECT_EQ(mission.Flights[1].Waypoints[0].Line, "TAKEOFF 1000 2000 0 0 &1");
  EXPECT_EQ(mission.Flights[2].Waypoints[0].Line, "TAKEOFF 1000 2000 0 0 r0103 0");
  EXPECT_EQ(mission.Flights[1].Waypoints[1].Line, "N 1010 2010 500.7 300 &0");
  EXPECT_EQ(mission.Flights[5].Waypoints[1].Line, "N 1030 2030 500.7 300 &0");
  EXPECT_EQ(
      FlightsText(world.Doc, world.Services, {6}),
      CrlfText("[r0120]|  Planes 2|  Skill0 2|  Class air.I_16D|  Fuel 90|"
               "  weapons default|  StartTime 5|[r0120_Way]|  TAKEOFF 1000 2000 0 0 r0113 0 &1"));
  EXPECT_TRUE(MissionChanged(world.Doc, 0));
  EXPECT_TRUE(world.Log.empty());
}

TEST(ChangeAirCraft, RenamesAndRefits) {
  struct Row {
    AircraftChoice Choice;
    const char *Weapons, *Names, *Flight;
    bool Done = true, PlayerLost = true;
    const char* Lost = "";
  };
  // Of the first flight: class, loadout, army, markings, and the mission's player.
  const Row rows[] = {
      {{"  ", "g", "s", true}, "Bombs", "r0100|r0101", "A_1 b1  0 r0100", false, false},
      {{"Cancel", "g", "s", true}, "Bombs", "r0100|r0101", "A_1 b1  0 r0100", false, false},
      {{"Duck", " g02 ", "s", false}, "-", "g0200|g0201", "A_1 b1 s 0 "},
      {{"Duck", "r01", "", true}, "Bombs", "r0102|r0103", "A_1 b1 red  "},
      {{"Duck", "", "s", true},
       "-",
       "00|01",
       "A_1 default s  ",
       true,
       true,
       "Weapon load \"b1\" of 00 and 1 more gave way to the default of Duck."},
      {{"Big 3      F", "g", "s", true},
       "Default",
       "g00|g02|g01|g03",
       "TB_3 b1 s  ",
       true,
       true,
       "Weapon load \"b1\" of g00 and 1 more stays, though Big 3 does not know it."}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Names);
    World world;
    const auto lines = FlightLines("r0100", "A_1", "Skill 1|numberOn0 0", "N 1 2 3 4 &0");
    Mission& mission = ReadFlights(world, lines + Replace(lines, "r0100", "r0101"));
    const auto change =
        ChangeAirCraft(world.Doc, MakeTables(), world.Services, row.Choice, {0, 1}, row.Weapons);
    EXPECT_EQ(change.Done, row.Done);
    EXPECT_EQ(change.PlayerLost, row.PlayerLost);
    EXPECT_EQ(change.LoadoutsLost, row.Lost);
    EXPECT_EQ(Names(mission), row.Names);
    const Flight& flight = mission.Flights[0];
    EXPECT_EQ(flight.Class + " " + flight.Weapons + " " + flight.ArmyWord + " " +
                  flight.PlaneSlots[0].NumberOn + " " + mission.Player,
              row.Flight);
    EXPECT_EQ(mission.Player.empty(), mission.PlayerNum.empty());
  }
}

TEST(FlightCommands, WorkOnWhatIsSelected) {
  World world;
  Document& doc = world.Doc;
  const auto lines = FlightLines("r0100", "A_1", "Skill 1", "N 1 2 3 4 &0");
  Mission& mission = ReadFlights(world, lines + Replace(lines, "r0100", "r0101"));
  EXPECT_TRUE(SetMarkings(doc, world.Services, {0}, false));
  const auto& slots = mission.Flights[0].PlaneSlots;
  EXPECT_EQ(slots[2].NumberOn + "|" + slots[3].NumberOn, "0|");
  EXPECT_FALSE(MissionChanged(doc, 0));
  EXPECT_TRUE(SetFlightSkin(doc, world.Services, {0}, "a.bmp"));
  EXPECT_EQ(slots[2].Skin + "|" + slots[3].Skin, "a.bmp|");
  mission.Flights[0].Planes = "9";
  EXPECT_TRUE(SetFlightSkin(doc, world.Services, {0}, "default"));
  EXPECT_EQ(slots[2].Skin + "|" + slots[3].NumberOn, "|0");
  EXPECT_TRUE(FlightsText(doc, world.Services, {1, 0}).starts_with("[r0101]\r\n  Planes 3\r\n"));
  // One that does not exist spares the others, and leaves no mark for the next removal.
  EXPECT_FALSE(RemoveFlights(doc, world.Services, {0, 2}));
  EXPECT_EQ(FlightsText(doc, world.Services, {0, 2}), "");
  EXPECT_TRUE(RemoveFlights(doc, world.Services, {1}));
  EXPECT_EQ(Names(mission), "r0100");
  EXPECT_EQ(world.Log.size(), 2u);
}

std::string Written(World& world) {
  LineArray lines;
  EXPECT_TRUE(BuildMissionFile(world.Doc, world.Services, lines, 0, {}));
  return lines.FileText();
}

void ExpectReadsBack(World& world) {
  World again;
  ReadInto(again, Written(world));
  const Mission& own = world.Doc.Missions[0];
  const auto& seen = again.Doc.MissionShadow[0].Flights;
  ASSERT_EQ(seen.size(), own.Flights.size());
  for (std::size_t i = 0; i < seen.size(); ++i)
    EXPECT_EQ(seen[i].Waypoints.size(), own.Flights[i].Waypoints.size());
  EXPECT_EQ(again.Doc.Missions[0].Player, own.Player);
  again.Doc.Missions[0].Flights = own.Flights;
  EXPECT_FALSE(MissionChanged(again.Doc, 0));
}

std::string RandomFlights(std::mt19937& random) {
  const auto number = [&] { return std::to_string(1000 + random() % 90000); };
  const auto place = [&] { return number() + ".25 " + number(); };
  const char* types[] = {"A_1", "TB_3", "X_1", "Q"};
  std::string text;
  for (unsigned i = 0, count = 1 + random() % 6; i < count; ++i) {
    std::string rest = random() % 2 ? "Skill 2" : "Skill0 1|Skill1 3|OnlyAI 1|skin1 a.bmp";
    if (random() % 2) rest += "|Parachute 0|numberOn2 0|pilot0 p.bmp";
    std::string route = random() % 2 ? "TAKEOFF " + place() + " 0 0 &0|" : "";
    for (unsigned leg = random() % 4; leg > 0; --leg) route += "N " + place() + " 70.00 30.00 &1|";
    if (random() % 2) route += "GATTACK " + place() + " 500 300 Bridge3|";
    route += "LANDING " + place() + " 0 0 &0";
    text += FlightLines("r010" + std::to_string(i), types[random() % 4], rest, route);
  }
  return text;
}

/** Duplicates the current flight; those that were there stay as they were. */
void Duplicate(World& world, const WaypointOffsets& offsets, int count) {
  auto& flights = world.Doc.Missions[0].Flights;
  const std::string before = Written(world);
  const auto first = static_cast<std::ptrdiff_t>(flights.size());
  EXPECT_TRUE(DuplicateFlight(world.Doc, MakeTables(), world.Services, offsets, count));
  const auto all = flights;
  flights.erase(flights.begin() + first, flights.end());
  EXPECT_EQ(Written(world), before);
  flights = all;
}

/** Runs one command at random; gives how many flights it removed. */
std::size_t RunOne(World& world, std::mt19937& random) {
  Document& doc = world.Doc;
  const std::size_t count = doc.Missions[0].Flights.size();
  doc.CurFlight = static_cast<int>(random() % count);
  Indexes selected;
  for (std::size_t i = 1; i < count; ++i)
    if (random() % 3 == 0) selected.push_back(i);
  const char *squads[] = {"r01", "g02", ""}, *aircraft[] = {"Duck", "Big 3", "Ghost"};
  const auto offset = static_cast<std::int16_t>(static_cast<int>(random() % 201) - 100);
  const AircraftChoice choice{aircraft[random() % 3], squads[random() % 3], "", offset > 0};
  const unsigned command = random() % 4;
  if (command == 0) RemoveFlights(doc, world.Services, selected);
  if (command == 1) SetFlightSkin(doc, world.Services, selected, "b.bmp");
  if (command == 2) ChangeAirCraft(doc, MakeTables(), world.Services, choice, selected, "Bombs");
  if (command == 3) Duplicate(world, {offset, offset, offset}, random() % 4);
  return command == 0 ? selected.size() : 0;
}

TEST(FlightCommands, KeepAMissionWholeInAnyOrder) {
  for (unsigned seed = 1; seed <= 60 && !HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    World world;
    Mission& mission = ReadFlights(world, RandomFlights(random));
    std::size_t removed = 0;
    for (int step = 0; step < 8; ++step) {
      removed += RunOne(world, random);
      std::set<std::string> names;
      for (const auto& flight : mission.Flights) names.insert(flight.Name);
      EXPECT_EQ(names.size(), mission.Flights.size()) << Names(mission);
      EXPECT_EQ(world.Doc.MissionShadow[0].Flights.size(), mission.Flights.size() + removed);
      ExpectReadsBack(world);
    }
  }
}

}  // namespace
}  // namespace rws::test
