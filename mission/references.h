#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "mission/records.h"

/** Lines that name a flight: the targets of other routes and of the mission. A flight that gets
    another name is no longer found by them. */
namespace rws {

/** Each as the user would look for it: the route and its waypoint, or the line of "[Target]". */
std::vector<std::string> References(const Mission& mission, const std::string& flightName);

using FlightNames = std::set<std::string, std::less<>>;

/** The same for many flights at once: those of each that is named at all. */
std::map<std::string, std::vector<std::string>> References(const Mission& mission,
                                                           const FlightNames& names);

/** Lets them name the flight by its new name; nothing else in a line changes. */
void RenameReferences(Mission& mission, const std::string& from, const std::string& to);

}  // namespace rws
