#include "mission/update.h"

#include <gtest/gtest.h>

#include <utility>

#include "services/faults.h"
#include "services/paths.h"
#include "session/doors.h"
#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"

namespace rws {
namespace {

using test::ReadLines;
using test::World;

constexpr char kMission[] =
    "[MAIN]|  TIME 12.0|[Wing]|  r0100|  r0110|[r0100]|  Planes 1|  Skill 1|  Class air.P_51|"
    "  Fuel 100|  weapons def|  StartTime 5.0|[r0100_Way]|  T 1 2 3 4 &0|[r0110]|  Planes 1|"
    "  Skill 1|  Class air.X|  Fuel 100|  weapons def|[r0110_Way]|  T 1 2 3 4 &0|  L 1 2 3 4 &0|"
    "[BornPlace]|  1 3000 5 6|[end]";

TEST(MissionChanged, IsLooseOnPurpose) {
  using M = Mission&;
  struct Row {
    const char* Name;
    bool Changed;
    void (*Do)(M own, M shadow);
  };
  const Row rows[] = {
      {"nothing", false, [](M, M) {}},
      {"waypoint type", false, [](M own, M) { own.Flights[0].Waypoints[0].Type = "x"; }},
      {"waypoint line", false, [](M own, M) { own.Flights[0].Waypoints[0].Line = "x"; }},
      {"waypoint place", false, [](M own, M) { own.Flights[0].Waypoints[0].X = 9; }},
      {"slot above Planes", true, [](M own, M) { own.Flights[0].PlaneSlots[3].Skin = "0"; }},
      {"StartTime, other spelling", false, [](M own, M) { own.Flights[0].StartTime = "5"; }},
      {"StartTime, empty to zero", false, [](M own, M) { own.Flights[1].StartTime = "0.0"; }},
      {"StartTime", true, [](M own, M) { own.Flights[0].StartTime = "6"; }},
      {"Fuel, other spelling", true, [](M own, M) { own.Flights[0].Fuel = "100.0"; }},
      {"Name, other case", true, [](M own, M) { own.Flights[0].Name = "R0100"; }},
      {"ArmyWord", false, [](M own, M) { own.Flights[0].ArmyWord = "9"; }},
      {"LastWaypoint", false, [](M own, M) { own.Flights[0].LastWaypoint = "9"; }},
      {"Shown", false, [](M own, M) { own.Flights[0].Shown = true; }},
      {"home base army", true, [](M own, M) { own.BornPlaces[0].Army = 2; }},
      {"home base radius", true, [](M own, M) { own.BornPlaces[0].Radius = 2; }},
      {"home base rest", false,
       [](M own, M) {
         own.BornPlaces[0] = {1, 3000, {"P"}, 7, 8};
       }},
      {"a line", true, [](M own, M) { own.Lines.Set(3, "  R0100"); }},
      {"TimeConstant", true, [](M own, M) { own.TimeConstant = 1; }},
      {"WeaponsConstant", true, [](M own, M) { own.WeaponsConstant = 1; }},
      {"MapPath, BaseName", false, [](M own, M) { own.MapPath = own.BaseName = "x"; }},
      // What the shadow lacks ends the comparison, whatever else differs.
      {"flight more", false, [](M own, M) { own.Flights.emplace_back(), own.Army = "2"; }},
      {"waypoint more", false,
       [](M own, M) { own.Flights[0].Fuel = "1", own.Flights[1].Waypoints.emplace_back(); }},
      {"home base more", false,
       [](M own, M) { own.BornPlaces.emplace_back(), own.Flights[0].Fuel = "1"; }},
      {"line more", false, [](M own, M) { own.Lines.Add("x"), own.Flights[0].Fuel = "1"; }},
      {"flight more in both, one edited", true,
       [](M own, M seen) { own.Flights.emplace_back().Fuel = "1", seen.Flights.emplace_back(); }},
      {"last flight removed", true, [](M own, M) { own.Flights.pop_back(); }},
      {"first flight removed", true, [](M own, M) { own.Flights.erase(own.Flights.begin()); }},
      {"waypoint less", false, [](M, M shadow) { shadow.Flights[0].Waypoints.emplace_back(); }},
      {"home base less", false, [](M, M shadow) { shadow.BornPlaces.emplace_back(); }},
      {"line less", false, [](M, M shadow) { shadow.Lines.Add("x"); }},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Name);
    World world;
    Mission& own = ReadLines(world, kMission);
    row.Do(own, world.Doc.MissionShadow[0]);
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
  using M = Mission;
  using F = Flight;
  using S = PlaneSlot;
  Mission& mission = ReadLines(world, kMission);
  EachCounts({&M::Army, &M::BriefSoundLine, &M::CloudHeight, &M::CloudType, &M::MapName,
              &M::FileName, &M::DirPath, &M::Player, &M::PlayerNum, &M::BriefSound, &M::Time},
             mission, world);
  EachCounts({&F::Fuel, &F::Name, &F::Status, &F::Planes, &F::OnlyAI, &F::Parachute, &F::Class,
              &F::Skill, &F::Weapons},
             mission.Flights[0], world);
  EachCounts({&S::NumberOn, &S::NoseArt, &S::Pilot, &S::Reserved, &S::Skill, &S::Skin},
             mission.Flights[1].PlaneSlots[3], world);
  EachCounts({&Waypoint::Alt, &Waypoint::Marker, &Waypoint::Speed}, mission.Flights[1].Waypoints[1],
             world);
}

TEST(SetModify, FollowsTheDifference) {
  World world;
  Mission& mission = ReadLines(world, "[MAIN]|  army 1|[Wing]|[end]");
  const auto expect = [&](const char* what, bool lit) {
    SCOPED_TRACE(what);
    SetModify(world);
    EXPECT_EQ(world.Lit, lit);
    EXPECT_EQ(mission.Modified, lit);
  };
  mission.Army = "2";
  world.Doc.bLoading = true;
  expect("while loading", false);
  world.Doc.bLoading = world.Up = false;
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
  EXPECT_EQ(test::Joined(world.Log), "Subscript out of rangeSetModify");
}

TEST(UpdateChanges, AttemptsTheRestAfterAFailure) {
  test::Sandbox box;
  World world(box.Path());
  world.Prefs.bBackup = false;
  for (const std::string name : {"a.mis", "b.mis", "c.mis", "d.mis"}) {
    Mission mission;
    mission.FileName = name;
    mission.DirPath = box.Path() + kSeparator;
    mission.Lines = LineArray::FromFile(test::CrlfText("[MAIN]|  army 1|[Wing]|[x_Way]|[e]"));
    mission.Loaded = name != "a.mis";  // that one cannot be built
    mission.Modified = name != "d.mis";
    world.Doc.Missions.push_back(mission);
    box.Write(name, "old");
  }
  world.Lit = true;
  world.Services.Files.BeforeStep = [&](const FileStep& step) {
    if (step.Action == "read" && step.Path == box.Path("b.mis"))
      throw FileFault(fault::FileIo, step.Action, step.Path, "device error");
  };
  world.Script.Expect("Update Failed. Reason unknown. Update aborted.");
  world.Script.Expect("Update fail. Reason unknown. Mission file restored.");
  EXPECT_FALSE(UpdateChanges(world.Doc, world.Services, world.Prefs, world.Shown));
  EXPECT_EQ(box.Read("a.mis") + box.Read("b.mis") + box.Read("d.mis"), "oldoldold");
  EXPECT_EQ(box.Read("c.mis"), test::CrlfText("[MAIN]|  army 1|[Wing]|[e]"));
  EXPECT_FALSE(world.Lit);
  for (const auto& mission : world.Doc.Missions) EXPECT_FALSE(mission.Modified);
  for (const auto& shown : world.Script.Boxes) {
    EXPECT_TRUE(shown.Icon == Icon::Critical && shown.Buttons == Buttons::Ok);
    EXPECT_EQ(shown.Title, "RWS Edit");
  }

  world.Doc.Missions.erase(world.Doc.Missions.begin(), world.Doc.Missions.begin() + 2);
  world.Doc.Missions[0].Modified = true;
  EXPECT_TRUE(UpdateChanges(world.Doc, world.Services, world.Prefs, world.Shown));
  box.Remove("c.mis");
  world.Doc.Missions[0].Modified = true;
  world.Script.Expect("could not be restored");  // no file is there that could be called restored
  EXPECT_FALSE(UpdateChanges(world.Doc, world.Services, world.Prefs, world.Shown));
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
      {kSaveAsk, LeaveBy::Key, Answer::Yes, false, false, true, false},
      {kSaveAsk, LeaveBy::Mouse, Answer::No, true, true, false, true},
      {kSaveAsk, LeaveBy::Key, Answer::Cancel, true, false, false, false},
      {kSaveAlways, LeaveBy::Mouse, {}, true, true, true, false},
      {kSaveAlways, LeaveBy::Key, {}, false, false, true, false},
      {kSaveNever, LeaveBy::Mouse, {}, true, true, false, true},
      {kSaveNever, LeaveBy::Key, {}, true, false, false, false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE("row " + std::to_string(&row - rows));
    World world;
    Mission& mission = ReadLines(world, kMission);
    world.Prefs.SavePromptMode = row.Mode;
    bool updated = false;
    const auto leave = [&] {
      return WarnSave(world.Doc, world.Services, world.Prefs, row.By, [&] {
        updated = true;
        return row.Written;
      });
    };
    EXPECT_TRUE(leave());
    EXPECT_FALSE(updated);
    mission.Modified = true;
    if (row.Asked)
      world.Script.Expect("Do you wish to save the changes to this mission?", *row.Asked);
    EXPECT_EQ(leave(), row.Leaves);
    EXPECT_EQ(updated, row.Updated);
    EXPECT_EQ(mission.Loaded, !row.Dropped);
    EXPECT_EQ(mission.Lines.empty() && mission.Flights.empty() && mission.Time.empty(),
              row.Dropped);
    for (const auto& box : world.Script.Boxes)
      EXPECT_TRUE(box.Buttons == Buttons::YesNoCancel && box.Icon == Icon::Question);
  }
}

}  // namespace
}  // namespace rws
