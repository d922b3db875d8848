#include "map/forms/map_painter.h"

#include <gtest/gtest.h>

#include <limits>

#include "map/forms/map_backing.h"
#include "map/forms/map_colors.h"
#include "map/forms/map_legend.h"
#include "tests/map/forms/small_scene.h"
#include "tests/support/sandbox.h"

namespace rws::test {
namespace {

MapLayers Only(std::initializer_list<MapLayer> shown) {
  MapLayers layers;
  layers.Shown.fill(false);
  for (const auto layer : shown) layers.Shown[static_cast<std::size_t>(layer)] = true;
  return layers;
}

TEST(MapPainter, PaintsWhatAHandWouldDraw) {
  const MapModel model = SmallModel();
  MapShown shown = ShownOf(model);
  shown.Layers = Only({MapLayer::Routes, MapLayer::HomeBases});
  const QImage painted = GroundOf(shown);
  // Drawn beside the painter: lines of flights, a circle of 60 pixels, marks of the points.
  const auto expected = [&](double shift) {
    return PictureOf(shown, [&](QPainter& painter) {
      painter.fillRect(painted.rect(), GroundColor(false));
      painter.translate(shift, 0);
      painter.setRenderHint(QPainter::Antialiasing);
      painter.setPen(QPen(BaseColor(3, false), 1.5));
      painter.drawEllipse(QPointF(200, 300), 60, 60);
      painter.setPen(QPen(Faint(ArmyColor(1, false), false, 0.6), 1));
      painter.drawPolyline(QPolygonF({{100, 400}, {500, 400}, {500, 100}}));
      painter.setPen(QPen(Faint(ArmyColor(2, false), false, 0.6), 1));
      painter.drawLine(200, 150, 350, 250);
      painter.setBrush(ArmyColor(1, false));
      painter.setPen(Qt::NoPen);
      painter.drawPolygon(QPolygonF({{100, 396.5}, {103.5, 403}, {96.5, 403}}));
      painter.drawEllipse(QPointF(500, 400), 3, 3);
      painter.drawEllipse(QPointF(500, 100), 3, 3);
    });
  };
  // Of the name beside the centre and of small marks some pixels may differ; more on Windows, whose
  // letters are others.
  const int few = kPosixFiles ? 330 : 600;
  EXPECT_LT(Difference(painted, expected(0)), few);
  EXPECT_GT(Difference(painted, expected(2)), 2 * few);
}

TEST(MapPainter, EachLayerIsPaintedAndToldAloneAndNotWithoutItself) {
  const MapModel model = ModelOfAll();
  MapUnderlay underlay{QImage(10, 10, QImage::Format_RGB32), {0, 0, 2000, 2000}, 0.5};
  underlay.Picture.fill(Qt::darkGreen);
  MapShown shown = ShownOf(model);
  shown.Underlay = &underlay;
  shown.Layers = Only({});
  const QImage bare = GroundOf(shown);
  EXPECT_TRUE(LegendOf(model, shown.Layers).empty());
  for (std::size_t i = 0; i < kMapLayers; ++i) {
    SCOPED_TRACE(kMapLayerNames[i]);
    const auto layer = static_cast<MapLayer>(i);
    shown.Layers = Only({layer});
    EXPECT_GT(
        Difference(bare, GroundOf(shown)) + (layer == MapLayer::Grid && bare != GroundOf(shown)),
        0);
    EXPECT_EQ(LegendOf(model, shown.Layers).empty(),
              layer == MapLayer::Grid || layer == MapLayer::Picture);
  }
}

TEST(MapPainter, WhatIsFarOffOrNowhereDoesNoHarm) {
  constexpr double kFar = 1e9, kNan = std::numeric_limits<double>::quiet_NaN();
  MapModel model = SmallModel();
  MapShown shown = ShownOf(model);
  const QImage before = GroundOf(shown);
  // Straight up from a point that is seen, and things that are not seen at all.
  model.Scene.Routes.push_back(RouteOf(1, {{4000, 2000}, {4000, kFar}, {-kFar, kFar}}));
  model.Scene.Routes.push_back(RouteOf(2, {{kFar, kFar}}));
  model.Scene.Routes.push_back(RouteOf(2, {{kNan, kNan}, {100, 100}}));
  model.Scene.Routes.back().Points[0].HasPlace = false;
  model.Scene.Bases.push_back({1, {-kFar, -kFar}, 10, 1});
  model.Scene.Bases.push_back({1, {kFar, 2500}, kFar - 5900, 1});
  model.Scene.Things.Targets.push_back({{kFar, -kFar}, 5, 0, 0, 0});
  Complete(model);
  const QImage after = GroundOf(shown);
  // A line of 300 pixels and the rim of a huge circle along the picture, each two wide, and marks.
  EXPECT_NEAR(Difference(before, after), 2 * (300 + 500), 120);
  EXPECT_NE(after.pixelColor(400, 150), before.pixelColor(400, 150));
  EXPECT_NE(after.pixelColor(590, 100), before.pixelColor(590, 100));
  shown.Selection.Route = model.Scene.Routes.size() - 1;
  shown.Minute = 10;
  shown.Projection.Centre = {kFar, kFar};
  PictureOf(shown, [&](QPainter& painter) { PaintMap(painter, shown); });
}

TEST(MapPainter, ThingsOnOneSpotArePaintedOnce) {
  MapModel one = ModelOfAll();
  MapModel many = ModelOfAll();
  for (int i = 0; i < 1000; ++i)
    many.Scene.Things.Objects.push_back(many.Scene.Things.Objects.front());
  Complete(many);
  EXPECT_EQ(GroundOf(ShownOf(one)), GroundOf(ShownOf(many)));
}

TEST(MapBacking, AMovedMapLooksAsPaintedAnew) {
  const MapModel model = ModelOfAll();
  for (const double scale : {1.0, 1.5, 2.0}) {
    MapShown shown = ShownOf(model);
    MapBacking moved;
    moved.Picture(shown, scale);
    for (const auto& [dx, dy] :
         {std::pair(37.0, 0.0), {0.0, -45.3}, {-120.7, 61.0}, {700.0, 9.0}}) {
      SCOPED_TRACE(testing::Message() << scale << ": " << dx << ", " << dy);
      double right = dx, down = dy;
      shown.Projection = PannedByPixels(shown.Projection, right, down, scale);
      MapBacking anew;
      EXPECT_EQ(Difference(moved.Picture(shown, scale), anew.Picture(shown, scale)), 0);
    }
  }
}

}  // namespace
}  // namespace rws::test
