#include "map/map_things.h"

#include <gtest/gtest.h>

#include "map/map_model.h"
#include "map/map_routes.h"
#include "map/map_texts.h"
#include "mission/kept_reader.h"
#include "services/numbers.h"
#include "tests/support/doubles.h"

namespace rws {
namespace {

using std::string;

MapThings Things(const string& joinedByBars) {
  return ThingsOf(LineArray::FromFileAsIs(test::CrlfText(joinedByBars)));
}

string PlaceOf(MapPoint at) { return NumberText(at.X) + "," + NumberText(at.Y); }

string Objects(const MapThings& things) {
  std::vector<string> texts;
  for (const auto& object : things.Objects)
    texts.push_back(string(KindName(object.Kind)) + " " + PlaceOf(object.At) + " " +
                    NumberText(object.Heading) + " army " + std::to_string(object.Army));
  return test::Joined(texts);
}

TEST(MapThings, ReadsEachKindOfStandingObject) {
  const struct {
    const char *Lines, *Objects;
    std::size_t Misplaced;
  } rows[] = {
      {"[NStationary]|  0_Static vehicles.planes.Plane$BF_109E4 2 100.50 200.25 360.00 0.0",
       "Parked aircraft 100.5,200.25 90 army 2", 0},
      {"[NStationary]|  1_Static ships.Ship$Pilot 1 1 2 630 0|"
       "  2_Static vehicles.stationary.Smoke$Smoke1 0 3 4 -100 0",
       "Ship 1,2 0 army 1|Smoke 3,4 350 army 0", 0},
      {"[Stationary]|  vehicles.stationary.Campfire$CampfireAirfield 0 5 6 0|"
       "  vehicles.stationary.Stationary$Wagon1 1 7 8 0|  vehicles.radios.Beacon$RadioBeacon 1 9 9",
       "Smoke 5,6 90 army 0|Train 7,8 90 army 1|Object 9,9 90 army 1", 0},
      {"[Buildings]|  0_bld House$Tent_Pyramid_US 1 10 11 90", "Building 10,11 180 army 0", 0},
      {"[StaticCamera]|  12 13 100 2", "Camera 12,13 0 army 2", 0},
      {"[Rocket]|  0_Rocket Fi103_V1_ramp 2 0 0 0 0 10 20 0 500", "Rocket 0,0 0 army 2", 0},
      {"[Rocket]|  0_Rocket Fi103_V1_ramp 2 0 0 0 0 10 20", "Rocket 0,0 90 army 2", 0},
      {"[NStationary]|  0_Static vehicles.tanks.Tank$T34 1 x 2 0|  1_Static|"
       "  2_Static vehicles.cars.Car$GAZ 1 nan 2 0|[Buildings]|  0_bld House 1 10|"
       "[Stationary]|  a 1 1e999 2 0|",
       "", 5},
      {"[NStationary]||   |[Stationary]", "", 0},
      {"  0_Static vehicles.cars.Car$GAZ 1 1 2 0", "", 0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Lines);
    const MapThings things = Things(row.Lines);
    EXPECT_EQ(Objects(things), row.Objects);
    EXPECT_EQ(things.Misplaced, row.Misplaced);
  }
}

TEST(MapThings, ReadsTargetsMarkersAndAims) {
  const MapThings things = Things(
      "[Target]|  3 1 0 30 500 34420 5968 450 0 r0100 1 2|  0 0 0 0 500 x 1 0|  5 2 0 0 0 7 8|"
      "[FrontMarker]|  FrontMarker0 100 200 1|  FrontMarker1 x 200 1|  Other 1 2 1|"
      "[Rocket]|  V1 Fi103_V1_ramp 2 10 20 0 0 10 20 10 520");
  ASSERT_EQ(things.Targets.size(), 2U);
  const MapTarget& first = things.Targets[0];
  EXPECT_EQ(PlaceOf(first.At) + " " + string(TargetName(first.Type)), "34420,5968 Recon");
  EXPECT_TRUE(first.Importance == 1 && first.Radius == 450 && first.Line == 1);
  EXPECT_EQ(things.Targets[1].Radius, 0);
  ASSERT_EQ(things.Markers.size(), 1U);
  EXPECT_EQ(PlaceOf(things.Markers[0].At), "100,200");
  ASSERT_EQ(things.Rockets.size(), 1U);
  EXPECT_EQ(PlaceOf(things.Rockets[0].From) + " " + PlaceOf(things.Rockets[0].To), "10,20 10,520");
  EXPECT_EQ(things.Misplaced, 2U);
  EXPECT_EQ(TargetName(8), "");
}

constexpr char kColumns[] =
    "[Chiefs]|  0_Chief Trains.Germany_Boxcar 2|  1_Chief Ships.Tanker 1 0 1 2.0|"
    "  2_Chief Armor.T34 1|  3_Chief Vehicles.GAZ 1|  3_Chief Vehicles.GAZ 2|"
    "[0_Chief_Road]|  0 0 120.00 5 2 3.3|  1000 0 120.00|  2000 0 -13.00|  2600 0 -13.00|"
    "  3000 0 120.00 20 2 3.3|  3100 0 -4.00|  3200 0 -5.00|  3300 0 120.00|"
    "[1_Chief_Road]|  x y 120|  500 600 120|[2_Chief_Road]|[3_Chief_Road]|  7 7 120.00 0 2 1";

TEST(MapThings, ReadsColumnsWithTheirRoadsAndBridges) {
  const MapThings things = Things(kColumns);
  ASSERT_EQ(things.Units.size(), 4U);
  const MapUnit& train = things.Units[0];
  EXPECT_EQ(string(train.Name) + " " + string(KindName(train.Kind)), "0_Chief Train");
  ASSERT_EQ(train.Road.size(), 8U);
  string isSet;
  for (const auto& point : train.Road) isSet += point.IsSet ? '1' : '0';
  EXPECT_EQ(isSet, "10001001");
  EXPECT_EQ(train.Road[4].Minutes, 20);
  // Only where two points one behind the other bear one number.
  ASSERT_EQ(things.Bridges.size(), 1U);
  EXPECT_EQ(PlaceOf(things.Bridges[0].From) + " " + PlaceOf(things.Bridges[0].To), "2000,0 2600,0");
  EXPECT_EQ(things.Bridges[0].Number, 12);
  EXPECT_EQ(things.Units[1].Road.size(), 1U);
  EXPECT_EQ(things.Misplaced, 1U);  // the one whose road is empty
}

TEST(MapScene, FindsWhatAWaypointNames) {
  MapScene scene;
  scene.Things =
      Things(string(kColumns) + "|[NStationary]|  5_Static vehicles.cars.Car$GAZ 1 70 80 0");
  scene.Routes.resize(2);
  scene.Routes[0].Name = "r0100";
  scene.Routes[0].Points.resize(2);
  scene.Routes[0].Points[1].At = {8, 9};
  const struct {
    const char* Name;
    int Point;
    const char* Place;
  } rows[] = {{"r0100", 1, "8,9"},      {"r0100", 99, "8,9"},     {"r0100", -1, "0,0"},
              {"R0100", 1, "none"},     {"0_Chief", 0, "0,0"},    {"0_Chief", 1, "3000,0"},
              {"0_Chief", 9, "3300,0"}, {"5_Static", 0, "70,80"}, {"Bridge12", 0, "2300,0"},
              {"Bridge4", 0, "none"},   {"Bridge", 0, "none"},    {"", 0, "none"},
              {"9_Chief", 0, "none"}};
  for (const auto& row : rows) {
    const auto place = PlaceOf(scene, row.Name, row.Point);
    EXPECT_EQ(place ? PlaceOf(*place) : "none", row.Place) << row.Name << row.Point;
  }
}

/** A flight's points: type, place, delay, stay, corners, target. */
string Points(const MapRoute& route) {
  constexpr const char* kShapes[] = {"up", "to", "at", "down"};
  std::vector<string> texts;
  for (const auto& point : route.Points) {
    string text = string(kShapes[static_cast<std::size_t>(point.Shape)]) + " " +
                  (point.HasPlace ? PlaceOf(point.At) : "nowhere") + " " +
                  std::to_string(point.Waypoint);
    if (point.HasTriggers)
      text += " T" + NumberText(RoundHalfEven(point.Delay, 2)) + "/" +
              NumberText(RoundHalfEven(point.Stay, 2)) + "/" + std::to_string(point.Patrol.size());
    if (!point.Target.empty()) text += " " + point.Target + "." + std::to_string(point.TargetPoint);
    texts.push_back(text);
  }
  return test::Joined(texts);
}

/** Sides of 6 km flown twice at 360 km/h, 6 km a minute, are 6 minutes for a triangle. */
constexpr char kFlights[] =
    "[MAIN]|  TIME 12.5|  player r0101|[Wing]|  r0100|  r0101|[r0100]|  Planes 1|  StartTime 7|"
    "  Class air.Bf|[r0100_Way]|  TAKEOFF_005 10.00 20.00 0 0 &0|  TRIGGERS 0 15 20 0|"
    "  NORMFLY_401 1000.00 2000.00 500.00 360.00 &0|  TRIGGERS 1 0 0 6 0|"
    "  NORMFLY_402 1000.00 2000.00 500.00 360.00 &0|  TRIGGERS 9 4 90 6 0|"
    "  NORMFLY_405 1.00 2.00 500.00 360.00 &0|  triggers 0 12 0 0 0|"
    "  GATTACK nan 3.00 500.00 300.00 0_Chief 2 &0|  NORMFLY 5.00 6.00 500.00 300.00 &1 F2|"
    "  landing_104 10.00 20.00 0 0 &0|[r0101]|  Planes 1|  StartTime 7|[r0101_Way]|"
    "  NORMFLY 1 2 3 4 &0";

TEST(MapRoutes, ReadsTheLinesOfSettingsInBothWays) {
  test::World world;
  const auto routes = [&](const Mission& mission) {
    return RoutesOf(mission, world.Tables, world.Services);
  };
  Mission kept;
  ReadKeptMission(world.Doc, world.Services, kept, test::CrlfText(kFlights));
  const auto as = routes(kept);
  ASSERT_EQ(as.size(), 2U);
  EXPECT_EQ(Points(as[0]),
            "up 10,20 0 T15/0/0|to 1000,2000 1 T0/6/3|to 1000,2000 2 T0/4/4|"
            "to 1,2 3 T0/12/0|at nowhere 4 0_Chief.2|to 5,6 5|down 10,20 6");
  // A patrol has its side between two corners, and begins where it is told.
  const auto& corners = as[0].Points[1].Patrol;
  EXPECT_NEAR(DistanceOf(corners[0], corners[1]), 6000, 1e-6);
  EXPECT_NEAR(DistanceOf(corners[0], as[0].Points[1].At), 3464.1016, 1e-3);
  EXPECT_EQ(as[0].StartMinutes, 7);
  // The player never waits.
  EXPECT_TRUE(as[1].IsPlayer);
  EXPECT_EQ(as[1].StartMinutes, 0);

  // There the lines of settings are rows of the record, and a route ends at what is no number.
  const auto anew = routes(test::ReadLines(world, kFlights));
  ASSERT_EQ(anew.size(), 2U);
  EXPECT_EQ(Points(anew[0]),
            "up 10,20 0 T15/0/0|to 1000,2000 2 T0/6/3|to 1000,2000 4 T0/4/4|to 1,2 6 T0/12/0");
}

TEST(MapTexts, TellOfWhatIsUnderThePointer) {
  test::World world;
  Mission mission;
  ReadKeptMission(
      world.Doc, world.Services, mission,
      test::CrlfText(string(kFlights) +
                     "|[Chiefs]|  0_Chief Armor.T34 1|[0_Chief_Road]|  1 2 3|[NStationary]|"
                     "  0_Static vehicles.cars.Car$GAZ 2 1 2 180|  1_Static plain 0 1 2 0|"
                     "[Stationary]|  vehicles.stationary.Campfire$Fire 0 5 6 0|[StaticCamera]|"
                     "  1 2 3 2|[Target]|  3 1 0 0 0 1 2 450|  8 3 0 0 0 1 2|[BornPlace]|"
                     "  1 3000 1 2"));
  MapModel model;
  UpdateModel(model, mission, world.Tables, world.Services);
  const MapTextSources from{model, mission, world.Tables, world.Services};
  const std::pair<MapHit, const char*> rows[] = {
      {{MapHit::Waypoint, 0, 0}, "Waypoint 0 of r0100, Bf, No army: Take Off, 0 m, 12:37:00"},
      {{MapHit::Waypoint, 0, 1},
       "Waypoint 1 of r0100, Bf, No army: Normal Fly, 500 m, 360 km/h, 2.2 km and heading "
       "027\xC2\xB0 from the one before, 12:45:22, stays 6 min 00 s"},
      // Of a way from or to a place that is not known nothing is told.
      {{MapHit::Waypoint, 0, 4},
       "Waypoint 4 of r0100, Bf, No army: Ground Attack, 500 m, 300 km/h, no clock, target "
       "0_Chief"},
      {{MapHit::Waypoint, 0, 5},
       "Waypoint 5 of r0100, Bf, No army: Normal Fly, 500 m, 300 km/h, no clock"},
      {{MapHit::Route, 1, 0}, "r0101, , No army, the player's"},
      {{MapHit::BaseRim, 0, 0}, "Home base 1, Red army, radius 3 km"},
      {{MapHit::Unit, 0, 0}, "Armor.T34 (0_Chief), Red army"},
      {{MapHit::Object, 0, 0}, "Vehicle GAZ (0_Static), Blue army, heading 270\xC2\xB0"},
      {{MapHit::Object, 1, 0}, "Object plain (1_Static), heading 090\xC2\xB0"},
      {{MapHit::Object, 2, 0}, "Smoke Fire, heading 090\xC2\xB0"},
      {{MapHit::Object, 3, 0}, "Camera"},
      {{MapHit::Target, 0, 0}, "Target: Recon, secondary, radius 450 m"},
      {{MapHit::Target, 1, 0}, "Target"},
      {{}, ""}};
  for (const auto& [hit, text] : rows) EXPECT_EQ(HitText(from, hit), text);
}

TEST(MapModel, KnowsMapAndTimeWhereTheRecordHasOtherLines) {
  test::World world;
  test::ReadInto(world, test::CrlfText("[MAIN]|  MAP Kurland/load.ini|  TIME 12.5|[Wing]|"));
  Mission& mission = world.Doc.Missions[0];
  mission.MapPath = "1";
  mission.Time = "";
  MapModel model;
  UpdateModel(model, mission, world.Tables, world.Services);
  EXPECT_EQ(model.MapPath + " " + model.Time, "Kurland/load.ini 12.5");
}

TEST(MapModel, ShowsAllHomeBasesOfTheFile) {
  // Made anew from it, a mission holds the first base alone where bases have lists.
  const string text =
      "[MAIN]|[BornPlace]|  1 3000 10 20|  2 5000.5 x 1|  3 700 30 40|[BornPlace0]|  La-5|"
      "[BornPlace1]|  Yak-1|[End]|";
  for (const bool keeps : {false, true}) {
    SCOPED_TRACE(keeps);
    test::World world;
    test::ReadInto(world, test::CrlfText(text));
    Mission& mission = world.Doc.Missions[0];
    if (keeps) ReadKeptMission(world.Doc, world.Services, mission, test::CrlfText(text));
    mission.BornPlaces.at(0).Radius = 900;
    MapModel model;
    UpdateModel(model, mission, world.Tables, world.Services);
    const auto& bases = model.Scene.Bases;
    ASSERT_GE(bases.size(), 2u);
    EXPECT_EQ(bases.front().Radius, 900) << "the edit";
    EXPECT_EQ(bases.back().Base, 2u);
    EXPECT_EQ(PlaceOf(bases.back().At) + NumberText(bases.back().Radius), "30,40700");
  }
}

TEST(MapModel, MakesAnewOnlyWhatHasChanged) {
  test::World world;
  Mission mission;
  ReadKeptMission(world.Doc, world.Services, mission,
                  test::CrlfText(string(kFlights) +
                                 "|[NStationary]|  0_Static vehicles.cars.Car$GAZ 1 -500 90000 0|"
                                 "  1_Static vehicles.cars.Car$GAZ 1 9e9 0 0|"
                                 "[FrontMarker]|  FrontMarker0 0 0 1|  FrontMarker1 2000 0 2"));
  MapModel model;
  UpdateModel(model, mission, world.Tables, world.Services);
  const auto* objects = model.Scene.Things.Objects.data();
  // What lies beyond all maps does not count.
  EXPECT_EQ(model.Bounds.Left, -500);
  EXPECT_EQ(model.Bounds.Top, 90'000);
  EXPECT_EQ(model.Bounds.Right, 2000);
  ASSERT_EQ(model.Front.size(), 1U);
  EXPECT_NEAR(model.Front[0].first.X, 1000, 1e-6);
  mission.Flights[1].Waypoints[0].Line = "NORMFLY 300000 2 3 4 &0";
  UpdateModel(model, mission, world.Tables, world.Services);
  EXPECT_EQ(model.Scene.Things.Objects.data(), objects);
  EXPECT_EQ(model.Bounds.Right, 300'000);
  EXPECT_EQ(model.Clocks.size(), 2U);
}

}  // namespace
}  // namespace rws
