#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "library/mission_checker.h"
#include "session/session.h"

/** Checks and mends of missions that are open. */
namespace rws {

/** The tables as they are on disk, since those in memory learn from missions. One that is missing
    knows nothing, and was told when the program started. */
std::shared_ptr<const CheckTables> FreshTables(const Services& services, const Catalogues& inUse);

/** Checks a mission that is in memory as an Update would write it, with its unsaved edits. */
CheckedMission CheckShown(const Session& session, const CheckTables& tables, GameFiles& game,
                          std::size_t mission, const ShownValues& shown);

struct MendOutcome {
  std::size_t Mended = 0;
  /** Why some could not be mended, UTF-8. */
  std::vector<std::string> Faults;
};

/** Mends findings of the current mission, as one edit. One that cannot be mended hinders no other.
 */
MendOutcome MendShown(Session& session, const std::vector<Finding>& findings);

}  // namespace rws
