#include "map/flight_clock.h"

#include <gtest/gtest.h>

#include <cmath>

#include "map/profile.h"
#include "tests/support/doubles.h"

namespace rws {
namespace {

using std::string;

struct Leg {
  double X, Y, Altitude, Speed;
};

MapRoute Through(std::initializer_list<Leg> legs, double start = 0) {
  MapRoute route;
  route.StartMinutes = start;
  for (const auto& leg : legs) {
    RoutePoint& point = route.Points.emplace_back();
    point.At = {leg.X, leg.Y};
    point.Altitude = leg.Altitude;
    point.Speed = leg.Speed;
  }
  return route;
}

/** 300 km/h are 5 km a minute. It waits until 15, and stays 3 minutes at its second point, behind
    which it keeps its speed. */
MapRoute Patrol() {
  MapRoute route = Through({{0, 0, 0, 0}, {10'000, 0, 1000, 300}, {10'000, 20'000, 3000, 0}}, 10);
  route.Points[0].Delay = 15;
  route.Points[1].Stay = 3;
  return route;
}

string Times(const FlightClock& clock) {
  std::vector<string> times;
  for (const auto& point : clock.Points)
    times.push_back(std::to_string(std::lround(point.Arrives)) + "-" +
                    std::to_string(std::lround(point.Leaves)));
  return test::Joined(times) + (clock.IsWhole ? "" : "...");
}

TEST(FlightClock, FollowsFromStartSpeedsDelayAndStay) {
  MapRoute early = Patrol(), noPlace = Patrol(), noSpeed = Patrol(), standing = Patrol();
  early.Points[0].Delay = 5;
  noPlace.Points[2].HasPlace = false;
  noSpeed.Points[1].Speed = 0;
  standing.Points[1] = standing.Points[0];
  standing.Points[1].Speed = standing.Points[2].Speed = 0;
  const struct {
    const char* What;
    MapRoute Route;
    string Times;
  } rows[] = {
      {"waits on the ground", Patrol(), "10-15|17-20|24-24"},
      {"a delay that is over", early, "10-10|12-15|19-19"},
      {"a point without a place", noPlace, "10-15|17-20..."},
      {"no speed", noSpeed, "10-15..."},
      {"no way needs no speed", standing, "10-15|15-15..."},
      {"one point", Through({{1, 2, 3, 0}}), "0-0"},
      {"none", Through({}), "..."},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.What);
    EXPECT_EQ(Times(ClockOf(row.Route)), row.Times);
  }
}

TEST(FlightClock, TellsWhereAFlightIs) {
  const MapRoute route = Patrol();
  const FlightClock clock = ClockOf(route);
  const struct {
    double Minute;
    FlightPhase Phase;
    double X, Y, Altitude, Speed, Heading, Along;
    std::size_t Point;
  } rows[] = {
      {9, FlightPhase::NotYet, 0, 0, 0, 0, 90, 0, 0},
      {12, FlightPhase::Waiting, 0, 0, 0, 0, 90, 0, 0},
      {16, FlightPhase::Flying, 5000, 0, 500, 300, 90, 5000, 0},
      {18, FlightPhase::Flying, 10'000, 0, 1000, 300, 0, 10'000, 1},
      {22, FlightPhase::Flying, 10'000, 10'000, 2000, 300, 0, 20'000, 1},
      {24, FlightPhase::Flying, 10'000, 20'000, 3000, 300, 0, 30'000, 2},
      {25, FlightPhase::Ended, 10'000, 20'000, 3000, 300, 0, 30'000, 2},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Minute);
    const auto moment = MomentOf(route, clock, row.Minute);
    ASSERT_TRUE(moment);
    EXPECT_EQ(moment->Phase, row.Phase);
    EXPECT_NEAR(DistanceOf(moment->At, {row.X, row.Y}), 0, 1e-6);
    EXPECT_NEAR(moment->Altitude, row.Altitude, 1e-6);
    EXPECT_EQ(moment->Speed, row.Speed);
    EXPECT_NEAR(moment->Heading, row.Heading, 1e-6);
    EXPECT_NEAR(moment->Along, row.Along, 1e-6);
    EXPECT_EQ(moment->Point, row.Point);
  }
  MapRoute broken = route;
  broken.Points[2].HasPlace = false;
  EXPECT_EQ(MomentOf(broken, ClockOf(broken), 21)->Phase, FlightPhase::Unknown);
  EXPECT_FALSE(MomentOf(Through({}), {}, 0));
  EXPECT_EQ(LastMinute({route, Through({{0, 0, 0, 0}}, 99)}, {clock, {}}), 99);
}

TEST(FlightClock, TimeOfDayGoesPastMidnight) {
  const struct {
    const char *Time, *Text;
    double Minutes;
  } rows[] = {{"12.783334", "12:47:00", 0}, {"12.783334", "12:52:30", 5.5},
              {"23.5", "00:15:00", 45},     {"0", "00:01:00", 2881},
              {"23.99", "00:00:00", 0.6},   {"25", "23:59:24", 0},
              {"-3", "00:00:00", 0},        {"noon", "12:00:00", 0}};
  for (const auto& row : rows) EXPECT_EQ(TimeOfDay(row.Time, row.Minutes), row.Text) << row.Time;
}

TEST(FlightClock, FindsTheNearestApproach) {
  const MapRoute east = Through({{0, 0, 0, 0}, {60'000, 0, 0, 300}});
  const MapRoute west = Through({{60'000, 400, 0, 0}, {0, 400, 0, 300}});
  const MapRoute beside = Through({{0, 3000, 0, 0}, {60'000, 3000, 0, 300}});
  const MapRoute brief = Through({{0, 0, 0, 0}, {10'000, 0, 0, 300}});
  const MapRoute south = Through({{0, 40'000, 0, 0}, {0, 0, 0, 300}});
  const MapRoute late = Through({{0, 0, 0, 0}, {60'000, 0, 0, 300}}, 3);
  const MapRoute slow = Through({{0, 0, 0, 0}, {60'000, 0, 0, 0}}, 30);
  const struct {
    const char* What;
    const MapRoute &A, &B;
    double Minute, Metres;  // below 0 for none
  } rows[] = {
      {"head on", east, west, 6, 400},
      {"parallel", east, beside, 0, 3000},
      {"one ends on the way", brief, south, 2, 31'622.7766},
      {"one comes when the other has ended", brief, late, 0, -1},
      {"one has no clock", east, slow, 0, -1},
      {"with itself", east, east, 0, 0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.What);
    for (const bool turned : {false, true}) {
      const MapRoute &a = turned ? row.B : row.A, &b = turned ? row.A : row.B;
      const auto meeting = NearestApproach(a, ClockOf(a), b, ClockOf(b));
      ASSERT_EQ(meeting.has_value(), row.Metres >= 0);
      if (!meeting) continue;
      EXPECT_NEAR(meeting->Minute, row.Minute, 1e-6);
      EXPECT_NEAR(meeting->Metres, row.Metres, 1e-3);
    }
  }
}

/** A model of some routes at 12:47. */
MapModel ModelOf(std::vector<MapRoute> routes) {
  MapModel model;
  model.Time = "12.783334";
  model.Scene.Routes = std::move(routes);
  for (const auto& route : model.Scene.Routes) model.Clocks.push_back(ClockOf(route));
  return model;
}

string Corners(const ProfileSeries& series) {
  std::vector<string> texts;
  for (const auto& corner : series.Corners)
    texts.push_back(std::to_string(std::lround(corner.At)) + " " +
                    std::to_string(std::lround(corner.Altitude)) + " " +
                    std::to_string(std::lround(corner.Speed)));
  return test::Joined(texts);
}

string Marks(const ProfileSeries& series) {
  std::vector<string> texts;
  for (const auto& mark : series.Marks)
    texts.push_back(std::to_string(mark.Point) + "@" + std::to_string(std::lround(mark.At)) + " " +
                    mark.Clock);
  return test::Joined(texts);
}

TEST(Profile, RunsOverTheWayAndOverTheTime) {
  MapRoute gap = Patrol(), slow = Patrol();
  gap.Points[1].HasPlace = false;
  slow.Points[1].Speed = 0;
  const struct {
    const char* What;
    MapRoute Route;
    string Way, WayMarks, Time, TimeMarks, Missing;
  } rows[] = {
      {"whole", Patrol(), "0 0 0|10000 1000 300|30000 3000 300",
       "0@0 12:57|1@10000 13:04|2@30000 13:11", "10 0 0|15 0 0|17 1000 300|20 1000 300|24 3000 300",
       "0@10 12:57|1@17 13:04|2@24 13:11", ""},
      {"no place in between", gap, "0 0 0|22361 3000 300", "0@0 12:57|2@22361 ", "10 0 0|15 0 0",
       "0@10 12:57", "No clock from waypoint 1 on: it has no place."},
      {"no speed", slow, "0 0 0|10000 1000 0|30000 3000 0", "0@0 12:57|1@10000 |2@30000 ",
       "10 0 0|15 0 0", "0@10 12:57", "No clock from waypoint 1 on: no speed is set."},
      {"nothing", Through({}), "", "", "", "", "The flight has no waypoints."},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.What);
    const MapModel model = ModelOf({row.Route});
    const auto way = SeriesOf(model, 0, ProfileAxis::Distance);
    const auto time = SeriesOf(model, 0, ProfileAxis::Time);
    EXPECT_EQ(Corners(way), row.Way);
    EXPECT_EQ(Marks(way), row.WayMarks);
    EXPECT_EQ(Corners(time), row.Time);
    EXPECT_EQ(Marks(time), row.TimeMarks);
    EXPECT_EQ(way.Missing, row.Missing);
  }
  EXPECT_TRUE(SeriesOf(ModelOf({}), 7, ProfileAxis::Time).Marks.empty());
}

TEST(Profile, GoesFromAMinuteToAPlaceAndBack) {
  const MapModel model = ModelOf({Patrol()});
  // At 18 it stays where it is, 10 km along.
  for (const auto& [minute, metres] :
       {std::pair(15.0, 0.0), {16.0, 5000.0}, {17.0, 10'000.0}, {22.0, 20'000.0}}) {
    EXPECT_NEAR(*ProfilePlace(model, 0, ProfileAxis::Distance, minute), metres, 1e-6);
    if (metres == 0) continue;
    EXPECT_NEAR(*MinuteAlong(model, 0, metres), minute, 1e-6);
  }
  EXPECT_NEAR(*ProfilePlace(model, 0, ProfileAxis::Distance, 18), 10'000, 1e-6);
  EXPECT_EQ(ProfilePlace(model, 0, ProfileAxis::Time, 18), 18);
  EXPECT_EQ(MinuteAlong(model, 0, -1), 10);
  EXPECT_NEAR(*MinuteAlong(model, 0, 1e9), 24, 1e-6);
  EXPECT_FALSE(MinuteAlong(ModelOf({Through({})}), 0, 5));
}

TEST(Profile, AxesHaveRoundNumbers) {
  const auto text = [](const std::vector<AxisTick>& ticks) {
    std::vector<string> texts;
    for (const auto& tick : ticks)
      texts.push_back(tick.Text + "=" + std::to_string(std::lround(tick.At)));
    return test::Joined(texts);
  };
  EXPECT_EQ(text(DistanceTicks(30'000, 4, true)), "0=0|10=10000|20=20000|30=30000");
  EXPECT_EQ(text(DistanceTicks(1000, 5, true)), "0=0|0.2=200|0.4=400|0.6=600|0.8=800|1=1000");
  EXPECT_EQ(text(DistanceTicks(16'093.44, 5, false)), "0=0|2=3219|4=6437|6=9656|8=12875|10=16093");
  EXPECT_EQ(text(HeightTicks(3000, 5, false)), "0=0|2000=610|4000=1219|6000=1829|8000=2438");
  EXPECT_EQ(text(SpeedTicks(330, 4, true)), "0=0|100=100|200=200|300=300");
  EXPECT_EQ(text(MinuteTicks(70, 4, "12.5")), "12:30=0|12:50=20|13:10=40|13:30=60");
  EXPECT_EQ(text(MinuteTicks(3000, 2, "0")), "00:00=0|08:00=1920");
  for (const double odd : {0.0, -5.0, HUGE_VAL, std::nan("")}) {
    EXPECT_EQ(text(HeightTicks(odd, 5, true)), "0=0");
    EXPECT_EQ(text(MinuteTicks(odd, 5, "0")), "00:00=0");
  }
}

TEST(Profile, TellsInWordsWhoMeetsWhom) {
  test::World world;
  MapRoute east = Through({{0, 0, 1500, 0}, {60'000, 0, 1500, 300}});
  MapRoute west = Through({{60'000, 400, 0, 0}, {0, 400, 0, 300}});
  MapRoute late = Through({{0, 0, 0, 0}, {1000, 0, 0, 300}}, 90);
  east.Name = "r0100";
  west.Name = "g0100";
  late.Name = "g\xE9";
  const MapModel model = ModelOf({late, east, west});
  const Mission mission;
  const MapTextSources from{model, mission, world.Tables, world.Services, true};
  EXPECT_EQ(test::Joined(MeetingTexts(from, {0, 1, 2})),
            "r0100 and g0100 are 400 m apart at 12:53:00|"
            "g\xC3\xA9 and r0100 are never under way at the same time|"
            "g\xC3\xA9 and g0100 are never under way at the same time");
  EXPECT_EQ(MomentText(from, 1, 6),
            "r0100 at 12:53:00: 1500 m, 300 km/h, heading 090\xC2\xB0, 30 km along its route");
  EXPECT_EQ(MomentText(from, 0, 6), "g\xC3\xA9 at 12:53:00: not there yet");
  EXPECT_EQ(MomentText(from, 1, 60), "r0100 at 13:47:00: at its end");
}

}  // namespace
}  // namespace rws
