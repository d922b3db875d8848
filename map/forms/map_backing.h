#pragma once

#include <QImage>

#include "map/forms/map_shown.h"

namespace rws {

/** The ground of a map, kept as a picture. While the map is moved what is seen already is shifted,
    and only what comes in at the edges is painted. */
class MapBacking {
 public:
  /** To be called when anything has changed but the projection. */
  void Forget() { isPainted_ = false; }
  /** The picture for a projection, in device pixels, `scale` of them to each pixel of the
      projection. */
  const QImage& Picture(const MapShown& shown, double scale);

 private:
  bool Shift(const MapShown& shown, const QSize& size);
  void Paint(const MapShown& shown, const QRect& part);

  QImage picture_, spare_;
  MapProjection painted_;
  double scale_ = 0;
  bool isPainted_ = false;
};

/** Moves a projection by so many pixels, but by whole device pixels; `dx` and `dy` become what it
    was moved by. */
MapProjection PannedByPixels(const MapProjection& projection, double& dx, double& dy, double scale);

}  // namespace rws
