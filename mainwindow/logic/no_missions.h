#pragma once

#include <string>

#include "mission/document.h"
#include "services/services.h"

namespace rws {

/** Why the list of missions is empty and what the user can do, for the list's place. */
std::string WhyNoMissions(const Document& doc, const Services& services);

}  // namespace rws
