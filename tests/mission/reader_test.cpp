#include "mission/reader.h"

#include <gtest/gtest.h>

#include "mission/writer.h"
#include "services/faults.h"
#include "services/paths.h"
#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"

namespace rws {
namespace {

using test::Crlf;
using test::ReadInto;
using test::World;
using Lines = std::vector<std::string>;

const Mission& Read(World& world, const Lines& lines) {
  ReadInto(world, Crlf(lines));
  return world.Doc.Missions[0];
}

bool Logged(const World& world, const std::string& procedure) {
  for (const auto& line : world.Log)
    if (line.ends_with(procedure)) return true;
  return false;
}

TEST(ReadHeader, TakesEveryValueOfItsTable) {
  World world;
  world.Doc.GamePath = "Game";
  world.Doc.Maps = {{"Moscow winter", "moscow/sload.ini"}};
  const auto& mission =
      Read(world, {"[MAIN]", "  MAP Moscow/sload.ini", "  time 12.5", "  CLOUDTYPE 3",
                   "  CloudHeight 1500.0", "  army 2", "  playerNum 1", "  player r0100",
                   "  WeaponsConstant 1", "  briefSound Music/a.wav", "[Wing]", "  army 9", "[x]"});
  const std::pair<std::string, std::string> values[] = {
      {mission.MapPath, "Moscow/sload.ini"},
      {mission.MapName, "Moscow winter"},
      {mission.Time, "12.5"},
      {mission.CloudType, "3"},
      {mission.CloudHeight, "1500"},
      {mission.Army, "2"},
      {mission.PlayerNum, "1"},
      {mission.Player, "r0100"},
      {mission.BriefSound, BuildPath("Game", "Music\\a.wav")},
      {mission.BriefSoundLine, "  briefSound Music/a.wav"}};
  for (const auto& [value, expected] : values) EXPECT_EQ(value, expected);
  EXPECT_EQ(mission.WeaponsConstant, 1);
  EXPECT_EQ(mission.TimeConstant, 0);
  EXPECT_EQ(mission.Lines.size(), 13U);
  EXPECT_TRUE(mission.Loaded);
  EXPECT_TRUE(world.Log.empty());
}

TEST(ReadHeader, IsLooseOnPurpose) {
  struct Row {
    Lines Head;
    std::string Mission::*Field;
    const char* Value;
  };
  const Row rows[] = {
      {{"TIME 12.0", "timeConstant 1"}, &Mission::Time, "1"},
      {{"timeConstant 1", "TIME 12.0"}, &Mission::Time, "12.0"},
      {{"TIME 12.0", "[RespawnTime]"}, &Mission::Time, ""},
      {{"TIME 12.0", "[WING]", "TIME 9"}, &Mission::Time, "12.0"},
      {{"TIME 12.0", " [Wing]", "TIME 9"}, &Mission::Time, "9"},
      {{"TIME 12.0", "[Wing] ", "TIME 9"}, &Mission::Time, "9"},
      {{"CloudHeight 1500"}, &Mission::CloudHeight, "1500"},
      {{"CloudHeight 1500,5"}, &Mission::CloudHeight, "1500"},
      {{"CloudHeight 1500 m"}, &Mission::CloudHeight, ""},
      {{"MAP  Moscow/sload.ini"}, &Mission::MapPath, ""},
      {{"MAP Moscow/sload.ini", "HideFromMinimap 1"}, &Mission::MapPath, "1"},
      {{"playerNum 3"}, &Mission::Player, ""},
      {{"army 1", "HisArmy 2"}, &Mission::Army, "2"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(Crlf(row.Head));
    World world;
    EXPECT_EQ(Read(world, row.Head).*row.Field, row.Value);
  }
}

TEST(ReadHeader, RoundsConstantsAndLogsAnOverflow) {
  const std::pair<const char*, int> rows[] = {
      {"1", 1}, {"0.5", 0}, {"1.5", 2}, {"on", 0}, {"-1", -1}};
  for (const auto& [text, value] : rows) {
    SCOPED_TRACE(text);
    World world;
    EXPECT_EQ(Read(world, {std::string("timeConstant ") + text}).TimeConstant, value);
    EXPECT_TRUE(world.Log.empty());
  }
  World world;
  EXPECT_EQ(Read(world, {"timeConstant 70000", "army 1"}).TimeConstant, 0);
  EXPECT_EQ(world.Log, Lines{"OverflowLoadMission"});
  EXPECT_EQ(world.Doc.Missions[0].Army, "1");
}

Lines Section(const Lines& keys) {
  Lines lines = {"[Wing]", "  r0100", "[r0100]", "  Planes 2"};
  lines.insert(lines.end(), keys.begin(), keys.end());
  lines.push_back("[end]");
  return lines;
}

TEST(LoadPlane, ReadsEveryKey) {
  World world;
  const auto& mission = Read(
      world,
      Section({"  Class air.P_51D20NA", "  PARACHUTE 0", "  OnlyAI 1", "  fuel 50",
               "  Weapons 2xFAB100", "  Skill 3", "  StartTime 15.5", "  skin0 My Skin.BMP",
               "  noseart1 Nose Art.bmp", "  Pilot0 P \xC9.bmp", "  numberOn1 0", "  Unknown 5"}));
  ASSERT_EQ(mission.Flights.size(), 1U);
  const Flight& flight = mission.Flights[0];
  const std::pair<std::string, std::string> values[] = {
      {flight.Name, "r0100"},
      {flight.Planes, "2"},
      {flight.Class, "P_51D20NA"},
      {flight.Parachute, "0"},
      {flight.OnlyAI, "1"},
      {flight.Fuel, "50"},
      {flight.Weapons, "2xFAB100"},
      {flight.Skill, "3"},
      {flight.StartTime, "15.5"},
      {flight.PlaneSlots[0].Skin, "my skin.bmp"},
      {flight.PlaneSlots[1].NoseArt, "nose art.bmp"},
      {flight.PlaneSlots[0].Pilot, "p \xE9.bmp"},
      {flight.PlaneSlots[1].NumberOn, "0"},
      {flight.PlaneSlots[1].Skin, ""},
      {flight.LastWaypoint, ""},
  };
  for (const auto& [value, expected] : values) EXPECT_EQ(value, expected);
  EXPECT_TRUE(world.Log.empty());
}

TEST(LoadPlane, SkillsOfThePlanesMakeItCustom) {
  struct Row {
    Lines Keys;
    const char *Skill, *Slot1;
  };
  const Row rows[] = {{{"Skill 3"}, "3", ""},
                      {{"Skill 5"}, "Custom", ""},
                      {{"Skill 4", "Fuel 9"}, "Custom", ""},
                      {{"Skill1 2"}, "Custom", "2"},
                      {{"Skill 3", "skill1 0", "Fuel 9"}, "Custom", "0"},
                      {{"Skill"}, "", ""},
                      {{"Skill 22"}, "", ""}};
  for (const auto& row : rows) {
    SCOPED_TRACE(Crlf(row.Keys));
    World world;
    const Flight& flight = Read(world, Section(row.Keys)).Flights.at(0);
    EXPECT_EQ(flight.Skill, row.Skill);
    EXPECT_EQ(flight.PlaneSlots[1].Skill, row.Slot1);
  }
}

TEST(LoadPlane, KeepsWhatItReadBeforeAFailure) {
  {
    World world;
    const auto& mission = Read(world, {"[Wing]", "[r0100]", "Planes 1", "Class air.X", "Fuel 7"});
    EXPECT_EQ(world.Log, Lines{"Subscript out of rangeLoadPlane"});
    EXPECT_EQ(mission.Flights.at(0).Class, "X");
    EXPECT_EQ(mission.Flights.at(0).Fuel, "7");
  }
  {
    World world;
    const Flight& flight =
        Read(world, Section({"Class air.X", "skin1 a.bmp", "skin7 b.bmp", "Fuel 7"})).Flights.at(0);
    EXPECT_EQ(world.Log, Lines{"Subscript out of rangeLoadPlane"});
    EXPECT_EQ(flight.Class, "X");
    EXPECT_EQ(flight.PlaneSlots[1].Skin, "a.bmp");
    EXPECT_EQ(flight.Fuel, "");
  }
}

TEST(LoadPlane, TakesItsNameFromTheLineBeforePlanes) {
  World world;
  const auto& mission = Read(world, {"[Wing]", "[r0100]", "  CLASS air.X", "  Planes 1",
                                     "  CLASS air.Y", "[ g01]00 ]", "  xPlanes 4", "[end]"});
  ASSERT_EQ(mission.Flights.size(), 2U);
  EXPECT_EQ(mission.Flights[0].Name, "  CLASS air.X");
  EXPECT_EQ(mission.Flights[0].Class, "CLASS air.Y");
  EXPECT_EQ(mission.Flights[1].Name, " g0100 ");
}

Lines Route(const Lines& waypoints) {
  Lines lines = {"[Wing]", "[r0100]", "Planes 1", "[r0100_WAY]"};
  lines.insert(lines.end(), waypoints.begin(), waypoints.end());
  lines.push_back("[end]");
  return lines;
}

TEST(LoadWayPoint, ReadsWords) {
  struct Row {
    const char *Line, *Type, *Alt, *Speed, *Marker;
    double X, Y;
  };
  const Row rows[] = {
      {"  NORMFLY 1000.55 2000.99 500.75 300.00 &1", "NORMFLY", "500", "300", "&1", 1000, 2000},
      {"TAKEOFF -5.9 7,5 0.0 none", "TAKEOFF", "0", "0", "&0", -5, 7},
      {"GATTACK 1 2 3 4 8_Chief 3 &0 ", "GATTACK", "3", "4", "&0", 1, 2},
      {"NORMFLY 1 2 3 4 &1 F2", "NORMFLY", "3", "4", "&0", 1, 2},
      {"NORMFLY 1 2 3 4 x&", "NORMFLY", "3", "4", "x&", 1, 2},
      {"LANDING 1 2 0900 99999.9 &0", "LANDING", "900", "99999", "&0", 1, 2},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Line);
    World world;
    const Flight& flight = Read(world, Route({row.Line})).Flights.at(0);
    ASSERT_EQ(flight.Waypoints.size(), 1U);
    const Waypoint& waypoint = flight.Waypoints[0];
    EXPECT_EQ(waypoint.Type, row.Type);
    EXPECT_EQ(waypoint.Alt, row.Alt);
    EXPECT_EQ(waypoint.Speed, row.Speed);
    EXPECT_EQ(waypoint.Marker, row.Marker);
    EXPECT_EQ(waypoint.X, row.X);
    EXPECT_EQ(waypoint.Y, row.Y);
    EXPECT_EQ(waypoint.Dist, 0);
    EXPECT_EQ(waypoint.Line, row.Line);
    EXPECT_EQ(flight.LastWaypoint, "0");
  }
}

TEST(LoadWayPoint, MeasuresDistancesInTens) {
  World world;
  const Flight& flight =
      Read(world, Route({"T 1000.9 2000 0 0 &0", "N 1300 1600 0 0 &0", "L 1300 1605.9 0 0 &0"}))
          .Flights.at(0);
  ASSERT_EQ(flight.Waypoints.size(), 3U);
  EXPECT_DOUBLE_EQ(flight.Waypoints[1].Dist, 50);   // 300 and 400 units
  EXPECT_DOUBLE_EQ(flight.Waypoints[2].Dist, 0.5);  // 5 units
  EXPECT_EQ(flight.LastWaypoint, "2");
}

TEST(LoadWayPoint, AShortLineEndsIt) {
  for (const std::string line : {"NORMFLY 1 2 3", "", "NORMFLY 1 2 3 "}) {
    SCOPED_TRACE(line);
    World world;
    const Flight& flight = Read(world, Route({"T 1 2 3 4 &1", line, "L 5 6 7 8 &0"})).Flights.at(0);
    EXPECT_EQ(world.Log, Lines{"Subscript out of rangeLoadWayPoint"});
    ASSERT_EQ(flight.Waypoints.size(), 2U);
    EXPECT_EQ(flight.Waypoints[1].Marker, "&0");
    EXPECT_EQ(flight.Waypoints[1].Line, "");
    EXPECT_EQ(flight.LastWaypoint, "");
  }
}

TEST(LoadWayPoint, BelongsToTheFlightReadLast) {
  World world;
  const auto& mission = Read(world, {"[Wing]", "[early_Way]", "T 1 2 3 4 &0", "[r0100]", "Planes 1",
                                     "[r0110]", "Planes 1", "[r0100_Way]", "T 1 2 3 4 &0",
                                     "N 1 2 3 4 &0", "[r0110_Way]", "L 9 2 3 4 &0", "[end]"});
  EXPECT_EQ(world.Log, Lines{"Subscript out of rangeLoadWayPoint"});
  ASSERT_EQ(mission.Flights.size(), 2U);
  EXPECT_TRUE(mission.Flights[0].Waypoints.empty());
  // The second route replaces the first.
  ASSERT_EQ(mission.Flights[1].Waypoints.size(), 1U);
  EXPECT_EQ(mission.Flights[1].Waypoints[0].Type, "L");
  EXPECT_EQ(mission.Flights[1].LastWaypoint, "0");
}

TEST(LoadBornPlace, FollowsTheOrderOfEvents) {
  struct Row {
    const char* Name;
    Lines Tail;
    std::size_t Count;
    Lines FirstPlanes;
    bool Logged;
  };
  const Lines places = {"[Wing]", "[BORNPLACE]", "  1 3000 100 -200 1 more", "  2 5000 300 400"};
  const Row rows[] = {
      {"no lists", {"[end]"}, 2, {}, false},
      {"nothing behind", {}, 2, {}, false},
      {"a list cuts to one",
       {"[BornPlace0]", " P-51 ", "  Me 109", "[end]"},
       1,
       {"P-51", "Me 109"},
       true},
      {"two lists", {"[BornPlace0]", "A", "[BornPlace1]", "B", "[end]"}, 1, {"A"}, true},
      {"empty lists", {"[BornPlace0]", "[BornPlace1]", "[end]"}, 2, {}, false},
      {"last in the file", {"[BornPlace0]", "A"}, 1, {}, true},
      {"list of no place", {"[BornPlace7]", "[end]"}, 2, {}, true},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Name);
    World world;
    Lines lines = places;
    lines.insert(lines.end(), row.Tail.begin(), row.Tail.end());
    const auto& mission = Read(world, lines);
    EXPECT_TRUE(mission.HasBornPlace);
    EXPECT_EQ(Logged(world, "LoadBornPlace"), row.Logged);
    ASSERT_EQ(mission.BornPlaces.size(), row.Count);
    const BornPlace& first = mission.BornPlaces[0];
    EXPECT_EQ(first.Planes, row.FirstPlanes);
    EXPECT_EQ(first.Army, 1);
    EXPECT_EQ(first.Radius, 3000);
    EXPECT_EQ(first.X, 100);
    EXPECT_EQ(first.Y, -200);
  }
}

class MissionFolder : public testing::Test {
 protected:
  void List(const std::string& folder, const std::string& excluded = "") {
    world_.Doc.MissionDir = box_.Path(folder);
    world_.Doc.ExcludedNames = excluded;
    found_ = GetMissionFiles(world_.Doc, world_.Services);
    LoadMissionArray(world_.Doc, world_.Services);
  }
  Lines Names() const {
    Lines names;
    for (const auto& mission : world_.Doc.Missions) names.push_back(mission.FileName);
    return names;
  }

  test::Sandbox box_;
  World world_;
  bool found_ = false;
};

TEST_F(MissionFolder, ListsItsMissions) {
  for (const char* name : {"coop Dogfight, med, Japanese D3A1.Mis", "-2704.mis", "b.properties",
                           "a.mis.bak", "xmis", "C.MIS", "d.mission.mis"})
    box_.Write(std::string("m/") + name, "");
  box_.MakeFolder("m/x.mis");
  box_.Write("m/sub/inner.mis", "");
  List("m");
  EXPECT_TRUE(found_);
  EXPECT_EQ(Names(), (Lines{"-2704.mis", "C.MIS", "coop Dogfight, med, Japanese D3A1.Mis",
                            "d.mission.mis"}));
  const Mission& mission = world_.Doc.Missions.at(3);
  EXPECT_EQ(mission.BaseName, "d.mission");
  EXPECT_EQ(mission.DirPath, box_.Path("m") + "/");
  EXPECT_FALSE(mission.Loaded);
  List("m", "DOG,2704");
  EXPECT_EQ(Names(), (Lines{"C.MIS", "d.mission.mis"}));
  List("m/sub", "inner");
  EXPECT_FALSE(found_);
  EXPECT_TRUE(Names().empty());
  EXPECT_TRUE(world_.Log.empty());
  List("gone");
  EXPECT_FALSE(found_);
  EXPECT_TRUE(Logged(world_, "GetMissionFiles"));
}

TEST_F(MissionFolder, AFolderNamedLikeTheMissionLosesThatPart) {
  box_.Write("my a.mis set/a.mis", "");
  List("my a.mis set");
  EXPECT_EQ(world_.Doc.Missions.at(0).DirPath, box_.Path("my  set/"));
}

TEST_F(MissionFolder, AMissionThatIsGoneEndsTheProgram) {
  const std::string path = box_.Write("m/a.mis", "[MAIN]\r\n");
  List("m");
  std::remove(path.c_str());
  world_.SettingTexts.clear();
  SetRegValue(world_.Services.Settings, SettingsRoot::CurrentUser, kSetPath, "GamePath",
              std::string("old"));
  world_.Script.Expect("Check error log for errors. RWS will now close.");
  LoadMission(world_.Doc, world_.Services, 0);
  EXPECT_EQ(world_.Log, Lines{path + "File does not exist!"});
  EXPECT_EQ(world_.SettingTexts.size(), 1U);
  EXPECT_EQ(world_.SettingTexts.begin()->second, "");
  EXPECT_EQ(world_.CloseRequests, 1);
  EXPECT_TRUE(world_.Doc.Closing);
  EXPECT_FALSE(world_.Busy);
  EXPECT_EQ(world_.Script.Boxes.at(0).Icon, Icon::Critical);
}

TEST_F(MissionFolder, AMissionThatCannotBeReadIsTriedAgain) {
  box_.Write("m/a.mis", "[MAIN]\n  army 1\n[Wing]\n[NStationary]\n");
  List("m");
  world_.Services.Files.BeforeStep = [](const FileStep& step) {
    throw FileFault(fault::FileIo, step.Action, step.Path, "device error");
  };
  LoadMission(world_.Doc, world_.Services, 0);
  const Mission& mission = world_.Doc.Missions[0];
  ASSERT_EQ(world_.Log.size(), 1U);
  EXPECT_TRUE(Logged(world_, "device errorLoadMission"));
  EXPECT_FALSE(mission.Loaded);
  EXPECT_TRUE(mission.Lines.empty());
  EXPECT_FALSE(world_.Busy);
  LineArray lines;
  EXPECT_FALSE(BuildMissionFile(world_.Doc, world_.Services, lines, 0));
  EXPECT_TRUE(lines.empty());

  world_.Services.Files.BeforeStep = nullptr;
  LoadMission(world_.Doc, world_.Services, 0);
  EXPECT_TRUE(mission.Loaded);
  EXPECT_EQ(mission.Army, "1");
  EXPECT_EQ(box_.Read("m/a.mis"), "[MAIN]\r\n  army 1\r\n[Wing]\r\n[NStationary]\r\n");
  EXPECT_EQ(world_.CloseRequests, 0);
}

}  // namespace
}  // namespace rws
