#pragma once

#include <string>

#include "services/services.h"

namespace rws {

/** Copies a skin of the game that is about to be replaced to "Replaced Skins" beside the program:
    into a folder of the aircraft's name, under its own name with date and time. Gives the copy's
    path; "" when no such skin is there. A failure is a fault, and the skin is not to be replaced.
 */
std::string KeepReplacedSkin(const Services& services, const std::string& skin);

}  // namespace rws
