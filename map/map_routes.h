#pragma once

#include <vector>

#include "catalogues/catalogues.h"
#include "map/map_scene.h"
#include "mission/records.h"
#include "services/services.h"

/** Where the flights of a mission go and where its home bases are, as the records have it by now.
 */
namespace rws {

/** One route for each flight. A waypoint whose coordinates are no numbers has no place. */
std::vector<MapRoute> RoutesOf(const Mission& mission, const Catalogues& tables,
                               const Services& services);

/** The home bases of the records, and those of the file that the records lack. */
std::vector<MapBase> BasesOf(const Mission& mission, const std::vector<MapBase>& inFile);

/** The number of an army, by the name of a flight: 0 for none or an unknown one. */
std::uint8_t ArmyOfFlight(const Catalogues& tables, const Services& services,
                          std::string_view flightName);

/** What a type of waypoint is, also in the spellings of later versions: "LANDING_104". */
WaypointShape ShapeOf(std::string_view type);

/** True for a line of settings that stands among the waypoints and is none. */
bool IsTriggersLine(std::string_view type);

}  // namespace rws
