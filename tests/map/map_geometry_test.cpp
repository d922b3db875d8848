#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "map/front_line.h"
#include "map/map_hit.h"
#include "map/map_units.h"
#include "tests/support/doubles.h"

namespace rws {
namespace {

using std::string;

TEST(MapUnits, AreThoseOfTheUser) {
  const struct {
    string Text, Expected;
  } rows[] = {{DistanceText(850, true), "850 m"},      {DistanceText(999.6, true), "1 km"},
              {DistanceText(12'345, true), "12.3 km"}, {DistanceText(99'950, true), "100 km"},
              {DistanceText(805, false), "0.5 miles"}, {DistanceText(200'000, false), "124 miles"},
              {HeightText(1500, true), "1500 m"},      {HeightText(1500, false), "4921 feet"},
              {SpeedText(350, true), "350 km/h"},      {SpeedText(350, false), "217 mph"},
              {HeadingText(45), "045\xC2\xB0"},        {HeadingText(359.7), "000\xC2\xB0"},
              {HeadingText(-90), "270\xC2\xB0"},       {MinutesText(0.75), "45 s"},
              {MinutesText(10.0 / 3), "3 min 20 s"},   {MinutesText(59.999), "1 h 00 min"},
              {MinutesText(65), "1 h 05 min"}};
  for (const auto& row : rows) EXPECT_EQ(row.Text, row.Expected);
}

/** 20 km by 10 km around (10 km, 5 km). */
constexpr MapProjection kView{{10'000, 5000}, 50, 400, 200};

void ExpectPoint(MapPoint point, double x, double y) {
  EXPECT_NEAR(point.X, x, 1e-6);
  EXPECT_NEAR(point.Y, y, 1e-6);
}

TEST(MapProjection, GoesToThePictureAndBack) {
  const ScreenPoint at = kView.ToScreen({12'500, 7500});
  EXPECT_EQ(at.X, 250);
  EXPECT_EQ(at.Y, 50);
  ExpectPoint(kView.ToMap(at), 12'500, 7500);
  const MapBounds seen = kView.Seen(10);
  EXPECT_EQ(seen.Left, -500);
  EXPECT_EQ(seen.Bottom, -500);
  EXPECT_EQ(seen.Right, 20'500);
  EXPECT_EQ(seen.Top, 10'500);
  ExpectPoint(Panned(kView, 20, -10).Centre, 9000, 4500);
}

TEST(MapProjection, ZoomKeepsThePlaceUnderThePointer) {
  const struct {
    double Factor, Scale;
  } rows[] = {{2, 25}, {0.5, 100}, {1e9, kFinestScale}, {1e-9, kCoarsestScale}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Factor);
    const MapProjection zoomed = ZoomedAt(kView, {100, 50}, row.Factor);
    EXPECT_EQ(zoomed.MetresPerPixel, row.Scale);
    ExpectPoint(zoomed.ToMap({100, 50}), 5000, 7500);
  }
}

TEST(MapProjection, FitsBounds) {
  const MapProjection wide = FitInto(kView, {0, 0, 36'000, 8000}, 20);
  EXPECT_EQ(wide.MetresPerPixel, 100);
  ExpectPoint(wide.Centre, 18'000, 4000);
  const MapProjection high = FitInto(kView, {0, 0, 100, 32'000}, 20);
  EXPECT_EQ(high.MetresPerPixel, 200);
  EXPECT_EQ(FitInto(kView, {7, 8, 7, 8}, 20).MetresPerPixel, 100);
  EXPECT_EQ(FitInto(kView, {7, 8, 7.1, 8}, 20).MetresPerPixel, kFinestScale);
  // More margin than picture.
  EXPECT_EQ(FitInto(kView, {0, 0, 1000, 0}, 500).MetresPerPixel, 1000);
  ExpectPoint(FitInto(kView, {}, 20).Centre, 10'000, 5000);
}

TEST(MapProjection, GridAndScaleBarAreRound) {
  const auto at = [](double scale) { return MapProjection{{}, scale, 400, 200}; };
  const struct {
    double Scale, Pixels, Step;
  } steps[] = {{50, 80, 5000}, {50, 100, 5000}, {50, 101, 10'000}, {1, 80, 100}, {2.5, 80, 200}};
  for (const auto& row : steps)
    EXPECT_NEAR(GridStep(at(row.Scale), row.Pixels), row.Step, 1e-6) << row.Scale;
  const struct {
    double Scale;
    bool Metric;
    const char* Text;
    double Pixels;
  } bars[] = {{100, true, "10 km", 100},
              {1, true, "100 m", 100},
              {10, true, "1 km", 100},
              {100, false, "5 miles", 80.4672},
              {1, false, "200 feet", 60.96}};
  for (const auto& row : bars) {
    const ScaleBar bar = ScaleBarOf(at(row.Scale), 150, row.Metric);
    EXPECT_EQ(bar.Text, row.Text);
    EXPECT_NEAR(bar.Pixels, row.Pixels, 1e-4);
  }
}

double LengthOf(const std::vector<std::pair<MapPoint, MapPoint>>& front) {
  double length = 0;
  for (const auto& [from, to] : front) length += DistanceOf(from, to);
  return length;
}

TEST(FrontLine, LiesBetweenTheMarkersOfTwoArmies) {
  const MapBounds bounds{-50'000, -50'000, 50'000, 50'000};
  const FrontMarker red{{0, 0}, 1}, east{{10'000, 0}, 2}, north{{0, 10'000}, 2};
  const auto two = FrontLineOf({red, east}, bounds);
  ASSERT_EQ(two.size(), 1U);
  for (const MapPoint end : {two[0].first, two[0].second}) {
    EXPECT_NEAR(end.X, 5000, 1e-6);
    EXPECT_NEAR(std::fabs(end.Y), 50'000, 1e-6);
  }
  // It turns where all three are equally far; between two of one army there is none.
  const auto three = FrontLineOf({red, east, north}, bounds);
  EXPECT_EQ(three.size(), 2U);
  EXPECT_NEAR(LengthOf(three), 110'000, 1e-3);
  for (const auto& [from, to] : three) {
    const MapPoint middle = Between(from, to, 0.5);
    EXPECT_NEAR(DistanceOf(middle, red.At),
                std::min(DistanceOf(middle, east.At), DistanceOf(middle, north.At)), 1e-6);
  }
  EXPECT_TRUE(FrontLineOf({east, north}, bounds).empty());
  EXPECT_TRUE(FrontLineOf({red}, bounds).empty());
  EXPECT_TRUE(FrontLineOf({}, bounds).empty());
  EXPECT_TRUE(FrontLineOf({red, east}, {}).empty());
  // Of two on one spot the first counts: else the front would begin and end in the open.
  EXPECT_TRUE(FrontLineOf({{{-10'000, 0}, 1}, red, {red.At, 2}, {north.At, 1}}, bounds).empty());
  EXPECT_NEAR(LengthOf(FrontLineOf({red, {red.At, 2}, {{10'000, 0}, 3}}, bounds)), 100'000, 1e-3);
  // A marker beyond the bounds can still own a part of them.
  EXPECT_NEAR(LengthOf(FrontLineOf({red, {{60'000, 0}, 2}}, bounds)), 100'000, 1e-3);
  EXPECT_TRUE(FrontLineOf({red, {{600'000, 0}, 2}}, bounds).empty());
}

TEST(FrontLine, IsWhereTheNearestMarkersAreOfTwoArmies) {
  std::mt19937 random(7);
  std::uniform_real_distribution<double> place(-40'000, 40'000);
  std::vector<FrontMarker> markers;
  for (int i = 0; i < 60; ++i)
    markers.push_back({{place(random), place(random)}, static_cast<std::uint8_t>(1 + i % 2)});
  const auto nearest = [&](MapPoint at, std::uint8_t army) {
    double least = HUGE_VAL;
    for (const auto& marker : markers)
      if (marker.Army == army) least = std::min(least, DistanceOf(at, marker.At));
    return least;
  };
  const auto front = FrontLineOf(markers, {-50'000, -50'000, 50'000, 50'000});
  EXPECT_GT(front.size(), 20U);
  for (const auto& [from, to] : front)
    for (const double part : {0.1, 0.5, 0.9}) {
      const MapPoint at = Between(from, to, part);
      EXPECT_NEAR(nearest(at, 1), nearest(at, 2), 1e-3);
    }
}

TEST(ObjectGrid, FindsAllWithinAndLittleElse) {
  std::mt19937 random(3);
  std::uniform_real_distribution<double> place(0, 200'000);
  std::vector<MapObject> objects(4000);
  for (auto& object : objects) object.At = {place(random), place(random)};
  objects[5].At = {1e7, -1e7};
  objects[9].At = {-1e300, 3};
  const MapBounds asked[] = {{50'000, 50'000, 60'000, 60'000},
                             {-1e9, -1e9, 1e9, 1e9},
                             {-1e308, 0, -1e7, 10},
                             {9e6, -2e7, 2e7, 0},
                             {60'000, 50'000, 50'000, 60'000}};
  const ObjectGrid grid(objects);
  for (const auto& bounds : asked) {
    SCOPED_TRACE(bounds.Left);
    std::vector<int> visits(objects.size());
    grid.Within(bounds, [&](std::size_t index) { ++visits[index]; });
    for (std::size_t i = 0; i < objects.size(); ++i) {
      EXPECT_GE(visits[i], bounds.Holds(objects[i].At) ? 1 : 0) << i;
      EXPECT_LE(visits[i], 1) << i;
    }
  }
  std::size_t looked = 0;
  ObjectGrid(std::vector<MapObject>(objects.begin() + 10, objects.end()))
      .Within(asked[0], [&](std::size_t) { ++looked; });
  EXPECT_LT(looked, 100U);
  ObjectGrid().Within(asked[1], [](std::size_t) { FAIL(); });
  std::size_t one = 0;
  ObjectGrid({MapObject{}}).Within({-1, -1, 1, 1}, [&](std::size_t) { ++one; });
  EXPECT_EQ(one, 1U);
}

/** At 100 metres a pixel, with (x, y) kilometres at pixel (10 x, 200 - 10 y). */
class Hit : public testing::Test {
 protected:
  Hit() {
    for (int i = 0; i < 2; ++i) {
      auto& points = Model.Scene.Routes.emplace_back().Points;
      points.resize(3);  // no room behind the last, where nothing may be looked for
      for (std::size_t k = 0; k < 3; ++k) points[k].At = {2000 + 8000.0 * k, 5000};
    }
    Model.Scene.Routes[1].Points[2].At = {18'000, 15'000};
    Model.Scene.Bases = {{0, {30'000, 10'000}, 3000, 1}};
    Model.Scene.Things.Objects = {{{2200, 5000}, 0, ObjectKind::Vehicle, 1, 0},
                                  {{6000, 5100}, 0, ObjectKind::Building, 1, 0},
                                  {{6000, 12'000}, 0, ObjectKind::Building, 1, 0}};
    Model.Grid = ObjectGrid(Model.Scene.Things.Objects);
    Model.Scene.Things.Targets = {{{30'500, 15'000}, 500, 0, 0, 0}};
    MapUnit& unit = Model.Scene.Things.Units.emplace_back();
    unit.Road = {{{1000, 18'000}, true, 0}, {{9000, 18'000}, true, 0}};
  }
  MapHit At(double x, double y, std::optional<std::size_t> selected = {}) const {
    return HitAt(Model, View, View.ToScreen({x, y}), Layers, selected, 6);
  }

  MapModel Model;
  MapLayers Layers;
  MapProjection View{{20'000, 10'000}, 100, 400, 200};
};

TEST_F(Hit, TakesWhatIsNearestAndMattersMost) {
  const struct {
    const char* What;
    double X, Y;
    std::optional<std::size_t> Selected;
    MapHit Expected;
  } rows[] = {
      {"a waypoint before an object", 2200, 5000, {}, {MapHit::Waypoint, 1, 0}},
      {"the selected flight's before another's", 2200, 5000, 0, {MapHit::Waypoint, 0, 0}},
      {"an object before a line", 6000, 5050, {}, {MapHit::Object, 1, 0}},
      {"but for the selected flight's", 6000, 5050, 0, {MapHit::Route, 0, 0}},
      {"the second leg", 14'000, 10'200, {}, {MapHit::Route, 1, 1}},
      {"a base by its centre", 30'100, 10'100, {}, {MapHit::BaseCentre, 0, 0}},
      {"and by its rim", 30'000, 12'800, {}, {MapHit::BaseRim, 0, 0}},
      {"nothing within a base", 31'500, 10'000, {}, {}},
      {"a target", 30'200, 15'000, {}, {MapHit::Target, 0, 0}},
      {"a column on its road", 5000, 18'400, {}, {MapHit::Unit, 0, 0}},
      {"nothing", 36'000, 1000, {}, {}},
      {"a flight that is not there", 6000, 12'000, 99, {MapHit::Object, 2, 0}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.What);
    const MapHit hit = At(row.X, row.Y, row.Selected);
    EXPECT_EQ(hit.Is, row.Expected.Is);
    EXPECT_EQ(hit.Point, row.Expected.Point);
    // Of two flights at one place either will do.
    EXPECT_TRUE(hit.Index == row.Expected.Index || (!row.Selected && hit.Is == MapHit::Waypoint));
  }
}

TEST_F(Hit, LeavesOutWhatIsNotShown) {
  const auto hide = [&](MapLayer layer) { Layers.Shown[static_cast<std::size_t>(layer)] = false; };
  hide(MapLayer::Routes);
  EXPECT_EQ(At(2200, 5000, 0), (MapHit{MapHit::Object, 0, 0}));
  hide(MapLayer::Buildings);
  EXPECT_EQ(At(6000, 12'000), MapHit());
  hide(MapLayer::HomeBases);
  EXPECT_EQ(At(30'000, 10'000), MapHit());
  Model.Scene.Routes[0].Points[0].HasPlace = false;
  Layers = {};
  EXPECT_EQ(At(2000, 5000, 0).Index, 1U);
}

}  // namespace
}  // namespace rws
