#pragma once

#include <optional>
#include <utility>

/** Places on a map: metres from its south-west corner, x to the east and y to the north. */
namespace rws {

struct MapPoint {
  double X = 0, Y = 0;

  bool operator==(const MapPoint&) const = default;
};

/** A rectangle around points; empty until one was added. */
struct MapBounds {
  double Left = 0, Bottom = 0, Right = -1, Top = -1;

  bool IsEmpty() const { return Right < Left; }
  bool Holds(MapPoint point) const {
    return point.X >= Left && point.X <= Right && point.Y >= Bottom && point.Y <= Top;
  }
  void Add(MapPoint point);
  /** The rectangle around a circle. */
  void Add(MapPoint centre, double radius);
};

/** Metres between two points. */
double DistanceOf(MapPoint a, MapPoint b);
/** Compass degrees from one point to another, 0 to below 360: 0 is north, 90 east. Equal points
   give 0. */
double HeadingOf(MapPoint from, MapPoint to);
/** Metres from a point to the nearest one of a line between two others. */
double DistanceToLine(MapPoint point, MapPoint a, MapPoint b);
/** The point at a part of the way, 0 to 1. */
MapPoint Between(MapPoint a, MapPoint b, double part);
/** What of a line between two points lies within a rectangle; nothing when it misses it. */
std::optional<std::pair<MapPoint, MapPoint>> ClippedTo(const MapBounds& bounds, MapPoint a,
                                                       MapPoint b);

}  // namespace rws
