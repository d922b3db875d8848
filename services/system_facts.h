#pragma once

#include <string>

#include "services/services.h"

/** Small questions to the system around the program. */
namespace rws {

/** Name of an old Windows version; "Failed" on other platforms, "" for a version not in the list.
 */
std::string GetOSName(const OsVersion& version);

/** The system's version for the log: `GetOSName`, or the platform's own name where that is "" or
    "Failed". */
std::string SystemVersionText(const Services& services);

std::string GetLocaleText(const Services& services, int code);

/** Opens a path with the program that the desktop has for it; says so when there is none. */
void OpenFile(const Services& services, const std::string& path);

void NotifyAssocChanged(const Services& services);

/** Renames a file. Returns "" on success and the reason on failure. */
std::string FileRename(const Services& services, const std::string& from, const std::string& to);

}  // namespace rws
