#include "mission/reader.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "mission/line_values.h"
#include "mission/writer.h"
#include "services/faults.h"
#include "services/paths.h"
#include "tests/support/doubles.h"
#include "tests/support/failing_step.h"
#include "tests/support/sandbox.h"

namespace rws {
namespace {

using std::string;
using test::Joined;
using test::ReadLines;
using test::World;

TEST(ReadHeader, TakesEveryValueOfItsTable) {
  World world;
  world.Doc.GamePath = "Game";
  world.Doc.Maps = {{"Moscow winter", "moscow/sload.ini"}};
  const Mission& m = ReadLines(
      world,
      "[MAIN]|  MAP Moscow/sload.ini|  time 12.5|  CLOUDTYPE 3|  CloudHeight 1500.0|  army 2|"
      "  playerNum 1|  player r0100|  WeaponsConstant 1|  briefSound a/b.wav|[Wing]|  army 9|[x]");
  EXPECT_EQ(Joined({m.MapPath, m.MapName, m.Time, m.CloudType, m.CloudHeight, m.Army, m.PlayerNum,
                    m.Player, m.BriefSoundLine}),
            "Moscow/sload.ini|Moscow winter|12.5|3|1500|2|1|r0100|  briefSound a/b.wav");
  EXPECT_EQ(m.BriefSound, BuildPath("Game", "a\\b.wav"));
  EXPECT_EQ(m.WeaponsConstant, 1);
  EXPECT_EQ(m.TimeConstant, 0);
  EXPECT_TRUE(m.Loaded && world.Log.empty());
}

TEST(ReadHeader, IsLooseOnPurpose) {
  struct Row {
    const char* Head;
    string Mission::*Field;
    const char* Value;
  };
  const Row rows[] = {
      {"TIME 12.0|timeConstant 1", &Mission::Time, "1"},
      {"timeConstant 1|TIME 12.0", &Mission::Time, "12.0"},
      {"TIME 12.0|[RespawnTime]", &Mission::Time, ""},
      {"TIME 12.0|[WING]|TIME 9", &Mission::Time, "12.0"},
      {"TIME 12.0| [Wing]|TIME 9", &Mission::Time, "9"},
      {"TIME 12.0|[Wing] |TIME 9", &Mission::Time, "9"},
      {"CloudHeight 1500,5", &Mission::CloudHeight, "1500"},
      {"CloudHeight 1.234,5", &Mission::CloudHeight, "1.234"},
      {"CloudHeight 1,234.5", &Mission::CloudHeight, "1"},
      {"CloudHeight\t500", &Mission::CloudHeight, ""},
      {"CloudHeight .5", &Mission::CloudHeight, ""},
      {"CloudHeight 1500 m", &Mission::CloudHeight, ""},
      {"MAP  Moscow/sload.ini", &Mission::MapPath, ""},
      {"MAP Moscow/sload.ini|HideFromMinimap 1", &Mission::MapPath, "1"},
      {"playerNum 3", &Mission::Player, ""},
      {"army 1|HisArmy 2", &Mission::Army, "2"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Head);
    World world;
    EXPECT_EQ(ReadLines(world, row.Head).*row.Field, row.Value);
  }
}

TEST(ReadHeader, FindsTheMapAndTheSound) {
  World world;
  world.Doc.Maps = {
      {"Moscow", "Moscow/a.ini"}, {"Again", "moscow/a.ini"}, {"\xD6land", " \xD6LAND/a.ini "}};
  const std::pair<const char*, const char*> rows[] = {
      {"MOSCOW/A.INI ", "Moscow"}, {"\xF6land/a.ini", "\xD6land"}, {"Moscow/b.ini", ""}, {"", ""}};
  for (const auto& [path, name] : rows)
    EXPECT_EQ(GetMapName(world.Doc, world.Services, path), name) << path;
  world.Doc.GamePath = "Game Dir";
  // The code page's letter becomes the file system's spelling.
  EXPECT_EQ(GetBriefSoundPath(world.Doc, world.Services, "  briefSound In/M\xE9.wav more words"),
            BuildPath("Game Dir", "In\\M\xC3\xA9.wav"));
  EXPECT_THROW(GetBriefSoundPath(world.Doc, world.Services, "  briefSound  "), Fault);
}

TEST(ReadHeader, RoundsConstantsAndLogsAnOverflow) {
  const std::pair<const char*, int> rows[] = {{"1", 1},  {"0.5", 0}, {"1.5", 2},
                                              {"on", 0}, {"-1", -1}, {"70000|army 1", 0}};
  World world;
  for (const auto& [text, value] : rows) {
    SCOPED_TRACE(text);
    EXPECT_TRUE(world.Log.empty());
    EXPECT_EQ(ReadLines(world, string("timeConstant ") + text).TimeConstant, value);
  }
  EXPECT_EQ(Joined(world.Log), "OverflowLoadMission");
  EXPECT_EQ(world.Doc.Missions[0].Army, "1");
}

/** Reads a mission of one flight with these keys behind its Planes line. */
const Flight& ReadKeys(World& world, const string& keys) {
  return ReadLines(world, "[Wing]|  r0100|[r0100]|  Planes 2|" + keys + "|[end]").Flights.at(0);
}

TEST(LoadPlane, ReadsEveryKey) {
  World world;
  const Flight& f = ReadKeys(
      world,
      "  Class air.P_51D20NA|  PARACHUTE 0|  OnlyAI 1|  fuel 50|  Weapons 2xFAB100|  Skill 3|"
      "  StartTime 15.5|  skin0 My Skin.BMP|  noseart1 Nose Art.bmp|  Pilot0 P \xC9.bmp|"
      "  numberOn1 0|  Unknown 5");
  EXPECT_EQ(Joined({f.Name, f.Planes, f.Class, f.Parachute, f.OnlyAI, f.Fuel, f.Weapons, f.Skill,
                    f.StartTime, f.LastWaypoint}),
            "r0100|2|P_51D20NA|0|1|50|2xFAB100|3|15.5|");
  const auto &slot = f.PlaneSlots[0], &next = f.PlaneSlots[1];
  EXPECT_EQ(Joined({slot.Skin, slot.Pilot, next.Skin, next.NoseArt, next.NumberOn}),
            "my skin.bmp|p \xE9.bmp||nose art.bmp|0");
  EXPECT_TRUE(world.Log.empty());
}

TEST(LoadPlane, SkillsOfThePlanesMakeItCustom) {
  struct Row {
    const char *Keys, *Skill, *Slot1;
  };
  const Row rows[] = {{"Skill 3", "3", ""},
                      {"Skill 4|Fuel 9", "Custom", ""},
                      {"Skill12 2", "Custom", "2"},
                      {"Skill 3|skill1 0|Fuel 9", "Custom", "0"},
                      {"Skill", "", ""},
                      {"Skill 22", "", ""}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Keys);
    World world;
    const Flight& flight = ReadKeys(world, row.Keys);
    EXPECT_EQ(flight.Skill, row.Skill);
    EXPECT_EQ(flight.PlaneSlots[1].Skill, row.Slot1);
  }
}

TEST(LoadPlane, KeepsWhatItReadBeforeAFailure) {
  World world, last;
  const Flight& flight = ReadKeys(world, "Class air.X|skin1 a.bmp|skin7 b.bmp|Fuel 7");
  EXPECT_EQ(Joined({flight.Class, flight.PlaneSlots[1].Skin, flight.Fuel}), "X|a.bmp|");
  const Flight& atEnd = ReadLines(last, "[Wing]|[r0100]|Planes 1|Class air.X|Fuel 7").Flights.at(0);
  EXPECT_EQ(Joined({atEnd.Class, atEnd.Fuel}), "X|7");
  for (const auto* log : {&world.Log, &last.Log})
    EXPECT_EQ(Joined(*log), "Subscript out of rangeLoadPlane");
}

TEST(LoadPlane, TakesItsNameFromTheLineBeforePlanes) {
  World world;
  const auto& flights = ReadLines(world,
                                  "[Wing]|[r0100]|  CLASS air.X|  Planes 1|  CLASS air.Y|"
                                  "[ g01]00 ]|  xPlanes 4|[end]")
                            .Flights;
  ASSERT_EQ(flights.size(), 2U);
  EXPECT_EQ(Joined({flights[0].Name, flights[0].Class, flights[1].Name}),
            "  CLASS air.X|CLASS air.Y| g0100 ");
}

const Flight& ReadRoute(World& world, const string& waypoints) {
  return ReadLines(world, "[Wing]|[r0100]|Planes 1|[r0100_WAY]|" + waypoints + "|[end]").Flights[0];
}

TEST(LoadWayPoint, ReadsWords) {
  const std::pair<const char*, const char*> rows[] = {
      {"  NORMFLY 1000.55 2000.99 500.75 300.00 &1", "NORMFLY 1000 2000 500 300 &1"},
      {"TAKEOFF -5.9 7,5 0.0 none", "TAKEOFF -5 7 0 0 &0"},
      {"GATTACK 1 2 3 4 8_Chief 3 &0 ", "GATTACK 1 2 3 4 &0"},
      {"NORMFLY 1 2 3 4 &1 F2", "NORMFLY 1 2 3 4 &0"},
      {"NORMFLY 1 2 3 4 x&", "NORMFLY 1 2 3 4 x&"},
      {"LANDING 1 2 0900 99999.9 &0", "LANDING 1 2 900 99999 &0"}};
  for (const auto& [line, words] : rows) {
    SCOPED_TRACE(line);
    World world;
    const Flight& flight = ReadRoute(world, line);
    ASSERT_EQ(flight.Waypoints.size(), 1U);
    const Waypoint& w = flight.Waypoints[0];
    std::ostringstream read;
    read << w.Type << ' ' << w.X << ' ' << w.Y << ' ' << w.Alt << ' ' << w.Speed << ' ' << w.Marker;
    EXPECT_EQ(read.str(), words);
    EXPECT_EQ(w.Line, line);
    EXPECT_EQ(flight.LastWaypoint, "0");
  }
}

TEST(LoadWayPoint, MeasuresDistancesInTens) {
  World world;
  const auto& waypoints =
      ReadRoute(world, "T 1000.9 2000 0 0 &0|N 1300 1600 0 0 &0|L 1300 1605.9 0 0 &0").Waypoints;
  ASSERT_EQ(waypoints.size(), 3U);
  EXPECT_DOUBLE_EQ(waypoints[0].Dist, 0);
  EXPECT_DOUBLE_EQ(waypoints[1].Dist, 50);   // 300 and 400 units
  EXPECT_DOUBLE_EQ(waypoints[2].Dist, 0.5);  // 5 units
}

TEST(LoadWayPoint, AShortLineEndsIt) {
  for (const string line : {"NORMFLY 1 2 3", "", "NORMFLY 1 2 3 "}) {
    SCOPED_TRACE(line);
    World world;
    const Flight& flight = ReadRoute(world, "T 1 2 3 4 &1|" + line + "|L 5 6 7 8 &0");
    EXPECT_EQ(Joined(world.Log), "Subscript out of rangeLoadWayPoint");
    ASSERT_EQ(flight.Waypoints.size(), 2U);
    EXPECT_EQ(flight.Waypoints[1].Marker, "&0");
    EXPECT_EQ(flight.Waypoints[1].Line, "");
    EXPECT_EQ(flight.LastWaypoint, "");
  }
}

TEST(LoadWayPoint, BelongsToTheFlightReadLast) {
  World world;
  const auto& flights = ReadLines(world,
                                  "[Wing]|[early_Way]|T 1 2 3 4 &0|[r0100]|Planes 1|[r0110]|"
                                  "Planes 1|[r0100_Way]|T 1 2 3 4 &0|N 1 2 3 4 &0|[r0110_Way]|"
                                  "L 9 2 3 4 &0|[end]")
                            .Flights;
  EXPECT_EQ(Joined(world.Log), "Subscript out of rangeLoadWayPoint");
  ASSERT_EQ(flights.size(), 2U);
  EXPECT_TRUE(flights[0].Waypoints.empty());
  // The second route replaces the first.
  ASSERT_EQ(flights[1].Waypoints.size(), 1U);
  EXPECT_EQ(flights[1].Waypoints[0].Type + flights[1].LastWaypoint, "L0");
}

TEST(LoadBornPlace, FollowsTheOrderOfEvents) {
  struct Row {
    const char* Tail;
    std::size_t Count;
    const char* FirstPlanes;
    bool Logged;
  };
  const Row rows[] = {
      {"", 2, "", false},
      {"|[end]", 2, "", false},
      {"|[BornPlace0]| P-51 |  Me 109|[end]", 1, "P-51|Me 109", true},  // a list cuts to one
      {"|[BornPlace0]|A|[BornPlace1]|B|[end]", 1, "A", true},
      {"|[BornPlace0]|[BornPlace1]|[end]", 2, "", false},
      {"|[BornPlace0]|A", 1, "", true},
      {"|[BornPlace7]|[end]", 2, "", true},
      {"|  |  3 1 2 3", 3, "", true},  // the blank line's record never gets its numbers
      {"|3 1 2", 3, "", true},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Tail);
    World world;
    const auto& mission = ReadLines(
        world, string("[Wing]|[BORNPLACE]|  1 3000 100 -200 1 more|  2 5000 300 400") + row.Tail);
    EXPECT_TRUE(mission.HasBornPlace);
    EXPECT_EQ(Joined(world.Log).ends_with("LoadBornPlace"), row.Logged);
    ASSERT_EQ(mission.BornPlaces.size(), row.Count);
    const BornPlace& first = mission.BornPlaces[0];
    EXPECT_EQ(Joined(first.Planes), row.FirstPlanes);
    EXPECT_TRUE(first.Army == 1 && first.Radius == 3000 && first.X == 100 && first.Y == -200);
    EXPECT_TRUE(first.HasNumbers);
    EXPECT_EQ(mission.BornPlaces.back().HasNumbers, row.Count < 3);
  }
}

TEST(LoadWayPoint, ASecondSectionThatFailsAtOnceLeavesTheFirst) {
  World world;
  const Flight& flight = ReadRoute(world, "T 1 2 3 4 &1|N 5 6 7 8 &0|[r0199_Way]|N 9 9|L 1 1 1 1");
  EXPECT_EQ(Joined(world.Log), "Subscript out of rangeLoadWayPoint");
  ASSERT_EQ(flight.Waypoints.size(), 2U);
  EXPECT_EQ(flight.Waypoints[0].Line, "T 1 2 3 4 &1");
  EXPECT_EQ(flight.LastWaypoint, "1");
}

class MissionFolder : public testing::Test {
 protected:
  /** Names of the missions of a folder. */
  string List(const string& folder, const string& excluded = "") {
    world_.Doc.MissionDir = box_.Path(folder);
    world_.Doc.ExcludedNames = excluded;
    const bool found = GetMissionFiles(world_.Doc, world_.Services);
    EXPECT_EQ(found, !world_.Doc.MissionFiles.empty());
    LoadMissionArray(world_.Doc, world_.Services);
    std::vector<string> names;
    for (const auto& mission : world_.Doc.Missions) names.push_back(mission.FileName);
    return Joined(names);
  }

  test::Sandbox box_;
  World world_;
};

TEST_F(MissionFolder, ListsItsMissions) {
  for (const char* name : {"coop Dogfight, med, Japanese D3A1.Mis", "-2704.mis", "b.properties",
                           "a.mis.bak", "xmis", "C.MIS", "d.mission.mis", "sub/inner.mis"})
    box_.Write(string("m/") + name, "");
  box_.MakeFolder("m/x.mis");
  EXPECT_EQ(List("m"), "-2704.mis|C.MIS|coop Dogfight, med, Japanese D3A1.Mis|d.mission.mis");
  const Mission& mission = world_.Doc.Missions.at(3);
  EXPECT_EQ(mission.BaseName, "d.mission");
  EXPECT_EQ(mission.DirPath, box_.Path("m") + kSeparator);
  EXPECT_FALSE(mission.Loaded);
  EXPECT_EQ(List("m", "DOG,2704"), "C.MIS|d.mission.mis");
  EXPECT_EQ(List("m/sub", "inner"), "");
  box_.Write("my a.mis set/a.mis", "");  // the name of the mission is cut out of its folder's
  EXPECT_EQ(List("my a.mis set"), "a.mis");
  EXPECT_EQ(world_.Doc.Missions.at(0).DirPath, box_.Path("my  set/"));
  EXPECT_TRUE(world_.Log.empty());
  EXPECT_EQ(List("gone"), "");
  EXPECT_TRUE(Joined(world_.Log).ends_with("GetMissionFiles"));
}

TEST_F(MissionFolder, AMissionThatIsGoneEndsTheProgram) {
  const string path = box_.Write("m/a.mis", "[MAIN]\r\n");
  List("m");
  box_.Remove("m/a.mis");
  world_.SettingTexts.clear();
  SetRegValue(world_.Services.Settings, SettingsRoot::CurrentUser, kSetPath, "GamePath",
              string("old"));
  world_.Script.Expect("Check error log for errors. RWS will now close.");
  LoadMission(world_.Doc, world_.Services, 0);
  EXPECT_EQ(Joined(world_.Log), path + "File does not exist!");
  ASSERT_EQ(world_.SettingTexts.size(), 1U);
  EXPECT_EQ(world_.SettingTexts.begin()->second, "");
  EXPECT_TRUE(world_.CloseRequests == 1 && world_.Doc.Closing && !world_.Busy);
}

TEST_F(MissionFolder, AMissionThatCannotBeLookedAtIsNotGone) {
  if (!test::kPosixFiles) GTEST_SKIP() << test::kNeedsPosixFiles;
  box_.Write("m/a.mis", "[MAIN]\r\n");
  List("m");
  box_.Remove("m/a.mis");
  box_.Link("m/a.mis", "m/a.mis");  // to itself
  LoadMission(world_.Doc, world_.Services, 0);
  EXPECT_TRUE(Joined(world_.Log).ends_with("LoadMission")) << Joined(world_.Log);
  EXPECT_FALSE(world_.Doc.Closing || world_.Doc.Missions[0].Loaded || world_.Busy);
}

TEST_F(MissionFolder, AFileThatCannotBeRepairedIsReadAllTheSame) {
  const string text = "[MAIN]\n  army 1\n[Wing]\n[NStationary]\n";
  std::filesystem::permissions(test::ToFsPath(box_.Write("m/a.mis", text)),
                               std::filesystem::perms::owner_read);
  List("m");
  LoadMission(world_.Doc, world_.Services, 0);
  EXPECT_EQ(world_.Doc.Missions[0].Army, "1");
  EXPECT_EQ(box_.Read("m/a.mis"), text);
  ASSERT_EQ(world_.Script.Notices.size(), 1U);
  EXPECT_TRUE(world_.Script.Notices[0].find("a.mis\" could not be repaired") != string::npos &&
              world_.Script.Notices[0].ends_with("the file is read-only"))
      << world_.Script.Notices[0];
  EXPECT_TRUE(world_.Log.empty());
}

TEST_F(MissionFolder, AMissionThatCannotBeReadIsTriedAgain) {
  box_.Write("m/a.mis", "[MAIN]\n  army 1\n[Wing]\n[NStationary]\n");
  List("m");
  test::FailSteps(world_.Services.Files, "");
  LoadMission(world_.Doc, world_.Services, 0);
  const Mission& mission = world_.Doc.Missions[0];
  ASSERT_EQ(world_.Log.size(), 1U);
  EXPECT_TRUE(world_.Log[0].ends_with("disk fullLoadMission"));
  EXPECT_FALSE(mission.Loaded || world_.Busy);
  LineArray lines;
  EXPECT_FALSE(BuildMissionFile(world_.Doc, world_.Services, lines, 0, {}));
  EXPECT_TRUE(mission.Lines.empty() && lines.empty());

  world_.Services.Files.BeforeStep = [&](const FileStep&) { EXPECT_TRUE(world_.Busy); };
  LoadMission(world_.Doc, world_.Services, 0);
  EXPECT_TRUE(mission.Loaded && !world_.Busy);
  EXPECT_EQ(mission.Army, "1");
  EXPECT_EQ(box_.Read("m/a.mis"), "[MAIN]\r\n  army 1\r\n[Wing]\r\n[NStationary]\r\n");
  EXPECT_EQ(world_.CloseRequests, 0);
}

}  // namespace
}  // namespace rws
