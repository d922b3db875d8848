#pragma once

#include <string>
#include <vector>

#include "services/services.h"

namespace rws {

/** The folders opened last, newest first; they need not be there any more. */
std::vector<std::string> RecentFolders(const Services& services);

/** Puts a folder at the head of them; the oldest of more than ten is forgotten. A path that holds a
    line end is left out. */
void AddRecentFolder(const Services& services, const std::string& folder);

void ClearRecentFolders(const Services& services);

}  // namespace rws
