#include "editors/logic/waypoint_table.h"

#include <gtest/gtest.h>

#include <limits>

#include "services/faults.h"
#include "tests/support/doubles.h"

namespace rws::test {
namespace {

/** A mission whose one flight has these waypoints. */
Document Route(std::vector<Waypoint> waypoints) {
  Document doc;
  Flight flight;
  flight.Class = "IL_2";
  flight.Name = "1_GvIAP01";
  flight.Waypoints = std::move(waypoints);
  doc.Missions.resize(1);
  doc.Missions[0].Flights = {flight};
  doc.MissionShadow = doc.Missions;
  return doc;
}

Waypoint Point(const char* alt, const char* speed, double dist, const char* marker = "&0") {
  return {alt, speed, "NORMFLY", marker, 0, 0, dist, {}, -1, {}};
}

TEST(WaypointTable, ShowsARouteInBothUnits) {
  const struct {
    Waypoint Point;
    const char *Metric, *NonMetric;
  } cases[] = {
      {Point("0", "0", 0), "0|NORMFLY|0|0|0|0|No", "0|NORMFLY|0|0|0|0|No"},
      {Point("1000", "250", 1000, "&1"), "0|NORMFLY|1000|250|10|4|Yes",
       "0|NORMFLY|3281|155|6.21|4|Yes"},
      {Point("1500.5", "300", 1099, "&2"), "0|NORMFLY|1500.5|300|10|3|Yes",
       "0|NORMFLY|4923|186|6.83|3|Yes"},
      {Point("500", "0", 5000, ""), "0|NORMFLY|500|0|50|0|Yes", "0|NORMFLY|1640|0|31.07|0|Yes"},
      {Point("high", "fast", 250), "0|NORMFLY|high|fast|2|0|No", "0|NORMFLY|||1.55|0|No"},
      {Point("-10", "-300", 1000), "0|NORMFLY|-10|-300|10|-4|No", "0|NORMFLY|-33|-186|6.21|-4|No"},
      {Point("1", "1e999", std::numeric_limits<double>::infinity()), "0|NORMFLY|1|1e999|||No",
       "0|NORMFLY|3||||No"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.Metric);
    const Document doc = Route({c.Point});
    for (const bool metric : {true, false}) {
      const auto rows = WaypointRows(doc, metric);
      ASSERT_EQ(rows.size(), 1u);
      EXPECT_EQ(Joined({rows[0].begin(), rows[0].end()}), metric ? c.Metric : c.NonMetric);
    }
  }
  EXPECT_EQ(WaypointRows(Route({Waypoint(), Waypoint()}), true)[1][0], "1");
  EXPECT_TRUE(WaypointRows(Route({}), true).empty());
}

TEST(WaypointTable, TakesTypedTextBack) {
  const struct {
    const char* Text;
    int Column;
    bool Metric;
    std::optional<std::string> Value;
  } cases[] = {
      {"1500.5", kWaypointAlt, true, "1500.5"}, {" 300 ", kWaypointSpeed, true, "300"},
      {"1000", kWaypointAlt, false, "305"},     {"155", kWaypointSpeed, false, "249"},
      {"1e300", kWaypointAlt, true, "1e300"},   {"1e999", kWaypointAlt, true, {}},
      {"1.5e308", kWaypointSpeed, false, {}},   {"12a", kWaypointAlt, true, {}},
      {"", kWaypointSpeed, false, {}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.Text);
    EXPECT_EQ(TypedValue(c.Text, c.Column, c.Metric), c.Value);
  }
}

TEST(WaypointTable, OffersTheKindsThatFitTheRow) {
  using Offer = std::array<bool, 4>;
  EXPECT_EQ(OfferedKinds(1, 3), (Offer{true, true, true, false}));
  EXPECT_EQ(OfferedKinds(2, 3), (Offer{false, true, true, false}));
  EXPECT_EQ(OfferedKinds(3, 3), (Offer{false, true, true, true}));
  EXPECT_EQ(OfferedKinds(1, 1), (Offer{false, true, true, true}));
  EXPECT_EQ(OfferedKinds(0, 0), Offer{});
}

TEST(WaypointTable, ComparesSeveralRowsWithTheCurrentOnesShadow) {
  Document doc = Route({Point("1", "300", 0), Point("2", "250", 0), Point("3", "200", 0)});
  std::vector<bool> told;
  const auto tell = [&](bool differs) { told.push_back(differs); };
  SetWaypoints(doc, 1, 3, kWaypointSpeed, "300", 2, tell);
  EXPECT_EQ(told, (std::vector<bool>{false, true, true}));
  doc.MissionShadow[0].Flights[0].Waypoints.resize(1);
  SetWaypoints(doc, 2, 3, kWaypointAlt, "9", 3, tell);
  EXPECT_EQ(doc.Missions[0].Flights[0].Waypoints[2].Alt, "9") << "the shadow's route is shorter";
  EXPECT_TRUE(told.back());
  doc.Missions[0].Flights[0].Waypoints[1].Type = "TRIGGERS";
  SetWaypoints(doc, 1, 3, kWaypointAlt, "7", 1, tell);
  EXPECT_EQ(doc.Missions[0].Flights[0].Waypoints[1].Alt, "9") << "the row of triggers";
  EXPECT_EQ(doc.Missions[0].Flights[0].Waypoints[2].Alt, "7");
  doc.CurFlight = 1;
  EXPECT_THROW(WaypointRows(doc, true), Fault);
}

}  // namespace
}  // namespace rws::test
