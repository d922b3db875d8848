#include "map/geometry.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace rws {

void MapBounds::Add(MapPoint point) { Add(point, 0); }

void MapBounds::Add(MapPoint centre, double radius) {
  if (IsEmpty()) {
    *this = {centre.X - radius, centre.Y - radius, centre.X + radius, centre.Y + radius};
    return;
  }
  Left = std::min(Left, centre.X - radius);
  Right = std::max(Right, centre.X + radius);
  Bottom = std::min(Bottom, centre.Y - radius);
  Top = std::max(Top, centre.Y + radius);
}

double DistanceOf(MapPoint a, MapPoint b) { return std::hypot(b.X - a.X, b.Y - a.Y); }

double HeadingOf(MapPoint from, MapPoint to) {
  const double degrees = std::atan2(to.X - from.X, to.Y - from.Y) * 180 / std::numbers::pi;
  const double turned = degrees < 0 ? degrees + 360 : degrees;
  // The sum of 360 and a tiny negative angle is 360.
  return turned < 360 ? turned : 0;
}

MapPoint Between(MapPoint a, MapPoint b, double part) {
  return {a.X + (b.X - a.X) * part, a.Y + (b.Y - a.Y) * part};
}

double DistanceToLine(MapPoint point, MapPoint a, MapPoint b) {
  const double dx = b.X - a.X, dy = b.Y - a.Y, square = dx * dx + dy * dy;
  if (square == 0) return DistanceOf(point, a);
  const double part = ((point.X - a.X) * dx + (point.Y - a.Y) * dy) / square;
  return DistanceOf(point, Between(a, b, std::clamp(part, 0.0, 1.0)));
}

std::optional<std::pair<MapPoint, MapPoint>> ClippedTo(const MapBounds& bounds, MapPoint a,
                                                       MapPoint b) {
  const double dx = b.X - a.X, dy = b.Y - a.Y;
  double from = 0, to = 1;
  // Each side cuts away the part of the line that lies behind it.
  const auto cut = [&](double slope, double room) {
    if (slope == 0) return room >= 0;
    const double part = room / slope;
    if (slope < 0)
      from = std::max(from, part);
    else
      to = std::min(to, part);
    return from <= to;
  };
  if (!cut(-dx, a.X - bounds.Left) || !cut(dx, bounds.Right - a.X) ||
      !cut(-dy, a.Y - bounds.Bottom) || !cut(dy, bounds.Top - a.Y))
    return {};
  return std::pair(from == 0 ? a : Between(a, b, from), to == 1 ? b : Between(a, b, to));
}

}  // namespace rws
