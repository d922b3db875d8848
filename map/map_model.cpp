#include "map/map_model.h"

#include <algorithm>
#include <cmath>

#include "map/front_line.h"
#include "map/map_routes.h"
#include "map/map_things.h"
#include "mission/kept_text.h"
#include "services/numbers.h"

namespace rws {

namespace {

/** The farthest that the game lets a flight go. What lies beyond is no reason to show the mission
   as a dot. */
constexpr double kFarthest = 1'000'000;
constexpr double kAroundFront = 50'000;

void AddNear(MapBounds& bounds, MapPoint at, double radius = 0) {
  if (std::fabs(at.X) <= kFarthest && std::fabs(at.Y) <= kFarthest)
    bounds.Add(at, std::min(radius, kFarthest));
}

MapBounds BoundsOf(const MapThings& things) {
  MapBounds bounds;
  for (const auto& object : things.Objects) AddNear(bounds, object.At);
  for (const auto& unit : things.Units)
    for (const auto& point : unit.Road) AddNear(bounds, point.At);
  for (const auto& target : things.Targets) AddNear(bounds, target.At, target.Radius);
  for (const auto& marker : things.Markers) AddNear(bounds, marker.At);
  return bounds;
}

void AddBounds(MapBounds& bounds, const MapBounds& more) {
  if (more.IsEmpty()) return;
  bounds.Add({more.Left, more.Bottom});
  bounds.Add({more.Right, more.Top});
}

MapBounds Wider(MapBounds bounds, double by) {
  return {bounds.Left - by, bounds.Bottom - by, bounds.Right + by, bounds.Top + by};
}

void UpdateThings(MapModel& model, const LineArray& lines) {
  MapThings& things = model.Scene.Things;
  if (things.Lines.SharesWith(lines) && !lines.empty()) return;
  things = ThingsOf(lines);
  model.Grid = ObjectGrid(things.Objects);
  model.ThingBounds = BoundsOf(things);
  model.Front.clear();
}

void UpdateBounds(MapModel& model) {
  MapBounds bounds = model.ThingBounds;
  for (const auto& route : model.Scene.Routes) AddBounds(bounds, BoundsOf(route));
  for (const auto& base : model.Scene.Bases) AddNear(bounds, base.At, base.Radius);
  const bool grown = model.Front.empty() || !bounds.IsEmpty() != !model.Bounds.IsEmpty() ||
                     bounds.Left < model.Bounds.Left || bounds.Right > model.Bounds.Right ||
                     bounds.Bottom < model.Bounds.Bottom || bounds.Top > model.Bounds.Top;
  model.Bounds = bounds;
  if (grown)
    model.Front = FrontLineOf(model.Scene.Things.Markers,
                              bounds.IsEmpty() ? bounds : Wider(bounds, kAroundFront));
}

const RoadPoint& SetPoint(const MapUnit& unit, int point) {
  const RoadPoint* found = &unit.Road.front();
  for (const auto& each : unit.Road) {
    if (!each.IsSet) continue;
    found = &each;
    if (point-- <= 0) break;
  }
  return *found;
}

std::optional<int> BridgeNumber(std::string_view name) {
  constexpr std::string_view kBridge = "Bridge";
  constexpr std::size_t kMostDigits = 6;
  if (!name.starts_with(kBridge)) return {};
  name.remove_prefix(kBridge.size());
  if (name.empty() || name.size() > kMostDigits ||
      !std::all_of(name.begin(), name.end(), [](char c) { return c >= '0' && c <= '9'; }))
    return {};
  return std::stoi(std::string(name));
}

/** A value of "[MAIN]": the record of a mission that is made anew may have taken another line for
   the one that holds it. */
std::string MainValue(const Mission& mission, std::string_view key) {
  const KeptText text(mission.Lines);
  const KeptSection* main = text.Find("MAIN");
  return main ? std::string(text.ValueOf(*main, key)) : "";
}

}  // namespace

MapBounds BoundsOf(const MapRoute& route) {
  MapBounds bounds;
  for (const auto& point : route.Points)
    if (point.HasPlace) AddNear(bounds, point.At);
  return bounds;
}

void UpdateModel(MapModel& model, const Mission& mission, const Catalogues& tables,
                 const Services& services) {
  UpdateThings(model, mission.Lines);
  model.Scene.Routes = RoutesOf(mission, tables, services);
  model.Scene.Bases = BasesOf(mission, model.Scene.Things.Bases);
  model.Clocks.clear();
  for (const auto& route : model.Scene.Routes) model.Clocks.push_back(ClockOf(route));
  UpdateBounds(model);
  model.Time = ParseNumber(mission.Time) ? mission.Time : MainValue(mission, "TIME");
  const bool isPath = mission.MapPath.find('/') != std::string::npos;
  model.MapPath = isPath ? mission.MapPath : MainValue(mission, "MAP");
  model.MapName = mission.MapName;
}

std::optional<MapPoint> PlaceOf(const MapScene& scene, std::string_view name, int point) {
  if (name.empty()) return {};
  for (const auto& route : scene.Routes) {
    if (route.Name != name || route.Points.empty()) continue;
    const auto last = route.Points.size() - 1;
    const RoutePoint& at =
        route.Points[std::min(static_cast<std::size_t>(std::max(point, 0)), last)];
    return at.HasPlace ? std::optional(at.At) : std::nullopt;
  }
  // Of two columns with one name the last answers to it.
  const auto& units = scene.Things.Units;
  const auto unit = std::find_if(units.rbegin(), units.rend(),
                                 [&](const MapUnit& each) { return each.Name == name; });
  if (unit != units.rend()) return SetPoint(*unit, point).At;
  const auto object = scene.Things.ByName.find(name);
  if (object != scene.Things.ByName.end()) return scene.Things.Objects[object->second].At;
  if (const auto number = BridgeNumber(name))
    for (const auto& bridge : scene.Things.Bridges)
      if (bridge.Number == *number) return Between(bridge.From, bridge.To, 0.5);
  return {};
}

}  // namespace rws
