#pragma once

#include <string>
#include <string_view>

#include "mission/document.h"
#include "services/services.h"
#include "tools/logic/tool_outcome.h"

/** What the menu of the mission list does to the files of the current mission. A mission takes its
    briefing, the ".properties" file beside it, along. The files are taken as they stand on disk:
    unsaved edits are neither asked about nor written. A failure is told in the status bar, with
   what was done and what was not, ends the operation where it stands and undoes nothing. */
namespace rws {

/** Full path of the current mission; "" when the list holds none. */
std::string CurrentMissionPath(const Document& doc);

/** The current mission; an empty record when the list holds none. */
const Mission& CurrentMissionRecord(const Document& doc);

/** Path of the briefing that goes with a mission: every ".mis" in the path becomes ".properties",
    also in the name of a folder. "" for a file without ".mis" in its name, as with ".MIS": it has
    none. */
std::string PropertiesPath(std::string_view missionPath);

/** The briefing of a mission if it is on disk, else "". One found in another letter case may be
    that of another mission and is then not given. */
std::string ExistingProperties(const Services& services, const std::string& mission);

/** A folder that is not there is a fault that names it, where the system would name the file. */
void RequireFolder(const Services& services, const std::string& folder);

/** Copies the mission under a name that the user chooses. */
ToolOutcome SaveMissionAs(const Document& doc, const Services& services);

/** Deletes the mission for good when the user agrees. */
ToolOutcome DeleteMission(const Document& doc, const Services& services);

/** Moves the mission to a folder that the user chooses; never over an existing file. */
ToolOutcome MoveMission(const Document& doc, const Services& services);

}  // namespace rws
