#pragma once

#include <string>

#include "mission/records.h"

namespace rws {

/** A mission's records as one JSON object on one line, every field under its own name. Bytes above
    0x7F stand as "\u00XX", whatever the code page. */
std::string MissionJson(const Mission& mission);

}  // namespace rws
