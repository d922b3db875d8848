#include "map/route_edits.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "map/base_edits.h"
#include "mission/carry_edits.h"
#include "mission/kept_merge.h"
#include "mission/kept_reader.h"
#include "mission/writer.h"
#include "services/faults.h"
#include "services/text.h"
#include "tests/support/doubles.h"

namespace rws {
namespace {

using std::string;
using test::CrlfText;
using test::World;

constexpr char kText[] =
    "[MAIN]|  MAP a/load.ini|  TIME 12.0|[Wing]|  r0100|[r0100]|  Planes 1|  Skill 1|"
    "  Class air.A|  Fuel 100|  weapons none|[r0100_Way]|  TAKEOFF 1000.00 2000.00 0 0 &0|"
    "  NORMFLY 4000.25 6000.75 500.00 300.00 &0|"
    "  NORMFLY_401 7000.00 6000.00 1000.00 350.00 &1 F3|  TRIGGERS 1 5 90 7 500|"
    "  GATTACK 9000.00 6000.00 700.00 320.00 1_Static 0 &0|  LANDING 1000.00 2500.00 0 0 &0|"
    "[NStationary]|  1_Static vehicles.planes.Plane$A 1 10.00 20.00 360.00 0.0|";

constexpr bool kBothWays[] = {false, true};

/** A mission in one of the two ways in which it can be read. */
class Edited {
 public:
  explicit Edited(bool keeps, std::string_view text = kText) {
    test::ReadInto(W, CrlfText(text));
    Own().AsRead = Own().Lines;
    if (keeps) ReadKeptMission(W.Doc, W.Services, Own(), CrlfText(text));
    W.Doc.MissionShadow = W.Doc.Missions;
    Saved = Own();
  }

  Mission& Own() { return W.Doc.Missions[0]; }
  Flight& Own(std::size_t flight) { return Own().Flights[flight]; }
  Flight& Shadow() { return W.Doc.MissionShadow[0].Flights[0]; }
  string Written() {
    LineArray lines;
    string reason;
    const bool built = Own().KeepsLines ? BuildKeptFile(W.Doc, W.Services, Own(), lines, &reason)
                                        : BuildMissionFile(W.Doc, W.Services, lines, 0, {});
    return built ? lines.FileText() : "<" + reason + ">";
  }

  World W;
  Mission Saved;
};

struct Row {
  const char* What;
  std::function<void(Document&)> Edit;
  /** Lines of the route afterwards, joined by "|", in keep mode. */
  const char* Route;
};

const Row kRows[] = {
    {"move", [](Document& doc) { MoveWaypoints(doc, 0, {1}, 100, -0.75); },
     "TAKEOFF 1000.00 2000.00 0 0 &0|NORMFLY 4100.25 6000.00 500.00 300.00 &0|"
     "NORMFLY_401 7000.00 6000.00 1000.00 350.00 &1 F3|TRIGGERS 1 5 90 7 500|"
     "GATTACK 9000.00 6000.00 700.00 320.00 1_Static 0 &0|LANDING 1000.00 2500.00 0 0 &0"},
    {"move one with settings", [](Document& doc) { MoveWaypoints(doc, 0, {2}, 1, 1); },
     "TAKEOFF 1000.00 2000.00 0 0 &0|NORMFLY 4000.25 6000.75 500.00 300.00 &0|"
     "NORMFLY_401 7001.00 6001.00 1000.00 350.00 &1 F3|TRIGGERS 1 5 90 7 500|"
     "GATTACK 9000.00 6000.00 700.00 320.00 1_Static 0 &0|LANDING 1000.00 2500.00 0 0 &0"},
    {"insert",
     [](Document& doc) {
       InsertWaypoint(doc, 0, 2, {8000.005, -1});
     },
     "TAKEOFF 1000.00 2000.00 0 0 &0|NORMFLY 4000.25 6000.75 500.00 300.00 &0|"
     "NORMFLY_401 7000.00 6000.00 1000.00 350.00 &1 F3|TRIGGERS 1 5 90 7 500|"
     "NORMFLY 8000.01 -1.00 850.00 320.00 &1|"
     "GATTACK 9000.00 6000.00 700.00 320.00 1_Static 0 &0|LANDING 1000.00 2500.00 0 0 &0"},
    {"delete", [](Document& doc) { EXPECT_TRUE(DeleteWaypoints(doc, 0, {2})); },
     "TAKEOFF 1000.00 2000.00 0 0 &0|NORMFLY 4000.25 6000.75 500.00 300.00 &0|"
     "GATTACK 9000.00 6000.00 700.00 320.00 1_Static 0 &0|LANDING 1000.00 2500.00 0 0 &0"},
    {"reverse", [](Document& doc) { EXPECT_TRUE(ReverseRoute(doc, 0)); },
     "TAKEOFF 1000.00 2000.00 0 0 &0|GATTACK 9000.00 6000.00 700.00 320.00 1_Static 0 &0|"
     "NORMFLY_401 7000.00 6000.00 1000.00 350.00 &1 F3|TRIGGERS 1 5 90 7 500|"
     "NORMFLY 4000.25 6000.75 500.00 300.00 &0|LANDING 1000.00 2500.00 0 0 &0"},
};

/** The lines of a route, joined by "|". Where they are made anew only types and places: heights are
    spelled otherwise there, and what stands behind them follows other rules. */
string Lines(const string& route, bool keeps) {
  string lines;
  for (const auto line : SplitAt(route, '|')) {
    const auto words = SplitAt(Trim(line), ' ');
    lines.append(lines.empty() ? "" : "|");
    const bool isPlace = words.size() > 3 && words[0] != "TRIGGERS";
    if (keeps)
      lines.append(Trim(line));
    else
      lines.append(words[0]).append(isPlace ? string(words[1]) + " " + string(words[2]) : "");
  }
  return lines;
}

string RouteIn(const string& text, bool keeps) {
  const std::size_t from = text.find("_Way]\r\n") + 7, to = text.find("\r\n[NStationary]");
  return Lines(Replace(text.substr(from, to - from), "\r\n", "|"), keeps);
}

TEST(RouteEdits, ReachTheFileInBothWays) {
  for (const bool keeps : kBothWays)
    for (const auto& row : kRows) {
      SCOPED_TRACE(string(row.What) + (keeps ? " kept" : " anew"));
      Edited mission(keeps);
      row.Edit(mission.W.Doc);
      EXPECT_EQ(RouteIn(mission.Written(), keeps), Lines(row.Route, keeps));
      // What is read from what was written is what was in memory.
      Edited again(keeps, Replace(mission.Written(), "\r\n", "|"));
      const Flight &is = mission.Own(0), &read = again.Own(0);
      ASSERT_EQ(is.Waypoints.size(), read.Waypoints.size());
      for (std::size_t i = 0; i < is.Waypoints.size(); ++i) {
        EXPECT_EQ(is.Waypoints[i].X, read.Waypoints[i].X) << i;
        EXPECT_EQ(is.Waypoints[i].Y, read.Waypoints[i].Y) << i;
        EXPECT_DOUBLE_EQ(is.Waypoints[i].Dist, read.Waypoints[i].Dist) << i;
      }
      EXPECT_EQ(mission.Shadow().Waypoints.size(), is.Waypoints.size());
      // A route that only moved has kept what it was read with.
      if (is.Waypoints.size() != mission.Saved.Flights[0].Waypoints.size()) {
        EXPECT_EQ(is.LastWaypoint, std::to_string(is.Waypoints.size() - 1));
      }
    }
}

TEST(RouteEdits, AreCarriedIntoTheOtherWay) {
  for (const bool keeps : kBothWays)
    for (const auto& row : kRows) {
      SCOPED_TRACE(string(row.What) + (keeps ? " from kept" : " from anew"));
      Edited mission(keeps);
      row.Edit(mission.W.Doc);
      EXPECT_EQ(
          SetKeepsLines(mission.W.Doc, mission.W.Services, mission.Own(), !keeps, mission.Saved),
          "");
      EXPECT_EQ(Lines(RouteIn(mission.Written(), true), false), Lines(row.Route, false));
    }
}

TEST(RouteEdits, KeepOnePointAndKnowTheirLimits) {
  Edited mission(true);
  Document& doc = mission.W.Doc;
  EXPECT_FALSE(DeleteWaypoints(doc, 0, {0, 1, 2, 3, 4}));
  EXPECT_EQ(mission.Own(0).Waypoints.size(), 5u);
  EXPECT_THROW(MoveWaypoints(doc, 0, {1, 9}, 5, 5), Fault);
  EXPECT_EQ(mission.Own(0).Waypoints[1].X, 4000);
  EXPECT_EQ(MovableWaypoints(mission.Own(0), false), (std::vector<std::size_t>{1, 2, 3}));
  // Between the first two, behind the last but one, and never behind the landing.
  EXPECT_EQ(BestPlaceFor(mission.Own(0), {2500, 4100}), 0u);
  EXPECT_EQ(BestPlaceFor(mission.Own(0), {1200, 2600}), 3u);
  EXPECT_TRUE(DeleteWaypoints(doc, 0, {1, 2}));
  EXPECT_FALSE(ReverseRoute(doc, 0)) << "one point between the ends";
  // A neighbour without a speed of its own has none to give.
  Edited other(true);
  other.Own(0).Waypoints[3].Speed = "0";
  const std::size_t added = InsertWaypoint(other.W.Doc, 0, 2, {1, 1});
  EXPECT_EQ(other.Own(0).Waypoints[added].Speed, "350");
  EXPECT_EQ(InsertWaypoint(other.W.Doc, 0, 0, {1, 1}), 1U);
  EXPECT_EQ(other.Own(0).Waypoints[1].Alt, "500") << "the ground has no height to give";
}

TEST(RouteEdits, CoordinatesHaveTwoDecimals) {
  const struct {
    double Value;
    const char* Text;
  } rows[] = {{98006.516, "98006.52"},
              {20800.997, "20801.00"},
              {-0.001, "0.00"},
              {-5.5, "-5.50"},
              {1e7, "10000000.00"}};
  for (const auto& row : rows) EXPECT_EQ(CoordinateText(row.Value), row.Text);
}

constexpr char kBases[] =
    "[MAIN]|  MAP a/load.ini|[BornPlace]|  1 3000 500 600 1 1000|  2 5000 700 800|[BornPlace0]|"
    "  Bf-109E-4 10 28xSC50|  + 2xSC250|[BornPlaceCountries0]|  de|"
    "[MDS_BornPlace_500_600_RRR]|  x 1|[MDS_BornPlace_500_6001_RRR]|  y|";

TEST(BaseEdits, MoveABaseWithWhatIsNamedByIt) {
  Edited mission(true, kBases);
  Document& doc = mission.W.Doc;
  ASSERT_TRUE(MoveBase(doc, 0, {699.6, 800.2}));
  ASSERT_TRUE(ResizeBase(doc, 0, 20000));
  // The place of the other base is taken.
  string wanted = Replace(kBases, "1 3000 500 600", "1 10000 701 800");
  wanted = Replace(wanted, "e_500_600_R", "e_701_800_R");
  EXPECT_EQ(mission.Written(), CrlfText(wanted));
  EXPECT_THROW(MoveBase(doc, 2, {1, 1}), Fault);
  Edited anew(false, kBases);
  EXPECT_FALSE(MoveBase(anew.W.Doc, 0, {1, 1}));
  EXPECT_EQ(anew.Own().BornPlaces[0].X, 500);
}

TEST(BaseEdits, TakeTextAndRefuseWhatIsNone) {
  Edited mission(true, kBases);
  Document& doc = mission.W.Doc;
  MoveBase(doc, 0, {1, 2});
  BaseLines lines = LinesOfBase(doc, mission.W.Services, 0);
  EXPECT_EQ(lines.Line, "  1 3000 1 2 1 1000");
  EXPECT_EQ(lines.Aircraft, "  Bf-109E-4 10 28xSC50\n  + 2xSC250\n");
  EXPECT_EQ(lines.Countries, "  de\n");
  lines.Line = "  1 3000 4 5 1 2000 7";
  lines.Aircraft = "  Bf-109E-4 3\n\n  La-5\n";
  lines.Countries = "";
  ASSERT_EQ(SetLinesOfBase(doc, mission.W.Services, 0, lines), "");
  string wanted = Replace(kBases, "1 3000 500 600 1 1000", "1 3000 4 5 1 2000 7");
  wanted = Replace(wanted, "e_500_600_R", "e_4_5_R");
  wanted = Replace(wanted, "  Bf-109E-4 10 28xSC50|  + 2xSC250|", "  Bf-109E-4 3|  La-5|");
  wanted = Replace(wanted, "[BornPlaceCountries0]|  de|", "");
  EXPECT_EQ(mission.Written(), CrlfText(wanted));
  EXPECT_EQ(mission.Own().BornPlaces[0].X, 4);
  EXPECT_EQ(mission.Own().BornPlaces[0].Planes, (std::vector<string>{"Bf-109E-4", "La-5"}));
  // A base that has no lists yet gets them behind all others.
  ASSERT_EQ(SetLinesOfBase(doc, mission.W.Services, 1, {"2 5000 700 800", "Yak-1", "ru"}), "");
  wanted = Replace(wanted, "  La-5|", "  La-5|[BornPlace1]|Yak-1|[BornPlaceCountries1]|ru|");
  EXPECT_EQ(mission.Written(), CrlfText(Replace(wanted, "  2 5000 700 800|", "2 5000 700 800|")));
  const Mission before = mission.Own();
  const BaseLines wrong[] = {{"1 3000 4", "", ""},
                             {"1 3000 4.5 5", "", ""},
                             {"1 3000 4 5\n2", "", ""},
                             {"1 3000 4 5", "a\n[Wing]", ""},
                             {"", "", ""},
                             {"1 3000 700 800", "", ""},
                             {"1 3000 4 5", "", " [x"}};
  for (const auto& each : wrong) {
    SCOPED_TRACE(each.Line + each.Aircraft);
    EXPECT_NE(SetLinesOfBase(doc, mission.W.Services, 0, each), "");
    EXPECT_EQ(mission.Own().Lines, before.Lines);
  }
}

TEST(RouteEdits, AnEmptyLineBehindARouteIsNoWaypoint) {
  Edited mission(false, Replace(kText, "|[NStationary]", "||[NStationary]"));
  const Flight& flight = mission.Own(0);
  ASSERT_TRUE(flight.Waypoints.back().Line.empty());
  EXPECT_EQ(MovableWaypoints(flight, true).size(), 5U);
  ASSERT_TRUE(ReverseRoute(mission.W.Doc, 0));
  EXPECT_EQ(flight.Waypoints[1].Type, "GATTACK");
  EXPECT_EQ(flight.Waypoints[5].Type, "LANDING");
  EXPECT_EQ(InsertWaypoint(mission.W.Doc, 0, 5, {1, 2}), 7U);
  EXPECT_TRUE(flight.Waypoints[6].Line.empty());
}

}  // namespace
}  // namespace rws
