#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "catalogues/catalogues.h"
#include "mission/records.h"
#include "services/services.h"

/** What the list of flights shows, without the list. Texts are in the encoding of mission text. */
namespace rws {

/** One flight in the list. */
struct FlightRow {
  std::size_t Flight = 0;  // index in the mission
  std::string PlaneName;
  std::string GroupText;
  std::string SquadText;     // squadron and flight, counted from 1: "01 / 03"
  std::string SortKey;       // hidden: colour word and plane name
  std::string SquadSortKey;  // hidden: colour word, country and flight index
  std::string ToolTip, GroupToolTip, SquadToolTip;
  std::int32_t Color = 0;  // blue-green-red
  bool Supported = true;   // by the installed game
  std::string Unknown;     // why it is not, and what to do; "" for a supported one
  std::string Icon;        // name of the group's country, the key of its picture
};

/** Squadron and flight of a flight's name, each counted from 1: "r0100" gives "01 01". */
std::string SquadFlightText(std::string_view flightName);

/** What is unknown of an aircraft that is in no table, and what to do; "" for one that is. */
std::string UnknownPlaneText(const Catalogues& catalogues, const std::string& aircraftClass);

/** Fills the rows of a mission's flights, in the order of the flights. False, logged, at a flight
    whose name has fewer than two characters; the rows end before it. */
bool MakeFlightRows(const Mission& mission, const Catalogues& catalogues, const Services& services,
                    std::vector<FlightRow>& rows);

enum class FlightSort { ByPlane, BySquad };

/** Sorts rows by one of their hidden keys: plain text without regard to case, equal ones by flight
    index in both directions. */
void SortFlightRows(std::vector<FlightRow>& rows, const CodePage& page, FlightSort by,
                    bool descending);

/** True if all selected rows, whose plane names these are, count as one aircraft: each holds the
    text of the first, so that an aircraft whose name goes on from that one counts as the same. */
bool SelectedSameAircraft(const std::vector<std::string>& planeNames);

/** True if the player may fly every aircraft that is selected. */
bool SelectedAllFlyable(const Catalogues& catalogues, const std::vector<std::string>& planeNames);

}  // namespace rws
