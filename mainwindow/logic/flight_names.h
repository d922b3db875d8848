#pragma once

#include <string>
#include <string_view>

#include "mission/document.h"
#include "services/services.h"

/** Names of flights, unique within a mission: a word and digits, of which the last is the flight in
    its squadron, 0 to 3, and those before it the squadron. */
namespace rws {

/** True if a flight of the current mission has exactly this name. */
bool FlightNameExists(const Document& doc, std::string_view name);

/** The name itself if it is free in the current mission, else the next free one: flight by flight,
    behind the fourth the next squadron. The digits keep their width. A name without digits, logged,
    gets "00" first. */
std::string NextFlightName(const Document& doc, const Services& services, std::string_view name);

}  // namespace rws
