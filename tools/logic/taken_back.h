#pragma once

#include <cstddef>
#include <optional>

#include "mission/take_back.h"
#include "session/session.h"

namespace rws {

/** Takes one edit of a mission back, as one step of the history, and gives the number of lines that
    went with it. Nothing, and nothing has changed, where that edit cannot be taken back by itself.
 */
std::optional<std::size_t> TakeChangeBack(Session& session, std::size_t mission,
                                          const ChangedLine& line);

}  // namespace rws
