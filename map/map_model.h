#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "catalogues/catalogues.h"
#include "map/flight_clock.h"
#include "map/map_scene.h"
#include "map/object_grid.h"
#include "mission/records.h"
#include "services/services.h"

namespace rws {

/** A mission as the map shows it: what is where, and what follows from that, each worked out once.
 */
struct MapModel {
  MapScene Scene;
  std::vector<FlightClock> Clocks;  // one for each route
  ObjectGrid Grid;                  // of `Scene.Things.Objects`
  std::vector<std::pair<MapPoint, MapPoint>> Front;
  /** All that has a place the game can know: within 1000 km. */
  MapBounds Bounds;
  MapBounds ThingBounds;
  std::string Time;  // decimal hours
  std::string MapPath, MapName;
};

/** Brings a model up to a mission. Only what has changed is made anew: edits of flights and home
    bases leave the things that stand in the lines alone. */
void UpdateModel(MapModel& model, const Mission& mission, const Catalogues& tables,
                 const Services& services);

/** The place of an object that a waypoint names, at a point of its own route; nothing for an
   unknown one. The names of objects are told apart by letter case, as in the game. */
std::optional<MapPoint> PlaceOf(const MapScene& scene, std::string_view name, int point);

/** All that a route reaches: its own points. Empty for one without a place. */
MapBounds BoundsOf(const MapRoute& route);

}  // namespace rws
