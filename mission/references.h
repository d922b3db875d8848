#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "mission/records.h"

/** Lines that name a flight: the targets of other routes and of the mission. A flight that gets
    another name is no longer found by them. */
namespace rws {

/** Each as the user would look for it: the route and its waypoint, or the line of "[Target]". */
std::vector<std::string> References(const Mission& mission, std::string_view flightName);

/** Lets them name the flight by its new name; nothing else in a line changes. */
void RenameReferences(Mission& mission, std::string_view from, const std::string& to);

}  // namespace rws
