#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "catalogues/catalogues.h"
#include "mission/records.h"
#include "services/services.h"

namespace rws {

/** The planes of one class that one army flies. */
struct AircraftCount {
  std::string Class, Army;
  std::int64_t Count = 0;
};

/** Index of the row of exactly this class and army; a row that is not there yet is added. */
std::size_t FindAircraftRow(std::vector<AircraftCount>& table, std::string_view aircraftClass,
                            std::string_view army);

/** What a mission flies, as a report for a message box: a block for each army with its planes by
    aircraft, then its total. White comes first, then red, then blue. Lines end in carriage return
    and line feed. "", logged, when it could not be made. */
std::string AircraftCountText(const Mission& mission, const Catalogues& catalogues,
                              const Services& services);

}  // namespace rws
