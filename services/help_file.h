#pragma once

#include <string>

#include "services/services.h"

namespace rws {

inline constexpr char kHelpFile[] = "RWS.HLP.html";

/** Path of the help. */
std::string HelpFile(const Services& services);

/** Shows the help in the desktop's own viewer, at the section of that name if one is given, and
   does not wait for it. A box names the file and the reason when it is missing or cannot be opened.
 */
void OpenHelp(const Services& services, const std::string& section = "");

}  // namespace rws
