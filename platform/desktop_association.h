#pragma once

#include <string>

#include "services/file_system.h"

namespace rws {

/** True if the desktop opens mission files with this program's desktop entry. */
bool IsDesktopAssociated(const FileSystem& files);

/** Makes the program the user's default for missions and briefings, or takes that back. On: where
   no package has done it, the desktop entry and the file types go into the user's own data
   directory. Off: what this made goes, the defaults from before return, and where a package still
   offers the program the user's list declines it. No file of others is touched. `program` is the
   full path of the executable. Gives the reason when it failed; nothing is left half switched on.
 */
std::string AssociateDesktop(const FileSystem& files, const std::string& program, bool on);

}  // namespace rws
