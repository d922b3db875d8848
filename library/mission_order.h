#pragma once

#include <cstdint>
#include <vector>

#include "library/columns.h"

namespace rws {

/** Sorts rows of an index by what a column shows, letter case aside; numbers, times of the day and
    of changes as such, what is missing first. Equal ones stand in the order of their names and
    folders. Tens of thousands are sorted in a few milliseconds. */
void SortMissions(const MissionIndex& index, std::vector<std::uint32_t>& rows, MissionColumn by,
                  bool descending);

}  // namespace rws
