#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "library/index.h"

namespace rws {

/** A way to go on with a line that is being typed; texts are UTF-8. */
struct Completion {
  std::string Text;                // takes the place of what is there
  std::string Explains;            // what it is, for the user; "" for a value
  std::size_t At = 0, Length = 0;  // bytes of the line that it replaces
};

/** What can stand where the cursor is, a byte place in the line: keys that begin as the word does;
    behind a key its values that hold what is typed, those of the missions in the index, sorted. */
std::vector<Completion> Complete(std::string_view line, std::size_t cursor,
                                 const MissionIndex& index, std::size_t most = 50);

}  // namespace rws
