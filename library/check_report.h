#pragma once

#include <array>
#include <string>
#include <vector>

#include "library/mission_checker.h"

/** Findings as lists for the user and for other programs; UTF-8. Planes, waypoints and lines count
    from 1 there. */
namespace rws {

/** How many findings of each severity there are. */
using FindingCounts = std::array<std::size_t, 3>;
FindingCounts CountsOf(const CheckedMission& mission);

/** "2 errors, 1 warning, 3 notes"; "nothing found". */
std::string CountsText(const FindingCounts& counts);
std::string CountsText(const std::vector<CheckedMission>& missions);

/** The columns of a CSV file, and those of a finding. */
const std::vector<std::string>& FindingColumns();
std::vector<std::string> FindingCells(const std::string& path, const Finding& finding,
                                      const CodePage& page);

/** A whole CSV file. */
std::string FindingsCsv(const std::vector<CheckedMission>& missions, const CodePage& page);
/** A text to be read: each mission with its findings below it. */
std::string FindingsText(const std::vector<CheckedMission>& missions, const CodePage& page);

}  // namespace rws
