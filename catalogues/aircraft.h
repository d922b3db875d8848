#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "catalogues/catalogues.h"
#include "mission/document.h"
#include "services/services.h"

/** The aircraft table. Every lookup takes the first row that matches, from index 0 on; "name or
    class" is the display name or the class of a mission without "air.". */
namespace rws {

/** Reads "RWS_Aircraft.txt" and the loadouts of each aircraft. A missing table is told and leaves
    the array empty, a missing loadout table ends the program. Aircraft behind the YP-80 are blue.
 */
void LoadAircraftArray(Document& doc, Catalogues& catalogues, const Services& services);

/** The same without the loadouts, for who needs names only. */
void LoadAircraftNames(Catalogues& catalogues, const Services& services);

/** Display name for a name or class in any letter case, that of a parked one included; an unknown
    one comes back as it is. */
std::string GetPlaneName(const Catalogues& catalogues, const Services& services,
                         std::string_view nameOrClass);

/** The aircraft of an exact name or class; null when there is none. */
const Aircraft* AircraftOf(const Catalogues& catalogues, std::string_view nameOrClass);

/** The aircraft whose parked ones have this exact class, which no flying one has; null when there
   is none. */
const Aircraft* FindParked(const Catalogues& catalogues, std::string_view parkedClass);

/** The aircraft of a class in any letter case; null when there is none. */
const Aircraft* FindClass(const Catalogues& catalogues, const CodePage& page,
                          std::string_view aircraftClass);

/** Class of an exact display name; an unknown one comes back as it is. */
std::string GetIntPlaneName(const Catalogues& catalogues, std::string_view name);

/** The name in a row of the aircraft list, which fills up with blanks towards its second part. */
std::string_view NameInRow(std::string_view rowText);

/** Skin folder of an exact name or class, in the form of `SkinFolder::Folder`, or "". */
std::string GetPlaneFolder(const Catalogues& catalogues, std::string_view nameOrClass);

/** True if the player may fly the aircraft of an exact name or class. */
bool IsFlyable(const Catalogues& catalogues, std::string_view nameOrClass);

/** True if the aircraft of an exact name or class can carry nose art. */
bool IsNoseart(const Catalogues& catalogues, std::string_view nameOrClass);

/** True if the installed game has an aircraft of this exact name or class. */
bool IsKnownPlane(const Catalogues& catalogues, std::string_view nameOrClass);

/** Row of an exact name or class, blanks around it dropped; -1 when there is none. */
std::ptrdiff_t GetPlaneIndex(const Catalogues& catalogues, std::string_view nameOrClass);

}  // namespace rws
