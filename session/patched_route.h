#pragma once

#include <optional>
#include <vector>

#include "mission/records.h"

/** Steps on routes that others have written into since. */
namespace rws {

/** True if a step has not touched what belongs behind a waypoint. */
bool SameSettings(const Waypoint& from, const Waypoint& to);

/** `now`, a route of kept lines that others have changed since it was `from`, with what a step has
    changed from `from` to `to`; what others put in or wrote stays. Nothing where others have left
    the waypoints alone, or where one that the step changed is not there. */
std::optional<std::vector<Waypoint>> PatchedRoute(const std::vector<Waypoint>& now,
                                                  const std::vector<Waypoint>& from,
                                                  const std::vector<Waypoint>& to);

}  // namespace rws
