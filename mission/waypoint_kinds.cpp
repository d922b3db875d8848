#include "mission/waypoint_kinds.h"

namespace rws {

std::array<bool, kWaypointKinds.size()> OfferedKinds(int row, int rowCount) {
  if (row < 1 || row > rowCount) return {};
  const bool isLast = row == rowCount;
  return {row == 1 && !isLast, true, true, isLast};
}

}  // namespace rws
