#pragma once

#include <cstddef>
#include <optional>

#include "map/map_layers.h"
#include "map/map_model.h"
#include "map/map_projection.h"

namespace rws {

/** What of the map is under the pointer. */
struct MapHit {
  enum What { Nothing, Waypoint, Route, BaseCentre, BaseRim, Unit, Object, Target };
  What Is = Nothing;
  /** Index in the scene: of a route, a base, a unit, an object, a target. */
  std::size_t Index = 0;
  /** Of a waypoint: which point of the route; of a route: the point that the leg begins at. */
  std::size_t Point = 0;

  bool operator==(const MapHit&) const = default;
};

/** The nearest thing within so many pixels of a place. What belongs to the selected flight goes
    before all else, then points before lines, and what is shown alone counts. */
MapHit HitAt(const MapModel& model, const MapProjection& projection, ScreenPoint at,
             const MapLayers& layers, std::optional<std::size_t> selected, double tolerance);

}  // namespace rws
