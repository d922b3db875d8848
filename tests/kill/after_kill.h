#pragma once

#include <string>

#include "services/services.h"

namespace rws::test {

/** What the start after a kill has found. */
struct AfterKill {
  int GivenBack = 0, HalfRenamed = 0, Offered = 0, Promised = 0;
  /** What is not as it must be, a line each; "" if all is well. */
  std::string Wrong;
};

/** Does what the user would do behind a kill, as the program offers it at its start, and looks at
    each mission and briefing in "missions" of the folder by the diary there. The diary begins anew.
 */
AfterKill LookAfterKill(const Services& services, const std::string& folder);

/** Begins the diary with the missions and briefings as they stand. */
void BeginDiary(const Services& services, const std::string& folder);

}  // namespace rws::test
