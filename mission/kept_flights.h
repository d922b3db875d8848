#pragma once

#include <string>
#include <vector>

#include "mission/kept_text.h"
#include "mission/line_patch.h"
#include "mission/records.h"

/** Edits of flights in the lines of their own. */
namespace rws {

/** The sections that belong to a flight: its own, its route, its weapons; missing ones left out. */
std::vector<const KeptSection*> SectionsOfFlight(const KeptText& text, const KeptSection& section);

/** What each flight section of a text has become in an edited mission; null for one that has gone.
    A copy whose source has gone stands behind other flights, and does not take its place. */
std::vector<const Flight*> BecomesOfFlights(const KeptText& text, const Mission& edited);

/** Brings a flight's lines from what was read from them to the edited record. */
void EditFlight(const KeptText& text, LinePatch& patch, const KeptSection& section,
                const Flight& read, const Flight& edited);

/** The lines of a flight that the text does not hold: those it was read from, or copied from, with
    its edits; for one that was never read those that the game's builder would write. A copy gets
    none of the parked places of its source. */
std::vector<std::string> LinesOfNewFlight(const Flight& flight, bool isCopy);

/** True for a waypoint's type that is followed by a line "TRIGGERS". The game takes the line behind
    one for its settings whatever it is: without one of its own it swallows the next waypoint. */
bool NeedsTriggers(std::string_view type);

/** The lines "TRIGGERS" that come along with a waypoint which is put into a text, parted by line
    feeds; "" where none are known, or where they belong to a type that it has no more. */
std::string_view KnownTriggers(const Waypoint& waypoint);

/** Such a line for a waypoint of which none is known. */
std::string_view UsualTriggers(std::string_view type);

/** What stands behind the speed of a route line, but for the marker. */
std::vector<std::string> RouteTail(std::string_view line);

/** `text`, a line that may be another than the one that was read, with what an edit has changed of
   its waypoint. A changed word is spelled as in the edited record's line, where that says the same.
 */
std::string EditedWaypoint(std::string_view text, const Waypoint& read, const Waypoint& edited);

/** True if a waypoint's line would be another one for the game. */
bool WaypointDiffers(const Waypoint& a, const Waypoint& b);

/** True if both have the skills of all four planes alike, also of those that do not fly. */
bool SameSkills(const Flight& a, const Flight& b);

/** File names are the same in any letter case. */
bool SameFileName(std::string_view a, std::string_view b);

}  // namespace rws
