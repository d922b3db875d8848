#include "mission/update.h"

#include <gtest/gtest.h>

#include <utility>

#include "services/faults.h"
#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"

namespace rws {
namespace {

using test::Crlf;
using test::ReadInto;
using test::World;
using Lines = std::vector<std::string>;

const Lines kMission = {"[MAIN]",           "  TIME 12.0",    "[Wing]",         "  r0100",
                        "  r0110",          "[r0100]",        "  Planes 1",     "  Skill 1",
                        "  Class air.P_51", "  Fuel 100",     "  weapons def",  "  StartTime 5.0",
                        "[r0100_Way]",      "  T 1 2 3 4 &0", "[r0110]",        "  Planes 1",
                        "  Skill 1",        "  Class air.X",  "  Fuel 100",     "  weapons def",
                        "[r0110_Way]",      "  T 1 2 3 4 &0", "  L 1 2 3 4 &0", "[BornPlace]",
                        "  1 3000 5 6",     "[end]"};

TEST(MissionChanged, ComparesWhatTheTableTells) {
  using Edit = void (*)(Mission & own, Mission & shadow);
  struct Row {
    const char* Name;
    bool Changed;
    Edit Do;
  };
  const Row rows[] = {
      {"nothing", false, [](Mission&, Mission&) {}},
      {"waypoint type, place, distance and line", false,
       [](Mission& own, Mission&) {
         auto& waypoint = own.Flights[0].Waypoints[0];
         waypoint.Type = waypoint.Line = "x";
         waypoint.X = waypoint.Y = waypoint.Dist = 9;
       }},
      {"slot above Planes", true,
       [](Mission& own, Mission&) { own.Flights[0].PlaneSlots[3].NumberOn = "0"; }},
      {"StartTime in another spelling", false,
       [](Mission& own, Mission&) { own.Flights[0].StartTime = "5"; }},
      {"StartTime empty to zero", false,
       [](Mission& own, Mission&) { own.Flights[1].StartTime = "0.0"; }},
      {"StartTime", true, [](Mission& own, Mission&) { own.Flights[0].StartTime = "6"; }},
      {"Fuel in another spelling", true,
       [](Mission& own, Mission&) { own.Flights[0].Fuel = "100.0"; }},
      {"Name in another case", true, [](Mission& own, Mission&) { own.Flights[0].Name = "R0100"; }},
      {"ArmyWord, LastWaypoint, Shown", false,
       [](Mission& own, Mission&) {
         own.Flights[0].ArmyWord = own.Flights[0].LastWaypoint = "9";
         own.Flights[0].Shown = true;
       }},
      {"home base army", true, [](Mission& own, Mission&) { own.BornPlaces[0].Army = 2; }},
      {"home base radius", true, [](Mission& own, Mission&) { own.BornPlaces[0].Radius = 2; }},
      {"home base aircraft and place", false,
       [](Mission& own, Mission&) {
         own.BornPlaces[0] = {1, 3000, {"P-51"}, 7, 8};
       }},
      {"a line", true, [](Mission& own, Mission&) { own.Lines.Set(3, "  R0100"); }},
      {"TimeConstant", true, [](Mission& own, Mission&) { own.TimeConstant = 1; }},
      {"WeaponsConstant", true, [](Mission& own, Mission&) { own.WeaponsConstant = 1; }},
      {"MapPath, BaseName", false,
       [](Mission& own, Mission&) { own.MapPath = own.BaseName = "x"; }},
      // What the shadow lacks ends the comparison, whatever else differs.
      {"a flight more", false,
       [](Mission& own, Mission&) {
         own.Flights.emplace_back();
         own.Army = "2";
       }},
      {"a waypoint more", false,
       [](Mission& own, Mission&) {
         own.Flights[0].Fuel = "1";
         own.Flights[1].Waypoints.emplace_back();
       }},
      {"a home base more", false,
       [](Mission& own, Mission&) {
         own.BornPlaces.emplace_back();
         own.Flights[0].Fuel = "1";
       }},
      {"a line more", false,
       [](Mission& own, Mission&) {
         own.Lines.Add("x");
         own.Flights[0].Fuel = "1";
       }},
      {"a flight more in both, one edited", true,
       [](Mission& own, Mission& shadow) {
         own.Flights.emplace_back().Fuel = "1";
         shadow.Flights.emplace_back();
       }},
      {"the last flight removed", true, [](Mission& own, Mission&) { own.Flights.pop_back(); }},
      {"a flight removed before one with more waypoints", true,
       [](Mission& own, Mission&) { own.Flights.erase(own.Flights.begin()); }},
      {"a waypoint, home base and line less", false,
       [](Mission&, Mission& shadow) {
         shadow.Flights[0].Waypoints.emplace_back();
         shadow.BornPlaces.emplace_back();
         shadow.Lines.Add("x");
       }},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Name);
    World world;
    ReadInto(world, Crlf(kMission));
    row.Do(world.Doc.Missions[0], world.Doc.MissionShadow[0]);
    EXPECT_EQ(MissionChanged(world.Doc, 0), row.Changed);
  }
}

template <class Record, std::size_t N>
void EachCounts(std::string Record::*const (&fields)[N], Record& record, const World& world) {
  for (std::size_t i = 0; i < N; ++i) {
    SCOPED_TRACE(i);
    const std::string old = std::exchange(record.*fields[i], "other");
    EXPECT_TRUE(MissionChanged(world.Doc, 0));
    record.*fields[i] = old;
    EXPECT_FALSE(MissionChanged(world.Doc, 0));
  }
}

TEST(MissionChanged, EachTextFieldCounts) {
  World world;
  ReadInto(world, Crlf(kMission));
  Mission& mission = world.Doc.Missions[0];
  EachCounts({&Mission::Army, &Mission::BriefSoundLine, &Mission::CloudHeight, &Mission::CloudType,
              &Mission::MapName, &Mission::FileName, &Mission::DirPath, &Mission::Player,
              &Mission::PlayerNum, &Mission::BriefSound, &Mission::Time},
             mission, world);
  EachCounts({&Flight::Fuel, &Flight::Name, &Flight::Status, &Flight::Planes, &Flight::OnlyAI,
              &Flight::Parachute, &Flight::Class, &Flight::Skill, &Flight::Weapons},
             mission.Flights[0], world);
  EachCounts({&PlaneSlot::NumberOn, &PlaneSlot::NoseArt, &PlaneSlot::Pilot, &PlaneSlot::Reserved,
              &PlaneSlot::Skill, &PlaneSlot::Skin},
             mission.Flights[1].PlaneSlots[3], world);
  EachCounts({&Waypoint::Alt, &Waypoint::Marker, &Waypoint::Speed}, mission.Flights[1].Waypoints[1],
             world);
}

TEST(SetModify, FollowsTheDifference) {
  World world;
  ReadInto(world, Crlf({"[MAIN]", "  army 1", "[Wing]", "[end]"}));
  Mission& mission = world.Doc.Missions[0];
  const auto expect = [&](const char* what, bool lit) {
    SCOPED_TRACE(what);
    SetModify(world.Doc, world.Services);
    EXPECT_EQ(world.Lit, lit);
    EXPECT_EQ(mission.Modified, lit);
  };
  mission.Army = "2";
  world.Doc.bLoading = true;
  expect("while loading", false);
  world.Doc.bLoading = false;
  world.Up = false;
  expect("window not up", false);
  mission.HasBornPlace = true;
  expect("home bases are edited in a dialog above the window", true);
  mission.Army = "1";
  expect("the old value again", false);
  world.Up = true;
  mission.Army = "2";
  expect("window up", true);
  EXPECT_TRUE(world.Log.empty());

  world.Doc.CurMission = -1;
  expect("no mission: logged, all left as it was", true);
  EXPECT_EQ(world.Log, Lines{"Subscript out of rangeSetModify"});
}

class Updating : public testing::Test {
 protected:
  Updating() {
    world_.Doc.bBackup = false;
    for (const char* name : {"a", "b", "c", "d"}) {
      Mission mission;
      mission.FileName = std::string(name) + ".mis";
      mission.BaseName = name;
      mission.DirPath = box_.Path() + "/";
      mission.Lines = LineArray::FromFile(Crlf({"[MAIN]", "  army 1", "[Wing]", "[x_Way]", "[e]"}));
      mission.Loaded = mission.Modified = true;
      world_.Doc.Missions.push_back(mission);
      box_.Write(mission.FileName, std::string("old ") + name);
    }
    world_.Doc.Missions[3].Modified = false;
    world_.Lit = true;
  }

  test::Sandbox box_;
  World world_{box_.Path()};
};

TEST_F(Updating, WritesEveryModifiedMission) {
  EXPECT_TRUE(UpdateChanges(world_.Doc, world_.Services));
  const std::string written = Crlf({"[MAIN]", "  army 1", "[Wing]", "[e]"});
  for (const char* name : {"a.mis", "b.mis", "c.mis"}) EXPECT_EQ(box_.Read(name), written);
  EXPECT_EQ(box_.Read("d.mis"), "old d");
  EXPECT_FALSE(world_.Lit);
  for (const auto& mission : world_.Doc.Missions) EXPECT_FALSE(mission.Modified);
}

TEST_F(Updating, AttemptsTheRestAfterAFailure) {
  world_.Doc.Missions[0].Loaded = false;  // cannot be built
  world_.Services.Files.BeforeStep = [this](const FileStep& step) {
    if (step.Action == "read" && step.Path == box_.Path("b.mis"))
      throw FileFault(fault::FileIo, step.Action, step.Path, "device error");
  };
  world_.Script.Expect("Update Failed. Reason unknown. Update aborted.");
  world_.Script.Expect("Update fail. Reason unknown. Mission file restored.");
  EXPECT_FALSE(UpdateChanges(world_.Doc, world_.Services));
  EXPECT_EQ(box_.Read("a.mis"), "old a");
  EXPECT_EQ(box_.Read("b.mis"), "old b");
  EXPECT_EQ(box_.Read("c.mis"), Crlf({"[MAIN]", "  army 1", "[Wing]", "[e]"}));
  EXPECT_FALSE(world_.Lit);
  for (const auto& mission : world_.Doc.Missions) EXPECT_FALSE(mission.Modified);
  for (const auto& box : world_.Script.Boxes) {
    EXPECT_EQ(box.Icon, Icon::Critical);
    EXPECT_EQ(box.Buttons, Buttons::Ok);
    EXPECT_EQ(box.Title, "RWS Edit");
  }
}

TEST_F(Updating, AMissionFileThatIsGoneIsNotCalledRestored) {
  std::remove(box_.Path("a.mis").c_str());
  world_.Doc.Missions.resize(1);
  std::string told;
  world_.Services.Ask.MsgBox = [&](const std::string& text, Buttons, Icon, const std::string&) {
    told += text;
    return Answer::Ok;
  };
  EXPECT_FALSE(UpdateChanges(world_.Doc, world_.Services));
  EXPECT_NE(told, "");
  EXPECT_EQ(told.find("Mission file restored."), told.npos) << told;
}

TEST(WarnSave, LeavesBySavePromptMode) {
  struct Row {
    int Mode;
    LeaveBy By;
    std::optional<Answer> Asked;
    bool Written, Leaves, Updated, Dropped;
  };
  const Row rows[] = {
      {kSaveAsk, LeaveBy::Mouse, Answer::Yes, true, true, true, false},
      {kSaveAsk, LeaveBy::Mouse, Answer::Yes, false, false, true, false},
      {kSaveAsk, LeaveBy::Mouse, Answer::No, true, true, false, true},
      {kSaveAsk, LeaveBy::Mouse, Answer::Cancel, true, false, false, false},
      {kSaveAsk, LeaveBy::Key, Answer::Yes, true, true, true, false},
      {kSaveAsk, LeaveBy::Key, Answer::No, true, true, false, true},
      {kSaveAsk, LeaveBy::Key, Answer::Cancel, true, false, false, false},
      {kSaveAlways, LeaveBy::Mouse, {}, true, true, true, false},
      {kSaveAlways, LeaveBy::Key, {}, false, false, true, false},
      {kSaveNever, LeaveBy::Mouse, {}, true, true, false, true},
      {kSaveNever, LeaveBy::Key, {}, true, false, false, false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE("row " + std::to_string(&row - rows));
    World world;
    ReadInto(world, Crlf(kMission));
    world.Doc.SavePromptMode = row.Mode;
    bool updated = false;
    const auto leave = [&] {
      return WarnSave(world.Doc, world.Services, row.By, [&] {
        updated = true;
        return row.Written;
      });
    };
    EXPECT_TRUE(leave());
    EXPECT_FALSE(updated);
    world.Doc.Missions[0].Modified = true;
    if (row.Asked)
      world.Script.Expect("Do you wish to save the changes to this mission?", *row.Asked);
    EXPECT_EQ(leave(), row.Leaves);
    EXPECT_EQ(updated, row.Updated);
    EXPECT_EQ(world.Doc.Missions[0].Loaded, !row.Dropped);
    world.Script.AllAsked();
    if (row.Asked) {
      EXPECT_EQ(world.Script.Boxes.at(0).Buttons, Buttons::YesNoCancel);
      EXPECT_EQ(world.Script.Boxes.at(0).Icon, Icon::Question);
    }
  }
}

TEST(DropEdits, MakesTheMissionUnread) {
  World world;
  ReadInto(world, Crlf(kMission));
  Mission& mission = world.Doc.Missions[0];
  mission.FileName = mission.DirPath = mission.Army = "edited";
  mission.Modified = true;
  DropEdits(world.Doc, 0);
  EXPECT_EQ(mission.FileName, "test.mis");
  EXPECT_EQ(mission.BaseName, "test");
  EXPECT_EQ(mission.DirPath, "/");
  EXPECT_EQ(mission.Army + mission.Time, "");
  EXPECT_FALSE(mission.Loaded || mission.Modified || mission.HasBornPlace);
  EXPECT_TRUE(mission.Lines.empty() && mission.Flights.empty() && mission.BornPlaces.empty());
}

}  // namespace
}  // namespace rws
