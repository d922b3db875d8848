#pragma once

#include <QImage>
#include <QPainter>
#include <cstdlib>

#include "map/forms/map_painter.h"

namespace rws::test {

/** A flight from (1000, 1000) by (5000, 1000) to (5000, 4000), 10 metres a pixel. */
inline MapRoute RouteOf(std::uint8_t army, std::vector<MapPoint> places) {
  MapRoute route;
  route.Army = army;
  route.Name = "r0100";
  for (const auto& place : places) {
    RoutePoint& point = route.Points.emplace_back();
    point.At = place;
    point.Speed = 300;
    point.Waypoint = route.Points.size() - 1;
  }
  route.Points.front().Shape = WaypointShape::TakeOff;
  return route;
}

/** Brings what follows from a scene up to it. */
inline void Complete(MapModel& model) {
  model.Clocks.clear();
  for (std::size_t i = 0; i < model.Scene.Routes.size(); ++i) {
    model.Scene.Routes[i].Flight = i;
    model.Clocks.push_back(ClockOf(model.Scene.Routes[i]));
  }
  model.Grid = ObjectGrid(model.Scene.Things.Objects);
}

inline MapModel SmallModel() {
  MapModel model;
  model.Scene.Routes.push_back(RouteOf(1, {{1000, 1000}, {5000, 1000}, {5000, 4000}}));
  model.Scene.Routes.push_back(RouteOf(2, {{2000, 3500}, {3500, 2500}}));
  model.Scene.Bases.push_back({3, {2000, 2000}, 600, 3});
  model.Bounds.Add({0, 0});
  model.Bounds.Add({6000, 5000});
  Complete(model);
  return model;
}

/** One thing on each layer, near the middle. */
inline MapModel ModelOfAll() {
  MapModel model = SmallModel();
  const auto add = [&](ObjectKind kind, double x) {
    MapObject object;
    object.At = {x, 2500};
    object.Kind = kind;
    object.Army = 2;
    model.Scene.Things.Objects.push_back(object);
  };
  add(ObjectKind::Aircraft, 3000);
  add(ObjectKind::Building, 3200);
  add(ObjectKind::Camera, 3400);
  add(ObjectKind::Artillery, 3600);
  MapUnit unit;
  unit.Road = {{{2500, 3000}, true, 0}, {{4000, 3000}, true, 0}};
  model.Scene.Things.Units.push_back(unit);
  model.Scene.Things.Targets.push_back({{4500, 2000}, 300, 0, 0, 0});
  model.Scene.Things.Bridges.push_back({{3000, 1500}, {3100, 1500}, 1});
  model.Front = {{{0, 4500}, {6000, 4600}}};
  Complete(model);
  return model;
}

/** 600 to 500 pixels, of which the lower left one is the origin of the map. */
inline MapShown ShownOf(const MapModel& model) {
  MapShown shown;
  shown.Model = &model;
  shown.Projection = {{3000, 2500}, 10, 600, 500};
  return shown;
}

template <class Paint>
QImage PictureOf(const MapShown& shown, Paint paint) {
  QImage image(int(shown.Projection.Width), int(shown.Projection.Height), QImage::Format_RGB32);
  image.fill(Qt::black);
  QPainter painter(&image);
  paint(painter);
  return image;
}
inline QImage GroundOf(const MapShown& shown) {
  return PictureOf(shown, [&](QPainter& painter) { PaintMapGround(painter, shown); });
}

/** Pixels that look otherwise: a rim that is smoothed a bit differently does not. */
inline int Difference(const QImage& a, const QImage& b) {
  constexpr int kTolerance = 96;
  int count = a.size() == b.size() ? 0 : a.width() * a.height();
  if (count) return count;
  for (int y = 0; y < a.height(); ++y)
    for (int x = 0; x < a.width(); ++x) {
      const QRgb p = a.pixel(x, y), q = b.pixel(x, y);
      count += std::abs(qRed(p) - qRed(q)) + std::abs(qGreen(p) - qGreen(q)) +
                   std::abs(qBlue(p) - qBlue(q)) >
               kTolerance;
    }
  return count;
}

}  // namespace rws::test
