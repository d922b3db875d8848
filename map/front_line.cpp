#include "map/front_line.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <set>

namespace rws {

namespace {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

/** A corner of the area of a marker; the side that begins there is shared with a neighbour. */
struct Corner {
  MapPoint At;
  std::size_t Neighbour = kNone;
};

/** The area that is nearer to a marker than to those it was cut by. */
class Area {
 public:
  Area(MapPoint centre, const MapBounds& bounds)
      : centre_(centre),
        corners_{{{bounds.Left, bounds.Bottom}},
                 {{bounds.Right, bounds.Bottom}},
                 {{bounds.Right, bounds.Top}},
                 {{bounds.Left, bounds.Top}}} {}

  const std::vector<Corner>& Corners() const { return corners_; }

  /** Distance of the corner farthest from the marker. */
  double Reach() const {
    double reach = 0;
    for (const auto& corner : corners_) reach = std::max(reach, DistanceOf(centre_, corner.At));
    return reach;
  }

  /** Takes away what is nearer to another marker. */
  void CutBy(MapPoint other, std::size_t neighbour) {
    const MapPoint middle = Between(centre_, other, 0.5);
    const double nx = other.X - centre_.X, ny = other.Y - centre_.Y;
    // Below zero on the side of this marker.
    const auto side = [&](MapPoint at) { return (at.X - middle.X) * nx + (at.Y - middle.Y) * ny; };
    std::vector<Corner> kept;
    for (std::size_t i = 0; i < corners_.size(); ++i) {
      const Corner& from = corners_[i];
      const Corner& to = corners_[(i + 1) % corners_.size()];
      const double here = side(from.At), there = side(to.At);
      if (here <= 0) kept.push_back(from);
      if ((here < 0 && there > 0) || (here > 0 && there < 0)) {
        const MapPoint at = Between(from.At, to.At, here / (here - there));
        kept.push_back({at, here < 0 ? neighbour : from.Neighbour});
      } else if (here == 0 && there > 0) {
        kept.back().Neighbour = neighbour;
      }
    }
    corners_ = std::move(kept);
  }

 private:
  MapPoint centre_;
  std::vector<Corner> corners_;
};

/** The others, the nearest first. */
std::vector<std::size_t> NearestFirst(const std::vector<FrontMarker>& markers, std::size_t own) {
  std::vector<std::pair<double, std::size_t>> order;
  order.reserve(markers.size());
  for (std::size_t i = 0; i < markers.size(); ++i)
    if (i != own) order.emplace_back(DistanceOf(markers[own].At, markers[i].At), i);
  std::sort(order.begin(), order.end());
  std::vector<std::size_t> others;
  others.reserve(order.size());
  for (const auto& each : order) others.push_back(each.second);
  return others;
}

Area AreaOf(const std::vector<FrontMarker>& markers, std::size_t own, const MapBounds& within) {
  const MapPoint centre = markers[own].At;
  Area area(centre, within);
  for (const std::size_t other : NearestFirst(markers, own)) {
    const double distance = DistanceOf(centre, markers[other].At);
    if (distance / 2 > area.Reach()) break;
    if (distance > 0) area.CutBy(markers[other].At, other);
  }
  return area;
}

/** Of markers on one spot the first counts: the areas of both would be the same one, and the front
    around it would have gaps. */
std::vector<FrontMarker> FirstOfEachSpot(const std::vector<FrontMarker>& markers) {
  std::set<std::pair<double, double>> spots;
  std::vector<FrontMarker> firsts;
  for (const auto& marker : markers)
    if (spots.emplace(marker.At.X, marker.At.Y).second) firsts.push_back(marker);
  return firsts;
}

}  // namespace

std::vector<std::pair<MapPoint, MapPoint>> FrontLineOf(const std::vector<FrontMarker>& all,
                                                       const MapBounds& within) {
  const std::vector<FrontMarker> markers = FirstOfEachSpot(all);
  std::vector<std::pair<MapPoint, MapPoint>> front;
  const bool isOne = std::all_of(markers.begin(), markers.end(), [&](const auto& marker) {
    return marker.Army == markers.front().Army;
  });
  if (isOne || markers.size() > kMostFrontMarkers || within.IsEmpty()) return front;
  for (std::size_t i = 0; i < markers.size(); ++i) {
    const Area area = AreaOf(markers, i, within);
    const auto& corners = area.Corners();
    for (std::size_t k = 0; k < corners.size(); ++k) {
      const std::size_t other = corners[k].Neighbour;
      // Each side is found from both of its markers.
      if (other == kNone || other < i || markers[other].Army == markers[i].Army) continue;
      front.emplace_back(corners[k].At, corners[(k + 1) % corners.size()].At);
    }
  }
  return front;
}

}  // namespace rws
