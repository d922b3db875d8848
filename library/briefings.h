#pragma once

#include <optional>
#include <string>
#include <vector>

#include "mission/briefing_file.h"
#include "services/file_system.h"

namespace rws {

/** A mission of a folder and the file with its briefing, "" for none; names without the folder. */
struct ListedMission {
  std::string Name, Briefing;
};

/** True for a file that is listed as a mission: "*.mis" in any letter case. */
bool IsMissionName(const std::string& name);

/** The missions of a folder in the order of its entries. A briefing is the ".properties" file of
    the mission's own spelling, else one in another letter case that is no other mission's, else the
    first in sorted order of those for a language, "NAME_ru.properties". */
std::vector<ListedMission> ListedMissions(const std::vector<FolderEntry>& entries);

/** The name of the file with a mission's briefing, "" for none; without the folder. */
std::string BriefingFileOf(const FileSystem& files, const std::string& mission);

/** The whole briefing of a mission; nothing where it has none. One that cannot be read is a fault.
 */
std::optional<Briefing> BriefingOf(const FileSystem& files, const std::string& mission);

}  // namespace rws
