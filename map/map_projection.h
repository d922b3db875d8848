#pragma once

#include <string>

#include "map/geometry.h"

namespace rws {

/** A place in a picture of the map: pixels from its upper left corner. */
struct ScreenPoint {
  double X = 0, Y = 0;
};

/** What part of the map a picture shows, and how large. */
struct MapProjection {
  MapPoint Centre;
  double MetresPerPixel = 100;
  double Width = 1, Height = 1;  // of the picture, in pixels

  ScreenPoint ToScreen(MapPoint point) const {
    return {Width / 2 + (point.X - Centre.X) / MetresPerPixel,
            Height / 2 - (point.Y - Centre.Y) / MetresPerPixel};
  }
  MapPoint ToMap(ScreenPoint point) const {
    return {Centre.X + (point.X - Width / 2) * MetresPerPixel,
            Centre.Y - (point.Y - Height / 2) * MetresPerPixel};
  }
  /** What is seen, and so many pixels around it. */
  MapBounds Seen(double margin = 0) const;
};

/** The limits of zooming. */
inline constexpr double kFinestScale = 0.25, kCoarsestScale = 20'000;

/** Shows all of some bounds, with so many pixels around; what is a mere point is shown at 100
   metres a pixel. Empty bounds change nothing. */
MapProjection FitInto(const MapProjection& projection, const MapBounds& bounds, double margin);
/** Makes all larger by a factor, or smaller by one below 1; what is at a place of the picture stays
    there. */
MapProjection ZoomedAt(const MapProjection& projection, ScreenPoint at, double factor);
/** Moves what is seen by so many pixels. */
MapProjection Panned(const MapProjection& projection, double dx, double dy);

/** The distance between two lines of the grid, in metres: 1, 2 or 5 of a power of ten, at least so
    many pixels. */
double GridStep(const MapProjection& projection, double leastPixels);

/** A bar as long as a round distance. */
struct ScaleBar {
  double Pixels = 0;
  std::string Text;  // "10 km", "500 m", "5 miles", "1000 feet"
};
/** The longest one of at most so many pixels. */
ScaleBar ScaleBarOf(const MapProjection& projection, double mostPixels, bool metric);

}  // namespace rws
