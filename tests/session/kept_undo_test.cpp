#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "mission/kept_merge.h"
#include "mission/kept_reader.h"
#include "services/text.h"
#include "session/doors.h"
#include "session/lines_rule.h"
#include "session/recording.h"
#include "session/saving.h"
#include "tests/support/session_desk.h"

namespace rws::test {
namespace {

constexpr char kSettings[] =
    "[MAIN]|  army 1|[Wing]|  r0100|  r0101|[r0100]|  Planes 1|[r0100_Way]|"
    "  TAKEOFF_005 54195.82 176315.53 0 0 &0|  TRIGGERS 0 7 20 0|  TAKEOFF 1 2 3 4 &0|"
    "  TRIGGERS 0 10 20 0|\tNORMFLY_404 81566.39 168677.4 1500.00 350.00 r0101 0 &1 F3|"
    " TRIGGERS  10 0 90 7 500|  NORMFLY 1.00 2.00 500 300 &0|  LANDING_104 5 6 0 0 &0|"
    "[r0101]|  unknown 1|  spawn0 9_Static|  Planes 1|[r0101_Way]|  NORMFLY_401 1 2 3 4 &0|  "
    "TRIGGERS 1 1 1 1 1|"
    "  NORMFLY 5 6 7 8 &0|[NStationary]|[BornPlace]|  1 3000 121601 74883|  2 5000 1 2|"
    "[BornPlace0]|  Bf-109E-4 10 28xSC50|  + 2xSC250|  Hs-129 0|  Ju-87B-2 -1 default 4xSC50|"
    "[BornPlaceCountries0]|  de|[BornPlace1]|  Hs-129 5|  La-5|[Target]";

/** A mission whose lines are kept, edited by chance. */
class KeptUndo : public ::testing::Test {
 protected:
  void Open(const std::string& text) {
    Desk.Box.Write("in/a.mis", text);
    Desk.World.Doc.UntouchedOf[Desk.Path("a")] = UntouchedLines::Keep;
    Desk.Run("reread go=a");
  }
  Mission& Now() { return Desk.World.Doc.Missions[Desk.Row("a")]; }
  std::string Written() {
    LineArray lines;
    std::string reason;
    return BuildKeptFile(Desk.World.Doc, Desk.World.Services, Now(), lines, &reason)
               ? lines.FileText()
               : reason;
  }
  std::size_t Random(std::size_t below) { return engine_() % below; }

  template <class Value>
  void Shuffle(std::vector<Value>& values) {
    const std::size_t at = Random(values.size() + 1), from = Random(values.size() + 1);
    if (at >= values.size() || from >= values.size() || at == from) return;
    const auto place = [&](std::size_t i) {
      return values.begin() + static_cast<std::ptrdiff_t>(i);
    };
    const Value moved = values[from];
    values.erase(place(from));
    if (Random(2)) values.insert(place(at), moved);
  }
  void EditSomething(std::size_t what) {
    auto& flights = Now().Flights;
    auto& planes = Now().BornPlaces[Random(2)].Planes;
    Flight* flight = flights.empty() ? nullptr : &flights[Random(flights.size())];
    if (what == 0 && flights.size() > 1) flights.erase(flights.begin());
    if (what == 7 && flights.size() > 1) std::swap(flights[0].Name, flights[1].Name);
    if (what == 1) Shuffle(planes);
    if (what == 2 && Random(4) == 0) planes.clear();
    if (what == 3 && flight) Shuffle(flight->Waypoints);
    if (!flight || flight->Waypoints.empty()) return;
    Waypoint& waypoint = flight->Waypoints[Random(flight->Waypoints.size())];
    if (what == 4) waypoint.Type = Random(2) ? "NORMFLY" : "LANDING";
    if (what == 5) waypoint.Alt = std::to_string(Random(900));
    if (what == 6) waypoint.Marker = "&1";
  }

  SessionDesk Desk{{"a"}};

 private:
  std::mt19937 engine_{20261123};
};

TEST_F(KeptUndo, GivesTheSameBytesWheneverAStepIsSaved) {
  const std::string plain = CrlfText(kSettings);
  // No edit can spell these again.
  const std::string odd =
      Replace(Replace(plain, "  TAKEOFF 1 2 3 4 &0", "TAKEOFF 1 2 3 4 // as it is"), "1500.00 350",
              "1500.5  350");
  constexpr int kRounds = 40;
  for (int round = 0; round < kRounds; ++round) {
    const std::string& start = round % 2 ? odd : plain;
    Open(start);
    std::vector<std::string> texts{Written()};
    std::string trace = "round " + std::to_string(round);
    const auto saveAtTimes = [&] {
      if (Random(3) > 0) return;
      Desk.Run("save");
      trace += " save";
    };
    for (int step = 0; step < 6; ++step) {
      const std::size_t what = Random(8), before = Desk.World.History.Done;
      CloseStep(Desk.World);
      Edit(Desk.World, {nullptr, "Edit"}, [&] { EditSomething(what); });
      if (Desk.World.History.Done == before) continue;
      texts.push_back(Written());
      trace += " " + std::to_string(what);
      saveAtTimes();
    }
    for (std::size_t left = texts.size(); left-- > 1;) {
      Desk.Run("undo");
      trace += " undo";
      if (left == 1 || start == plain) {
        ASSERT_EQ(Written(), texts[left - 1]) << trace << "\n" << texts[left];
      }
      saveAtTimes();
    }
    Desk.Run("save");
    ASSERT_EQ(Desk.Box.Read("in/a.mis"), start) << trace;
  }
}

TEST_F(KeptUndo, KnowsWhatAnAircraftHadBeforeItWasAddedAnew) {
  const std::string start = CrlfText(kSettings);
  const auto planes = [&]() -> std::vector<std::string>& { return Now().BornPlaces[0].Planes; };
  const auto edit = [&](const std::function<void()>& change) {
    CloseStep(Desk.World);
    Edit(Desk.World, {nullptr, "Edit"}, change);
    Desk.Run("save");
  };
  Open(start);
  edit([&] { planes().erase(planes().begin()); });
  const std::string removed = Desk.Box.Read("in/a.mis");
  edit([&] { planes().insert(planes().begin(), "Bf-109E-4"); });
  const std::string bare = Replace(start, " 10 28xSC50\r\n  + 2xSC250", "");
  EXPECT_EQ(Desk.Box.Read("in/a.mis"), bare);
  for (const auto& [turn, text] : {std::pair{"undo undo", start}, {"redo redo", bare}}) {
    Desk.Run(std::string(turn) + " save");
    EXPECT_EQ(Desk.Box.Read("in/a.mis"), text) << turn;
  }
  Desk.Run("undo save");
  EXPECT_EQ(Desk.Box.Read("in/a.mis"), removed);
  const auto read = [&](UntouchedLines rule) {
    Desk.World.Doc.UntouchedOf[Desk.Path("a")] = rule;
    FollowLinesRule(Desk.World, Desk.Row("a"));
  };
  read(UntouchedLines::Anew);
  Desk.Run("undo");
  read(UntouchedLines::Keep);
  Desk.Run("save");
  EXPECT_EQ(Desk.Box.Read("in/a.mis"), start);
}

TEST_F(KeptUndo, LeavesWhatOthersWroteSince) {
  struct Row {
    std::function<void(Mission&)> Edit;
    std::vector<std::pair<const char*, const char*>> Others;
    /** What they write is gone with the edit. */
    bool GoesAlong = false;
  };
  const auto point = [](Mission& mission) -> Waypoint& { return mission.Flights[0].Waypoints[3]; };
  const auto route = [](Mission & mission) -> auto& { return mission.Flights[0].Waypoints; };
  using Change = std::pair<const char*, const char*>;
  const Change remark = {" 500 300 &0", " 500.75 300 &0 // theirs"};
  const Change added = {"  LANDING_104",
                        "  NORMFLY_403 1 2 3 4 &0\r\n  TRIGGERS 5 5 5 5 5\r\n  LANDING_104"};
  const std::string second = CrlfText(
      "[r0101]|  Planes 1|[r0101_Way]|  NORMFLY_401 1 2 3 4 &0|  TRIGGERS 1 1 1 1 1|"
      "  NORMFLY 5 6 7 8 &0");
  const std::string moved = second + "[r0100]\r\n";
  const Row rows[] = {
      {[](Mission& mission) { mission.Flights.erase(mission.Flights.begin()); }, {remark}, true},
      {[&](Mission& mission) { route(mission).erase(route(mission).begin() + 3); }, {remark}, true},
      {[&](Mission& mission) { point(mission).Type = "LANDING"; }, {remark}},
      {[&](Mission& mission) { point(mission).Type = "LANDING"; }, {added}},
      {[&](Mission& mission) { route(mission).erase(route(mission).begin() + 3); }, {added}},
      {[&](Mission& mission) { std::swap(route(mission)[1], route(mission)[3]); },
       {added, {" 5 6 0 0", " 5 6 70 0"}}},
      {[&](Mission& mission) {
         route(mission).insert(route(mission).begin() + 2, ReadKeptWaypoint("NORMFLY 7 7 7 7"));
       },
       {{" 7 7 7 7", " 7 7 9 7"}, {" 5 6 0 0", " 5 6 70 0"}}},
      {[&](Mission& mission) {
         point(mission).X = 7;
         point(mission).Line = Replace(point(mission).Line, " 1.00 ", " 7.00 ");
       },
       {remark}},
      {[](Mission& mission) {
         mission.BornPlaces[0].Planes.erase(mission.BornPlaces[0].Planes.begin());
       },
       {{"  Hs-129 0", "  Hs-129 1\r\n  + bb"}, {" 4xSC50\r\n", " 4xSC50\r\n  D 5\r\n"}}},
      {[](Mission& mission) {
         auto& planes = mission.BornPlaces[0].Planes;
         planes.push_back("Hs-129");
         planes.insert(planes.begin(), "bf-109e-4");
       },
       {{"  Hs-129 0", "  Hs-129 1\r\n  D 5"}}},
      {[](Mission& mission) {
         mission.BornPlaces[0].Planes.pop_back();
         mission.BornPlaces[1].Planes.clear();
         mission.BornPlaces[1].X = 7;
       },
       {{"[BornPlace]\r\n", "[BornPlace]\r\n  2 9 5 6\r\n"},
        {"[BornPlace1]", "[BornPlace2]"},
        {"[BornPlace0]", "[BornPlace0]\r\n  D 5\r\n[BornPlace1]"},
        {"Countries0", "Countries1"}}},
      {[](Mission& mission) {
         for (std::size_t i = 0; i < mission.Lines.size(); ++i)
           mission.Lines.Set(
               i, Replace(Replace(mission.Lines[i], "  de", "  ru"), "Target", "Bridge"));
       },
       {{"[MAIN]\r\n", "[MAIN]\r\n  theirs 1\r\n"}, {"Hs-129 5", "Hs-129 6"}}},
      {[](Mission& mission) {
         mission.Flights[0].Name = "r0102";
         mission.Flights[1].Name = "r0100";
       },
       {{"[Wing]\r\n", "[Wing]\r\n  x0100\r\n"},
        {"[NStationary]", "[x0100]\r\n  Planes 1\r\n[NStationary]"}}},
      {[&](Mission& mission) { point(mission).Alt = "900"; },
       {{"  r0100\r\n  r0101\r\n", "  r0101\r\n  r0100\r\n"},
        {second.c_str(), ""},
        {"[r0100]\r\n", moved.c_str()}}}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Others[0].second);
    const auto withOthers = [&](std::string text) {
      for (const auto& [theirs, now] : row.Others) text = Replace(text, theirs, now);
      return text;
    };
    const std::string start = CrlfText(kSettings);
    for (const bool undone : {false, true}) {
      if (row.GoesAlong && !undone) continue;
      Open(start);
      CloseStep(Desk.World);
      Edit(Desk.World, {nullptr, "Edit"}, [&] { row.Edit(Now()); });
      Desk.Run(undone ? "undo" : "save");
      const std::string theirs = withOthers(Desk.Box.Read("in/a.mis"));
      Desk.Box.Write("in/a.mis", theirs);
      Desk.Run(undone ? "reread go=a redo save undo save" : "reread go=a undo save");
      EXPECT_EQ(Desk.Box.Read("in/a.mis"), withOthers(start)) << undone;
      if (undone) continue;
      Desk.Run("redo save");
      EXPECT_EQ(Desk.Box.Read("in/a.mis"), theirs);
    }
  }
}

TEST_F(KeptUndo, AFlightComesBackFromUnderACopyOfItsName) {
  const std::string start = CrlfText(kSettings);
  Open(start);
  const auto edit = [&](const std::function<void()>& change) {
    CloseStep(Desk.World);
    Edit(Desk.World, {nullptr, "Edit"}, change);
    Desk.Run("save");
  };
  edit([&] { Now().Flights.pop_back(); });
  edit([&] {
    Now().Flights.push_back(Now().Flights[0]);
    Now().Flights[1].Name = "r0101";
  });
  Desk.Run("undo undo save");
  EXPECT_EQ(Desk.Box.Read("in/a.mis"), start);
}

TEST_F(KeptUndo, GivesEachFlightItsOwnLinesWhenAReloadIsTakenBack) {
  const std::string start = CrlfText(kSettings);
  const std::size_t second = start.find("[r0101]"), end = start.find("[NStationary]");
  std::string moved = Replace(start, "  r0100\r\n  r0101", "  r0101\r\n  r0100");
  moved.erase(second, end - second).insert(start.find("[r0100]"), start, second, end - second);
  for (const auto& others : {moved, Replace(moved, "r0101", "x0101")}) {
    Open(start);
    Edit(Desk.World, {nullptr, "Edit"}, [&] { Now().Army = "2"; });
    Desk.Box.Write("in/a.mis", others);
    ASSERT_TRUE(RevertOne(Desk.World, Desk.Row("a"), "Reload"));
    Desk.Run("undo undo save");
    EXPECT_EQ(Desk.Box.Read("in/a.mis"), start);
  }
}

}  // namespace
}  // namespace rws::test
