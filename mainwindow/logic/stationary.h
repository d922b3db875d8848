#pragma once

#include <cstddef>
#include <string>

#include "mission/document.h"

namespace rws {

/** Number of parked aircraft of a mission: its lines that hold "planes.Plane", in that case. */
int CountStationary(const Document& doc, std::size_t mission);

/** What the window says about a count of parked aircraft. */
std::string StationaryText(int count);

}  // namespace rws
