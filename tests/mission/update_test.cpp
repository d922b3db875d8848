#include "mission/update.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "mission/fields.h"
#include "mission/reader.h"
#include "services/paths.h"
#include "services/text.h"
#include "session/doors.h"
#include "tests/support/doubles.h"
#include "tests/support/failing_step.h"
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
      {"StartTime, other spelling", false, [](M own, M) { own.Flights[0].StartTime = "5"; }},
      {"StartTime, empty to zero", false, [](M own, M) { own.Flights[1].StartTime = "0.0"; }},
      {"Fuel, other spelling", true, [](M own, M) { own.Flights[0].Fuel = "100.0"; }},
      {"Name, other case", true, [](M own, M) { own.Flights[0].Name = "R0100"; }},
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

void Alter(std::string& text) { text.insert(0, "9"); }
void Alter(LineArray& lines) { lines.empty() ? lines.Add("x") : lines.Set(lines.size() - 1, "y"); }
void Alter(std::vector<std::string>& texts) { texts.emplace_back(); }
void Alter(bool& value) { value = !value; }
template <class Number>
requires std::is_arithmetic_v<Number>
void Alter(Number& value) { ++value; }

/** Names of the fields of a record of the mission that count when they alone are altered. */
template <class Record>
std::string CountedFields(const World& world, Record& record) {
  std::string names;
  ForEachField<Record>([&](const auto& field) {
    auto& value = record.*field.Pointer;
    if constexpr (requires { Alter(value); }) {
      const auto old = value;
      Alter(value);
      if (MissionChanged(world.Doc, 0)) names.append(field.Name).append(" ");
      value = old;
      EXPECT_FALSE(MissionChanged(world.Doc, 0)) << field.Name;
    }
  });
  return names;
}

TEST(MissionChanged, CountsTheseFields) {
  World world;
  Mission& mission = ReadLines(world, kMission);
  Flight& last = mission.Flights[1];
  EXPECT_EQ(CountedFields(world, mission),
            "DirPath FileName MapName Time CloudHeight CloudType Army Player PlayerNum Lines "
            "BriefSoundLine BriefSound TimeConstant WeaponsConstant ");
  EXPECT_EQ(CountedFields(world, last),
            "Fuel Planes Skill Weapons StartTime OnlyAI Class Parachute Name Status ");
  // A slot above `Planes` counts as well.
  EXPECT_EQ(CountedFields(world, last.PlaneSlots[3]),
            "Skill Skin NoseArt Pilot Reserved NumberOn ");
  EXPECT_EQ(CountedFields(world, last.Waypoints[1]), "Alt Speed Marker ");
  EXPECT_EQ(CountedFields(world, mission.BornPlaces[0]), "Army Radius ");
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
  test::FailSteps(world.Services.Files, "read", "b.mis");
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

constexpr char kRead[] = "[MAIN]|  army 1|[Wing]|[x_Way]|[e]";
constexpr char kWritten[] = "[MAIN]|  army 1|  player r01|[Wing]|[e]";

/** A mission that was read and edited, with backups off. */
struct Edited {
  explicit Edited(const std::string& bytes = test::CrlfText(kRead)) : World_(Box.Path("app")) {
    Box.MakeFolder("app");
    World_.Prefs.bBackup = false;
    World_.Doc.MissionFiles = {Box.Write("a.mis", bytes)};
    LoadMissionArray(World_.Doc, World_.Services);
    LoadMission(World_.Doc, World_.Services, 0);
    Record().Player = "r01";
    Record().Modified = true;
  }
  Mission& Record() { return World_.Doc.Missions[0]; }
  bool Save() { return SaveMission(World_.Doc, World_.Services, World_.Prefs, World_.Shown, 0); }
  bool Update() { return UpdateChanges(World_.Doc, World_.Services, World_.Prefs, World_.Shown); }

  test::Sandbox Box;
  World World_;
};

TEST(UpdateChanges, AsksBeforeItReplacesWhatAnotherProgramWrote) {
  struct Row {
    const char* What;
    std::string Before, Now;
    bool Asks;
  };
  const std::string read = test::CrlfText(kRead), other = test::CrlfText("[MAIN]|  army 2|[Wing]");
  const std::string bare = Replace(read, "\r\n", "\n");
  const Row rows[] = {{"as read", read, read, false},
                      {"other lines", read, other, true},
                      {"same size", read, Replace(read, "army 1", "army 2"), true},
                      {"emptied", read, "", true},
                      {"no line end at the end", read, read.substr(0, read.size() - 2), false},
                      {"bare line feeds again", bare, bare, false}};
  for (const auto& row : rows)
    for (const auto answer : {Answer::Yes, Answer::No})
      for (const bool save : {false, true}) {
        SCOPED_TRACE(row.What + std::string(answer == Answer::Yes ? ", Yes" : ", No"));
        Edited at(row.Before);
        at.Box.Write("a.mis", row.Now);
        if (row.Asks) at.World_.Script.Expect("changed \"" + at.Box.Path("a.mis"), answer);
        const bool written = !row.Asks || answer == Answer::Yes;
        EXPECT_EQ(save ? at.Save() : at.Update(), written);
        EXPECT_TRUE(at.Box.Read("a.mis") == (written ? test::CrlfText(kWritten) : row.Now));
        // What the question was about is kept, also with backups off.
        EXPECT_EQ(at.Box.Read("app/RWS Backup/a.mis.bak"),
                  row.Asks && written ? row.Now : "<none>");
        EXPECT_EQ(at.Record().NotWritten, !written);
        EXPECT_FALSE(at.Record().Modified);
        EXPECT_FALSE(at.World_.Services.Files.FileExists(at.Box.Path("app/$$$TEMP")));
        if (!row.Asks) continue;
        const auto& box = at.World_.Script.Boxes.at(0);
        EXPECT_TRUE(box.Buttons == Buttons::YesNo && box.Icon == Icon::Exclamation);
        const auto stamp = at.World_.Services.Files.Stamp(at.Box.Path("a.mis"));
        if (!written) {
          EXPECT_NE(box.Text.find(TimeText(FileSystem::LocalTime(stamp))), box.Text.npos);
        }
      }
}

TEST(UpdateChanges, KnowsItsOwnFileAfterAFailureBehindIt) {
  for (const bool gone : {false, true}) {
    SCOPED_TRACE(gone);
    Edited at;
    if (gone) at.Box.Remove("a.mis");
    test::FailSteps(at.World_.Services.Files, "sync folder", "a.mis");
    at.World_.Script.Expect(gone ? "could not be written" : "could not be restored");
    EXPECT_FALSE(gone ? at.Save() : at.Update());
    EXPECT_EQ(at.Box.Read("a.mis"), test::CrlfText(kWritten));
    at.World_.Services.Files.BeforeStep = nullptr;
    at.Record().Player = "r02";
    EXPECT_TRUE(at.Save()) << "unasked";
  }
}

TEST(SaveMission, WritesAgainAndAgainAndWhereTheFileHasGone) {
  Edited at;
  EXPECT_TRUE(at.Save());
  at.Record().Player = "r02";
  EXPECT_TRUE(at.Save()) << "its own writing is no change from outside";
  at.Box.Remove("a.mis");
  at.Record().Player = "r01";
  EXPECT_TRUE(at.Save());
  EXPECT_EQ(at.Box.Read("a.mis"), test::CrlfText(kWritten));
  EXPECT_EQ(at.Box.Names("app"), "");
  at.Box.Remove("a.mis");
  test::FailSteps(at.World_.Services.Files, "");
  at.World_.Script.Expect("\"" + at.Box.Path("a.mis") + "\" could not be written.\n\n");
  EXPECT_FALSE(at.Save());
  EXPECT_TRUE(at.Record().NotWritten);
  EXPECT_EQ(at.Box.Names(), "app");
}

}  // namespace
}  // namespace rws
