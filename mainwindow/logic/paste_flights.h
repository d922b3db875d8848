#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "mission/document.h"
#include "services/services.h"

namespace rws {

/** What became of flights that were pasted. Names are in the encoding of mission text. */
struct PastedFlights {
  std::vector<std::size_t> Added;                            // indexes in the mission
  std::vector<std::pair<std::string, std::string>> Renamed;  // old and new names
  std::vector<std::string> LeftOut;                          // their regiments have no name left
};

/** Adds the flights of a text, sections as a file holds them, to the current mission, behind its
    own. One whose name is taken gets the next that is free in its regiment, which has sixteen;
   names in the waypoints of the others that came with it follow. Places of parked aircraft where
   planes begin are those of another mission and are left out. A text without flights adds none. */
PastedFlights PasteFlights(Document& doc, const Services& services, std::string_view text);

/** What the user is told of it; in the encoding of mission text. */
std::string PastedText(const PastedFlights& pasted);

}  // namespace rws
