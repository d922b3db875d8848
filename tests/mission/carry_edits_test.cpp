#include "mission/carry_edits.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>

#include "mission/kept_merge.h"
#include "mission/kept_reader.h"
#include "mission/references.h"
#include "mission/writer.h"
#include "services/text.h"
#include "tests/support/doubles.h"

namespace rws::test {
namespace {

using std::string;

const string kText = CrlfText(
    "[MAIN]|  MAP a/load.ini|  TIME 12.0|[Wing]|  r0100|  r0101|[r0100]|  Planes 1|  Skill 1|  "
    "Skill0 2|"
    "  Class air.A|  Fuel 100|  weapons none|[r0100_Way]|  TAKEOFF_001 1.00 2.00 0 0 &0|"
    "  TRIGGERS 0 10 20 0|  NORMFLY 3.00 4.00 500.00 300.00 &0|[r0101]|  Planes 1|  Class air.B|"
    "  Fuel 90|  weapons none|[r0101_Way]|  NORMFLY 5.00 6.00 500.00 300.00 &0|[NStationary]|"
    "  1_Static vehicles.planes.Plane$A 1 10.00 20.00|  2_Static  Plane 1|  2_Static  Plane 1|"
    "[Target]|  0 0 0 0 500 1 2 0 0 r0100 3 4|[Buildings]|[BornPlace]|  1 3000 500 600|"
    "  2 3000 700 800|[BornPlace0]|  I-16 4|  + 2xSC250|  U-2|  U-2|[BornPlace1]|  U-2|[Roads]|");

void SetLine(Mission& mission, std::string_view part, const string& line) {
  for (std::size_t i = 0; i < mission.Lines.size(); ++i)
    if (Contains(mission.Lines[i], part)) return mission.Lines.Set(i, line);
  ADD_FAILURE() << part;
}

/** A mission in one reading, edited and then read in the other one. */
struct Carried {
  Carried(const string& text, bool keeps, const std::function<void(Mission&)>& edit) {
    Mission mission;
    if (keeps) {
      ReadKeptMission(W.Doc, W.Services, mission, text);
    } else {
      ReadInto(W, text);
      mission = W.Doc.Missions[0];
    }
    const Mission saved = mission;
    edit(mission);
    Reason = SetKeepsLines(W.Doc, W.Services, mission, !keeps, saved);
    Is = mission;
    EXPECT_EQ(Is.KeepsLines, Reason.empty() ? !keeps : keeps);
  }
  string Written() {
    LineArray lines;
    Document one = DocumentOf(W.Doc, Is);
    const bool built = Is.KeepsLines ? BuildKeptFile(W.Doc, W.Services, Is, lines)
                                     : BuildMissionFile(one, W.Services, lines, 0, {});
    return built ? lines.FileText() : "(none)";
  }
  World W;
  Mission Is;
  string Reason;
};

TEST(CarryEdits, LosesNoEdit) {
  struct Row {
    bool Keeps;
    std::function<void(Mission&)> Edit;
    string From, To;  // the change of the file's text
  };
  const auto park = [](Mission& m) {
    SetLine(m, "1_Static", "  1_Static vehicles.planes.Plane$B 1 10.00 20.00");
  };
  const auto takeOne = [](Mission& m) { m.BornPlaces[0].Planes.pop_back(); };
  const string aircraft = "  I-16 4\r\n  + 2xSC250\r\n  U-2\r\n  U-2\r\n";
  const string turned = "  U-2\r\n  U-2\r\n  I-16 4\r\n  + 2xSC250\r\n";
  const auto turn = [](Mission& m) {
    auto& planes = m.BornPlaces[0].Planes;
    std::rotate(planes.begin(), planes.end() - 2, planes.end());
  };
  const Row rows[] = {
      {false, park, "Plane$A", "Plane$B"},
      {true, park, "Plane$A", "Plane$B"},
      {false, [](Mission& m) { RenameReferences(m, "r0100", "g0300"); }, "0 0 r0100", "0 0 g0300"},
      {false, takeOne, "  U-2\r\n  U-2\r\n", "  U-2\r\n"},
      {true, takeOne, "  U-2\r\n  U-2\r\n", "  U-2\r\n"},
      {true, [](Mission& m) { m.BornPlaces[0].Planes.erase(m.BornPlaces[0].Planes.begin()); },
       "  I-16 4\r\n  + 2xSC250\r\n", ""},
      {false,
       [](Mission& m) {
         auto& route = m.Flights[0].Waypoints;
         route.erase(route.begin(), route.begin() + 2);
       },
       "  TAKEOFF_001 1.00 2.00 0 0 &0\r\n  TRIGGERS 0 10 20 0\r\n", ""},
      {false, [](Mission& m) { m.BornPlaces[0].Army = 5; }, "  1 3000 500", "  5 3000 500"},
      {true, [](Mission& m) { m.Flights[0].Planes = "2"; }, "", "  Skill1 1\r\n"},
      {false, turn, aircraft, turned},
      {true, turn, aircraft, turned},
      {true,
       [](Mission& m) {
         m.Flights[1].Waypoints[0].Type = "NORMFLY_401";
         m.Flights[1].Waypoints[0].KeptTriggers = "  TRIGGERS 1 2 3 4 5";
       },
       "", "  NORMFLY_401 5.00 6.00 500.0 300.0 &0\r\n  TRIGGERS 1 2 3 4 5\r\n"},
  };
  // Bare line feeds make the two readings of a text have lines of other numbers.
  for (const string& text : {kText, Replace(kText, "  MAP a", "  Own\n  MAP a")})
    for (const auto& row : rows) {
      SCOPED_TRACE(row.To + (row.Keeps ? " kept" : " anew"));
      Carried carried(text, row.Keeps, row.Edit);
      EXPECT_EQ(carried.Reason, "");
      if (row.Keeps)
        EXPECT_NE(carried.Written().find(row.To), string::npos) << carried.Written();
      else
        EXPECT_EQ(carried.Written(), Replace(text, row.From, row.To));
    }
}

TEST(CarryEdits, KeepsTheOrderOfFlights) {
  const auto copyAndRemove = [](Mission& m) {
    m.Flights.push_back(m.Flights[0]);
    m.Flights.back().Name = "r0105";
    m.Flights.erase(m.Flights.begin());
  };
  Carried carried(kText, false, copyAndRemove);
  ASSERT_EQ(carried.Is.Flights.size(), 2U) << carried.Reason;
  EXPECT_EQ(carried.Is.Flights[0].Name + carried.Is.Flights[1].Name, "r0101r0105");
  const string route = "[r0105_Way]\r\n  TAKEOFF_001 1.00 2.00 0 0 &0\r\n  TRIGGERS 0 10 20 0\r\n";
  EXPECT_TRUE(Contains(carried.Written(), route)) << carried.Written();
  // One that was never read, such as a pasted one.
  Carried pasted(kText, false, [](Mission& m) {
    m.Flights.push_back(m.Flights[0]);
    m.Flights.back().Name = m.Flights.back().KeptName = "r0105";
  });
  EXPECT_TRUE(Contains(pasted.Written(), route)) << pasted.Written();
}

TEST(CarryEdits, IsRefusedWhereAnEditHasNoPlace) {
  struct Row {
    const char* Left;
    string Text;
    std::function<void(Mission&)> Edit;
  };
  const Row rows[] = {
      {"lines", Replace(kText, "  MAP a", "  2_Static  Plane 1\n  MAP a"),
       [](Mission& m) { SetLine(m, "2_Static  Plane", "  2_Static  Plane 3"); }},
      {"flight r0100", kText, [](Mission& m) { m.Flights[0].Waypoints[1].Alt = "99"; }},
      {"flight r0100", Replace(kText, "[r0101]", "[r0100]"),
       [](Mission& m) { m.Flights[1].Fuel = "1"; }},
      {"flight r0100", Replace(kText, "[r0101]", "[r0100]"),
       [](Mission& m) { m.Flights.erase(m.Flights.begin()); }},
      {"flight r0101", Replace(kText, "[r0100_Way]", "[r0102_Way]"),
       [](Mission& m) { m.Flights[0].Name = "r0101", m.Flights[0].Waypoints[0].Alt = "7"; }},
      {"home base 0", Replace(kText, "[BornPlace]", "[BornPlace]\r\n\t"),
       [](Mission& m) { m.BornPlaces.resize(1), m.BornPlaces[0].Radius = 7; }},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Left);
    Carried carried(row.Text, false, row.Edit);
    EXPECT_NE(carried.Reason.find(row.Left), string::npos) << carried.Reason << carried.Written();
  }
}

TEST(CarryEdits, KnowsFlightsOfAMissionThatWasWrittenAnew) {
  World world;
  ReadInto(world, kText);
  Mission& mission = world.Doc.Missions[0];
  Flight copy = mission.Flights[0];
  copy.Name = "r0102";
  mission.Flights[0].Name = "g0100";
  mission.Flights.push_back(copy);
  auto& route = mission.Flights[1].Waypoints;
  route.push_back(route[0]);
  route[1].KeptRow = -1;
  mission.Flights[1].LastWaypoint = "1";
  LineArray lines;
  ASSERT_TRUE(BuildMissionFile(world.Doc, world.Services, lines, 0, {}));
  mission.AsRead = lines;
  const Mission saved = mission;
  mission.Flights[2].Fuel = "12";
  // As when the waypoint ahead has been moved.
  mission.Flights[0].Waypoints[1].Dist = mission.Flights[1].Waypoints[1].Dist = 7;
  SetLine(mission, "1_Static", "  1_Static vehicles.planes.Plane$B 1 10.00 20.00");
  ASSERT_EQ(SetKeepsLines(world.Doc, world.Services, mission, true, saved), "");
  LineArray kept;
  ASSERT_TRUE(BuildKeptFile(world.Doc, world.Services, mission, kept));
  const string text = lines.FileText();
  const std::size_t section = text.find("[r0102]");
  string expected = Replace(text, "Plane$A", "Plane$B");
  expected.replace(expected.find("Fuel 100", section), 8, "Fuel 12");
  EXPECT_EQ(kept.FileText(), expected);
}

}  // namespace
}  // namespace rws::test
