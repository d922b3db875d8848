#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "catalogues/catalogues.h"
#include "mission/document.h"
#include "services/services.h"

namespace rws {

/** By how much each copy of a flight differs from the one before. */
struct WaypointOffsets {
  std::int16_t Distance = 0;  // metres, on both axes
  std::int16_t Alt = 0;       // metres
  std::int16_t Speed = 0;     // km/h, of the waypoint before a landing
};

/** Moves a route by the offsets. Take-off and landing stay at their airfield, also those of later
    versions of the game ("LANDING_104"); a ground attack of exactly six words loses its target. A
    waypoint without two coordinates stays as it is, and so does a line of triggers, which is no
    waypoint. */
void OffsetWaypoints(std::vector<Waypoint>& waypoints, const WaypointOffsets& offsets);

/** Gives each flight of status "grp" the route of the flight at `source`, the first moved once by
    the offsets, the second twice and so on; the status of all of them is cleared. */
void ApplyGroupWaypoints(std::vector<Flight>& flights, std::ptrdiff_t source,
                         const WaypointOffsets& offsets);

/** Adds copies of the current flight to its mission, each with a name of its own, a route further
    off and, where its aircraft has one, a companion. False, logged, if it failed; what was added
    stays. */
bool DuplicateFlight(Document& doc, const Catalogues& tables, const Services& services,
                     const WaypointOffsets& offsets, int count);

}  // namespace rws
