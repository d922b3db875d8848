#include "map/map_hit.h"

#include <cmath>

namespace rws {

namespace {

/** Keeps the nearest of what is near enough. */
class Nearest {
 public:
  Nearest(MapPoint at, double reach) : at_(at), reach_(reach) {}

  const MapHit& Hit() const { return hit_; }
  bool Found() const { return hit_.Is != MapHit::Nothing; }
  MapPoint At() const { return at_; }
  double Reach() const { return reach_; }

  void Take(double metres, const MapHit& hit) {
    if (!(metres <= reach_)) return;
    reach_ = metres;
    hit_ = hit;
  }

 private:
  MapPoint at_;
  double reach_;
  MapHit hit_;
};

void TakeWaypoints(Nearest& nearest, const MapScene& scene, std::size_t route) {
  const auto& points = scene.Routes[route].Points;
  for (std::size_t i = 0; i < points.size(); ++i)
    if (points[i].HasPlace)
      nearest.Take(DistanceOf(nearest.At(), points[i].At), {MapHit::Waypoint, route, i});
}

void TakeLegs(Nearest& nearest, const MapScene& scene, std::size_t route) {
  const auto& points = scene.Routes[route].Points;
  for (std::size_t i = 1; i < points.size(); ++i)
    if (points[i - 1].HasPlace && points[i].HasPlace)
      nearest.Take(DistanceToLine(nearest.At(), points[i - 1].At, points[i].At),
                   {MapHit::Route, route, i - 1});
}

void TakeObjects(Nearest& nearest, const MapModel& model, const MapLayers& layers) {
  const MapPoint at = nearest.At();
  MapBounds around;
  around.Add(at, nearest.Reach());
  model.Grid.Within(around, [&](std::size_t index) {
    const MapObject& object = model.Scene.Things.Objects[index];
    if (layers[LayerOf(object.Kind)])
      nearest.Take(DistanceOf(at, object.At), {MapHit::Object, index, 0});
  });
}

void TakeUnits(Nearest& nearest, const MapScene& scene) {
  for (std::size_t i = 0; i < scene.Things.Units.size(); ++i) {
    const auto& road = scene.Things.Units[i].Road;
    nearest.Take(DistanceOf(nearest.At(), road.front().At), {MapHit::Unit, i, 0});
    for (std::size_t k = 1; k < road.size(); ++k)
      nearest.Take(DistanceToLine(nearest.At(), road[k - 1].At, road[k].At), {MapHit::Unit, i, 0});
  }
}

}  // namespace

MapHit HitAt(const MapModel& model, const MapProjection& projection, ScreenPoint at,
             const MapLayers& layers, std::optional<std::size_t> selected, double tolerance) {
  const MapScene& scene = model.Scene;
  const MapPoint place = projection.ToMap(at);
  const double reach = tolerance * projection.MetresPerPixel;
  if (selected && *selected >= scene.Routes.size()) selected.reset();
  // Each is asked only when none before it has found anything.
  const auto first = [&](auto... takes) {
    MapHit hit;
    const auto one = [&](auto take) {
      if (hit.Is != MapHit::Nothing) return;
      Nearest nearest(place, reach);
      take(nearest);
      hit = nearest.Hit();
    };
    (one(takes), ...);
    return hit;
  };
  const bool routes = layers[MapLayer::Routes], bases = layers[MapLayer::HomeBases];
  return first(
      [&](Nearest& n) {
        if (routes && selected) TakeWaypoints(n, scene, *selected);
      },
      [&](Nearest& n) {
        for (std::size_t i = 0; i < scene.Routes.size() && routes; ++i) TakeWaypoints(n, scene, i);
      },
      [&](Nearest& n) {
        for (std::size_t i = 0; i < scene.Bases.size() && bases; ++i)
          n.Take(DistanceOf(place, scene.Bases[i].At), {MapHit::BaseCentre, i, 0});
      },
      [&](Nearest& n) {
        if (routes && selected) TakeLegs(n, scene, *selected);
      },
      [&](Nearest& n) { TakeObjects(n, model, layers); },
      [&](Nearest& n) {
        for (std::size_t i = 0; i < scene.Routes.size() && routes; ++i) TakeLegs(n, scene, i);
      },
      [&](Nearest& n) {
        for (std::size_t i = 0; i < scene.Things.Targets.size() && layers[MapLayer::Targets]; ++i)
          n.Take(DistanceOf(place, scene.Things.Targets[i].At), {MapHit::Target, i, 0});
      },
      [&](Nearest& n) {
        if (layers[MapLayer::Units]) TakeUnits(n, scene);
      },
      [&](Nearest& n) {
        for (std::size_t i = 0; i < scene.Bases.size() && bases; ++i)
          n.Take(std::fabs(DistanceOf(place, scene.Bases[i].At) - scene.Bases[i].Radius),
                 {MapHit::BaseRim, i, 0});
      });
}

}  // namespace rws
