#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "mission/document.h"
#include "services/services.h"

/** What the menu of the flight list does to the records of the current mission. `flights` are
    indexes of selected flights, in the order of the list; when one of them does not exist, that is
    logged and nothing is changed. */
namespace rws {

/** How many planes a flight has, as far as there are slots for them. */
std::size_t PlaneCount(const Flight& flight);

/** A fault when one of these flights does not exist. */
void CheckFlights(const Mission& mission, const std::vector<std::size_t>& flights);

/** Drops the flights of status "delete"; the others keep order and names. The shadow keeps them
    all, and a player who flew in one of them is left as it is. */
void RemoveMarkedFlights(Document& doc, const Services& services);

/** Marks flights and removes them. */
bool RemoveFlights(Document& doc, const Services& services,
                   const std::vector<std::size_t>& flights);

/** Markings of all planes of the flights. The shadow changes too, on purpose: markings reach the
    file only with another edit of the mission. */
bool SetMarkings(Document& doc, const Services& services, const std::vector<std::size_t>& flights,
                 bool on);

/** Skin of all planes of the flights by its file name, in the encoding of mission text; "default"
    is none. A skin brings markings of its own, so theirs go off. */
bool SetFlightSkin(Document& doc, const Services& services, const std::vector<std::size_t>& flights,
                   std::string_view fileName);

/** The sections of the flights as a file would hold them, each line followed by carriage return and
    line feed; "" if it failed. */
std::string FlightsText(const Document& doc, const Services& services,
                        const std::vector<std::size_t>& flights);

}  // namespace rws
