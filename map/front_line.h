#pragma once

#include <utility>
#include <vector>

#include "map/map_scene.h"

namespace rws {

/** The front: every place belongs to the army of the nearest marker, and the front is where two
    armies meet. Of markers on one spot the first counts. Pieces of lines in no order, within the
    bounds given. Nothing with fewer than two markers or armies, and nothing beyond
    `kMostFrontMarkers`, which would take too long. */
std::vector<std::pair<MapPoint, MapPoint>> FrontLineOf(const std::vector<FrontMarker>& markers,
                                                       const MapBounds& within);

inline constexpr std::size_t kMostFrontMarkers = 1000;

}  // namespace rws
