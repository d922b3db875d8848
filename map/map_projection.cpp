#include "map/map_projection.h"

#include <algorithm>
#include <cmath>

#include "map/map_units.h"
#include "services/numbers.h"

namespace rws {

namespace {

constexpr double kScaleOfPoint = 100;
/** What a power is off by must not cost a step. */
constexpr double kRoundingError = 1e-9;

/** The largest of 1, 2 and 5 times a power of ten that is not above a number. */
double RoundBelow(double number) {
  const double power = std::pow(10, std::floor(std::log10(number)));
  const double rest = number / power * (1 + kRoundingError);
  return power * (rest >= 5 ? 5 : rest >= 2 ? 2 : 1);
}

}  // namespace

MapBounds MapProjection::Seen(double margin) const {
  const MapPoint upperLeft = ToMap({-margin, -margin});
  const MapPoint lowerRight = ToMap({Width + margin, Height + margin});
  return {upperLeft.X, lowerRight.Y, lowerRight.X, upperLeft.Y};
}

MapProjection FitInto(const MapProjection& projection, const MapBounds& bounds, double margin) {
  if (bounds.IsEmpty()) return projection;
  MapProjection fitted = projection;
  fitted.Centre = {(bounds.Left + bounds.Right) / 2, (bounds.Bottom + bounds.Top) / 2};
  const double width = std::max(projection.Width - 2 * margin, 1.0);
  const double height = std::max(projection.Height - 2 * margin, 1.0);
  const double scale =
      std::max((bounds.Right - bounds.Left) / width, (bounds.Top - bounds.Bottom) / height);
  fitted.MetresPerPixel =
      scale == 0 ? kScaleOfPoint : std::clamp(scale, kFinestScale, kCoarsestScale);
  return fitted;
}

MapProjection ZoomedAt(const MapProjection& projection, ScreenPoint at, double factor) {
  const MapPoint held = projection.ToMap(at);
  MapProjection zoomed = projection;
  zoomed.MetresPerPixel =
      std::clamp(projection.MetresPerPixel / factor, kFinestScale, kCoarsestScale);
  const MapPoint moved = zoomed.ToMap(at);
  zoomed.Centre = {zoomed.Centre.X + held.X - moved.X, zoomed.Centre.Y + held.Y - moved.Y};
  return zoomed;
}

MapProjection Panned(const MapProjection& projection, double dx, double dy) {
  MapProjection panned = projection;
  panned.Centre.X -= dx * projection.MetresPerPixel;
  panned.Centre.Y += dy * projection.MetresPerPixel;
  return panned;
}

double GridStep(const MapProjection& projection, double leastPixels) {
  const double least = projection.MetresPerPixel * leastPixels;
  const double power = std::pow(10, std::floor(std::log10(least)));
  const double rest = least / power * (1 - kRoundingError);
  return power * (rest <= 1 ? 1 : rest <= 2 ? 2 : rest <= 5 ? 5 : 10);
}

ScaleBar ScaleBarOf(const MapProjection& projection, double mostPixels, bool metric) {
  const double metres = projection.MetresPerPixel * mostPixels;
  double unit = 1000;
  const char* name = " km";
  if (!metric) {
    unit = kMetresPerMile;
    name = " miles";
  }
  if (metres < unit) {
    unit = metric ? 1 : 1 / kFeetPerMetre;
    name = metric ? " m" : " feet";
  }
  const double round = RoundBelow(metres / unit);
  return {round * unit / projection.MetresPerPixel, NumberText(round) + name};
}

}  // namespace rws
