#pragma once

#include <cstddef>

#include "session/session.h"

namespace rws {

/** What becomes of a mission's shadow when the mission is shown. */
enum class Baseline {
  Take,  // the shadow is the mission as it is now
  Keep   // Update stays lit or dark as it is
};

/** Reads the current mission when it is not in memory, and takes its baseline. `isGone` is a
   mission that must not reach the reader, which would end the program. */
void ReadCurrent(Session& session, Baseline baseline, bool isGone);

/** Reads a mission from its file into both arrays, whatever was in memory. False, with the mission
    as it was, when the file has gone or cannot be read. */
bool Reread(Session& session, std::size_t mission);

}  // namespace rws
