#include "map/forms/map_backing.h"

#include <QPainter>
#include <QRegion>
#include <cmath>

#include "map/forms/map_painter.h"

namespace rws {

const QImage& MapBacking::Picture(const MapShown& shown, double scale) {
  const QSize size(std::max(1, static_cast<int>(std::ceil(shown.Projection.Width * scale))),
                   std::max(1, static_cast<int>(std::ceil(shown.Projection.Height * scale))));
  if (scale != scale_ || size != picture_.size()) {
    // Neither has an alpha channel: nothing has to be blended with what is below.
    picture_ = QImage(size, QImage::Format_RGB32);
    spare_ = QImage(size, QImage::Format_RGB32);
    scale_ = scale;
    isPainted_ = false;
  }
  if (!isPainted_ || !Shift(shown, size)) Paint(shown, QRect(QPoint(), size));
  painted_ = shown.Projection;
  isPainted_ = true;
  return picture_;
}

/** False when nothing of the picture can be used again. */
bool MapBacking::Shift(const MapShown& shown, const QSize& size) {
  constexpr double kExact = 0.01;
  const MapProjection& now = shown.Projection;
  if (now.MetresPerPixel != painted_.MetresPerPixel || now.Width != painted_.Width ||
      now.Height != painted_.Height)
    return false;
  const double right = (painted_.Centre.X - now.Centre.X) / now.MetresPerPixel * scale_;
  const double down = (now.Centre.Y - painted_.Centre.Y) / now.MetresPerPixel * scale_;
  if (!(std::fabs(right) < size.width()) || !(std::fabs(down) < size.height())) return false;
  const QPoint shift(static_cast<int>(std::lround(right)), static_cast<int>(std::lround(down)));
  if (std::fabs(right - shift.x()) > kExact || std::fabs(down - shift.y()) > kExact) return false;
  if (shift.isNull()) return true;
  QPainter painter(&spare_);
  painter.setCompositionMode(QPainter::CompositionMode_Source);
  painter.drawImage(shift, picture_);
  painter.end();
  picture_.swap(spare_);
  const QRect all(QPoint(), size);
  for (const QRect& part : QRegion(all) - QRegion(all.translated(shift))) Paint(shown, part);
  return true;
}

void MapBacking::Paint(const MapShown& shown, const QRect& part) {
  MapShown strip = shown;
  const QRectF rect(QPointF(part.topLeft()) / scale_, QSizeF(part.size()) / scale_);
  strip.Projection.Centre = shown.Projection.ToMap({rect.center().x(), rect.center().y()});
  strip.Projection.Width = rect.width();
  strip.Projection.Height = rect.height();
  QPainter painter(&picture_);
  painter.setClipRect(part);
  painter.scale(scale_, scale_);
  painter.translate(rect.topLeft());
  PaintMapGround(painter, strip);
}

MapProjection PannedByPixels(const MapProjection& projection, double& dx, double& dy,
                             double scale) {
  dx = std::round(dx * scale) / scale;
  dy = std::round(dy * scale) / scale;
  return Panned(projection, dx, dy);
}

}  // namespace rws
