#pragma once

#include <string>

#include "services/file_system.h"

namespace rws {

/** Writes the desktop entry and the file types of the program into the user's own data directory,
    tells the desktop and makes the program the default for missions; or takes all of that back. It
    touches no file that is not its own. `program` is the full path of the executable. Gives the
    reason, with the file that it is about, when it failed; nothing is left half switched on. Tools
    of the desktop that are not installed are done without. */
std::string AssociateDesktop(const FileSystem& files, const std::string& program, bool on);

}  // namespace rws
