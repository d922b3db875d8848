#pragma once

#include <cstddef>
#include <string>

namespace rws::bench {

/** Text of a mission of about this many bytes, mixed like those found in installs of the game: a
   few flights, most of the bytes in chiefs' roads and stationary objects. */
std::string MissionText(std::size_t bytes);

}  // namespace rws::bench
