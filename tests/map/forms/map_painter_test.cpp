#include "map/forms/map_painter.h"

#include <gtest/gtest.h>

#include "map/forms/map_backing.h"
#include "map/forms/map_legend.h"
#include "tests/map/forms/small_scene.h"

namespace rws::test {
namespace {

MapLayers Only(std::initializer_list<MapLayer> shown) {
  MapLayers layers;
  layers.Shown.fill(false);
  for (const auto layer : shown) layers.Shown[static_cast<std::size_t>(layer)] = true;
  return layers;
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
    EXPECT_NE(bare, GroundOf(shown));
    EXPECT_EQ(LegendOf(model, shown.Layers).empty(),
              layer == MapLayer::Grid || layer == MapLayer::Picture);
  }
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
  MapBacking moved;
  for (const double scale : {1.0, 1.5, 2.0}) {
    MapShown shown = ShownOf(model);
    MapBacking first;
    EXPECT_EQ(Difference(moved.Picture(shown, scale), first.Picture(shown, scale)), 0);
    for (const auto& [dx, dy] :
         {std::pair(-237.0, 0.0), {0.0, -46.3}, {-120.7, 61.0}, {700.0, 9.0}}) {
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
