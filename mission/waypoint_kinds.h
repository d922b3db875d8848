#pragma once

#include <array>
#include <string_view>

namespace rws {

/** A kind of waypoint that the user can choose. */
struct WaypointKind {
  std::string_view Label, Keyword;
};
inline constexpr std::array<WaypointKind, 4> kWaypointKinds{{{"Take Off", "TAKEOFF"},
                                                             {"Normal Fly", "NORMFLY"},
                                                             {"Ground Attack", "GATTACK"},
                                                             {"Land", "LANDING"}}};

/** Which of these kinds a row offers. A route of one waypoint offers to land, not to take off. */
std::array<bool, kWaypointKinds.size()> OfferedKinds(int row, int rowCount);

}  // namespace rws
