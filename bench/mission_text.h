#pragma once

#include <cstddef>
#include <string>

namespace rws::bench {

/** Text of a mission of about this many bytes, mixed like those found in installs of the game: a
   few flights, unless a number of them is given, most of the bytes in chiefs' roads and stationary
   objects. */
std::string MissionText(std::size_t bytes, std::size_t flights = 0);

}  // namespace rws::bench
