#pragma once

#include <cstddef>
#include <string>

#include "mission/document.h"
#include "services/services.h"

namespace rws {

/** What the window shows where a cloud or time line of a mission has no value of its own: row of
    the weather list, text of the cloud height box, time picker as "hh.mm". */
struct ShownValues {
  int WeatherRow = 0;
  std::string CloudHeight = "1000";
  std::string Clock = "12.00";
};

/** Makes the lines of a mission's new file: the head and the tail of the kept lines, and between
   them flights and routes from the records. A cloud or time line without its value is completed
   from `shown`. False, logged, when the lines could not be made or the mission was never read;
   nothing on disk has been touched then, and `reason` tells why where that is known. */
bool BuildMissionFile(Document& doc, const Services& services, LineArray& output,
                      std::size_t mission, const ShownValues& shown, std::string* reason = nullptr);

/** Appends a flight's section: its header, then indented lines without blanks at their end. Keys of
 * the section that no record models are lost, as accepted. */
void FlightArray(const Services& services, LineArray& output, const Flight& flight);

/** Appends a flight's route. Coordinates keep their text; a word whose number is exactly 0 becomes
    "0", also a marker "&0" behind the sixth word. Lines "TRIGGERS" that are no rows of the record
    come behind their waypoints. */
void WaypointArray(const Services& services, LineArray& output, const Flight& flight);

/** Appends all home base sections. */
void NewBornPlace(const Services& services, LineArray& output, const Mission& mission);

}  // namespace rws
