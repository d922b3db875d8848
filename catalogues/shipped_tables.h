#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace rws {

inline constexpr std::size_t kShippedTables = 6;

/** SHA-1 of each table that this build is shipped with. */
extern const std::array<std::string_view, kShippedTables> kShippedChecksums;

}  // namespace rws
