#pragma once

#include <cstddef>
#include <string_view>

#include "catalogues/aircraft.h"
#include "catalogues/catalogues.h"
#include "mission/document.h"
#include "services/services.h"

/** Flights that commands add to the current mission. */
namespace rws {

/** Row of an exact name or class, blanks around it dropped; -1 when there is none. */
inline std::ptrdiff_t FindAircraft(const Catalogues& tables, std::string_view name) {
  return GetPlaneIndex(tables, name);
}

/** Appends a flight to the current mission and gives its index. The shadow grows by one as well and
    holds the flight at the same index, or else the mission would count as unchanged. */
std::ptrdiff_t AddFlight(Document& doc, const Flight& flight);

/** Adds the aircraft that travels with another, attached to its carrier, the flight at `source`; it
    gets the next name free from `group` on. An empty class adds nothing. Neither, logged, does one
    that is not known, nor a carrier whose route does not begin with a whole line. */
void AddSpecial(Document& doc, const Catalogues& tables, const Services& services,
                std::string_view companionClass, std::string_view group, std::ptrdiff_t source);

}  // namespace rws
