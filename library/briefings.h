#pragma once

#include <string>
#include <vector>

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

}  // namespace rws
