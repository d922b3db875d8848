#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "mission/document.h"
#include "mission/kept_text.h"
#include "services/services.h"

/** Reads missions as the game means them, also what later versions of it and other tools write, so
    that they can be written with every line kept that was not edited. */
namespace rws {

/** Fills a mission from a file's bytes, whose line ends stay as they are. */
void ReadKeptMission(const Document& doc, const Services& services, Mission& mission,
                     std::string bytes);

/** The same for a mission whose `Lines` are the file already; its records are made anew. */
void ReadKeptRecords(const Document& doc, const Services& services, Mission& mission);

/** "[MAIN]", whose values stand for the whole mission. In a file without one it is all that stands
    ahead of "[Wing]", with no header of its own. */
KeptSection MainSection(const KeptText& text);

/** The sections that are flights, in file order: each that holds "Planes" with a number and is the
    first of its name. */
std::vector<const KeptSection*> FlightSections(const KeptText& text);

/** Route of a flight; null for none. */
const KeptSection* RouteOf(const KeptText& text, std::string_view flightName);

/** A waypoint's line and the lines that belong to it. */
struct KeptWaypoint {
  std::size_t Line = 0;
  std::vector<std::size_t> Triggers;
};

/** The rows of a route; blank lines are none. */
std::vector<KeptWaypoint> WaypointsOf(const KeptText& text, const KeptSection& route);

/** The record of a route's line that holds words. */
Waypoint ReadKeptWaypoint(std::string_view line);

/** A record's switches as they are told here: "" for what a file need not tell. */
void SpellSwitches(Flight& flight);

/** The record of a flight's section and its route. */
Flight ReadKeptFlight(const KeptText& text, const KeptSection& section);

/** Place of the marker "&0" or "&1" among the words of a route line, or `npos`. */
std::size_t MarkerPlace(const std::vector<KeptWord>& words);

/** The lines that are home bases. */
std::vector<std::size_t> HomeBaseLines(const KeptText& text);

/** The section that lists the aircraft of a home base, counted from 0; null for none. */
const KeptSection* AircraftSection(const KeptText& text, std::size_t base);

/** An aircraft that a home base offers, and the lines that go on with it. */
struct KeptAircraft {
  std::string_view Name;
  std::size_t First = 0, Last = 0;  // the last line not included
};

std::vector<KeptAircraft> AircraftOf(const KeptText& text, const KeptSection& section);

}  // namespace rws
