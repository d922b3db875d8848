#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "map/geometry.h"
#include "mission/document.h"

/** Edits of where flights go. Flights and waypoints count from 0; one that is not there is a
    subscript fault, and nothing is changed then. Coordinates are written as the game's builder
   writes them, with two decimals, in the words where they stand; the rest of a line is kept. The
   missions are those of the document's current one, in the working copy; where a waypoint comes or
   goes it does so in the shadow too, so that the two can be compared row by row. */
namespace rws {

/** A coordinate as it is written: "98006.52". */
std::string CoordinateText(double metres);

/** Take-off and landing: they belong to an airfield, and are moved only when the user says so. */
bool IsLocked(const Waypoint& waypoint);

/** The place of a waypoint by the words of its line; 0 for a word that is no number. */
MapPoint PlaceOfWaypoint(const Waypoint& waypoint);

/** Puts one waypoint elsewhere. */
void PlaceWaypoint(Document& doc, std::size_t flight, std::size_t waypoint, MapPoint at);

/** Moves waypoints by metres to the east and to the north; what is a line of settings stays. */
void MoveWaypoints(Document& doc, std::size_t flight, const std::vector<std::size_t>& waypoints,
                   double east, double north);

/** All waypoints of a flight that are not locked, or all of them. */
std::vector<std::size_t> MovableWaypoints(const Flight& flight, bool withLocked);

/** Adds a waypoint behind another one, with the height and speed of those beside it. Returns its
    index. */
std::size_t InsertWaypoint(Document& doc, std::size_t flight, std::size_t after, MapPoint at);

/** The waypoint behind which a new one at a place would lengthen the route least. */
std::size_t BestPlaceFor(const Flight& flight, MapPoint at);

/** Takes waypoints away, with the lines of settings that belong to them. At least one must stay:
    false, and nothing is changed, where none would. */
bool DeleteWaypoints(Document& doc, std::size_t flight, const std::vector<std::size_t>& waypoints);

/** Flies what lies between take-off and landing in the other direction; a route without them is
    turned round as a whole. Each point keeps its height, speed, target and settings. False for
   fewer than two points. */
bool ReverseRoute(Document& doc, std::size_t flight);

}  // namespace rws
