#pragma once

#include <string>
#include <string_view>

#include "catalogues/catalogues.h"
#include "mission/document.h"
#include "services/services.h"

/** What the user may enter for an aircraft or a map that the program does not know, and what is
    proposed for it. Classes and paths are mission text; all else is UTF-8. */
namespace rws {

/** True for a class that the tables lack and that an entry of the user's own can name. */
bool CanAddAircraft(const Catalogues& catalogues, const Services& services,
                    std::string_view aircraftClass);
/** The same for the path of a map. */
bool CanAddMap(const Document& doc, const Services& services, std::string_view path);

/** A name that no other aircraft has: "F4U_1D" gives "F4U-1D". */
std::string ProposedAircraftName(const Catalogues& catalogues, const Services& services,
                                 std::string_view aircraftClass);
/** What home bases may call it, as far as the lists of the game tell; else "". */
std::string ProposedAircraftKey(const Catalogues& catalogues, const Services& services,
                                std::string_view aircraftClass);
/** A name that no other map has: "Isle_of_X/wload.ini" gives "Isle of X Winter". */
std::string ProposedMapName(const Document& doc, const Services& services, std::string_view path);

/** Why an aircraft of this class cannot have a name; "" if it can. */
std::string WhyNotAircraftName(const Catalogues& catalogues, const Services& services,
                               std::string_view aircraftClass, std::string_view name);
/** Why a word, a key or a loadout, cannot stand in missions; "" if it can. */
std::string WhyNotWord(const Services& services, std::string_view what, std::string_view word);
/** Why the map of this path cannot have a name; "" if it can. */
std::string WhyNotMapName(const Document& doc, const Services& services, std::string_view path,
                          std::string_view name);

}  // namespace rws
