#include "map/forms/map_canvas.h"

#include <QFontMetricsF>
#include <QPaintEngine>
#include <QPainterPath>
#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "map/forms/map_colors.h"

namespace rws {

namespace {

/** Pixels around the picture in which a thing still may reach into it. */
constexpr double kRim = 48;
/** What comes to lie between two device pixels must always go to the same side, else a map that is
    moved would not fit its parts. */
constexpr double kTie = 1e-6;

/** Shared by all pictures: a map is painted by the thread of the window alone. */
LabelCache& Labels() {
  static LabelCache cache;
  return cache;
}

/** A picture has symbols of some sizes; those of a size that is not used any more make room. */
SymbolCache& SymbolsOf(double radius, bool dark) {
  constexpr std::size_t kSizes = 8;
  static std::array<SymbolCache, kSizes> caches;
  static std::size_t next = 0;
  for (auto& cache : caches)
    if (cache.IsFor(radius, dark)) return cache;
  SymbolCache& cache = caches[next++ % kSizes];
  cache.SetLook(radius, dark);
  return cache;
}

QPoint PixelOf(QPointF device) {
  return {static_cast<int>(std::floor(device.x() + kTie)),
          static_cast<int>(std::floor(device.y() + kTie))};
}

bool IsFinite(MapPoint point) { return std::isfinite(point.X) && std::isfinite(point.Y); }

}  // namespace

MapCanvas::MapCanvas(QPainter& painter, const MapShown& shown)
    : Painter(painter),
      Shown(shown),
      Model(shown.Model),
      Seen(shown.Projection.Seen(kRim)),
      isRaster_(painter.paintEngine() && painter.paintEngine()->type() == QPaintEngine::Raster) {}

QPointF MapCanvas::At(MapPoint point) const {
  const ScreenPoint at = Shown.Projection.ToScreen(point);
  return {at.X, at.Y};
}

void MapCanvas::AddLine(std::vector<QLineF>& lines, MapPoint from, MapPoint to) const {
  if (!IsFinite(from) || !IsFinite(to)) return;
  if (const auto seen = ClippedTo(Seen, from, to))
    lines.emplace_back(At(seen->first), At(seen->second));
}

void MapCanvas::Sharpen(std::vector<QLineF>& lines) const {
  const QTransform toDevice = Painter.deviceTransform(), back = toDevice.inverted();
  const auto sharp = [&](QPointF at) {
    const QPointF pixel = toDevice.map(at);
    return back.map(
        QPointF(std::floor(pixel.x() + kTie) + 0.5, std::floor(pixel.y() + kTie) + 0.5));
  };
  for (auto& line : lines) line = QLineF(sharp(line.p1()), sharp(line.p2()));
}

void MapCanvas::Draw(const std::vector<QLineF>& lines) {
  if (!lines.empty()) Painter.drawLines(lines.data(), static_cast<int>(lines.size()));
}

void MapCanvas::Line(MapPoint from, MapPoint to) {
  if (!IsFinite(from) || !IsFinite(to)) return;
  const auto seen = ClippedTo(Seen, from, to);
  if (!seen) return;
  const QPen pen = Painter.pen();
  if (pen.style() == Qt::CustomDashLine) {
    const auto pattern = pen.dashPattern();
    double length = 0;
    for (const double part : pattern) length += part;
    const double before = DistanceOf(from, seen->first) / MetresPerPixel() / pen.widthF();
    QPen shifted = pen;
    shifted.setDashOffset(std::fmod(before, length));
    Painter.setPen(shifted);
  }
  Painter.drawLine(At(seen->first), At(seen->second));
  Painter.setPen(pen);
}

void MapCanvas::Circle(MapPoint centre, double metres) {
  constexpr double kLargest = 4000;
  constexpr int kSteps = 128;
  if (!IsFinite(centre) || !std::isfinite(metres)) return;
  const double radius = metres / MetresPerPixel();
  if (radius <= kLargest) {
    MapBounds around;
    around.Add(centre, metres);
    if (around.Left > Seen.Right || around.Right < Seen.Left || around.Bottom > Seen.Top ||
        around.Top < Seen.Bottom)
      return;
    Painter.drawEllipse(At(centre), radius, radius);
    return;
  }
  // Of a very large one only the arc that may be seen is drawn, by short lines.
  const MapPoint middle = Shown.Projection.Centre;
  const double toMiddle = std::atan2(middle.Y - centre.Y, middle.X - centre.X);
  const double reach = std::hypot(Seen.Right - Seen.Left, Seen.Top - Seen.Bottom);
  const double half = std::min(std::numbers::pi, 2 * reach / metres);
  const auto at = [&](int step) {
    const double angle = toMiddle + half * (2.0 * step / kSteps - 1);
    return MapPoint{centre.X + metres * std::cos(angle), centre.Y + metres * std::sin(angle)};
  };
  for (int i = 0; i < kSteps; ++i) Line(at(i), at(i + 1));
}

void MapCanvas::Text(QPointF at, const QString& text, const QColor& color) {
  const QTransform device = Painter.deviceTransform();
  if (!isRaster_ || device.type() > QTransform::TxScale) {
    DrawHaloText(Painter, at, text, color, Shown.Dark);
    return;
  }
  const auto& label = Labels().Of(text, Painter.font(), color, device.m11(), Shown.Dark);
  const QPointF pixel = device.map(at);
  const QTransform own = Painter.worldTransform();
  SetPixelTransform(device);
  Painter.drawImage(PixelOf(pixel) - label.Origin, label.Picture);
  Painter.setWorldTransform(own);
}

/** Pixel for pixel from here on: anything else would scale each small picture anew. */
void MapCanvas::SetPixelTransform(const QTransform& device) {
  const QTransform toDevice = Painter.worldTransform().inverted() * device;
  Painter.setWorldTransform(toDevice.inverted());
}

void MapCanvas::BeginSymbols(double radius) {
  symbolRadius_ = radius;
  Painter.save();
  device_ = Painter.deviceTransform();
  // Turned pictures of symbols would be neither quick nor fine.
  isRaster_ = isRaster_ && device_.type() <= QTransform::TxScale;
  if (!isRaster_) return;
  symbols_ = &SymbolsOf(radius * device_.m11(), Shown.Dark);
  SetPixelTransform(device_);
}

void MapCanvas::EndSymbols() { Painter.restore(); }

void MapCanvas::DrawPicture(QPointF at, const QImage& picture) {
  const QPoint middle(picture.width() / 2, picture.height() / 2);
  Painter.drawImage(PixelOf(device_.map(at)) - middle, picture);
}

void MapCanvas::Symbol(QPointF at, ObjectKind kind, std::uint8_t army, double heading) {
  if (isRaster_) {
    DrawPicture(at, symbols_->Of(kind, army, heading));
    return;
  }
  SetArmyLook(Painter, army, Shown.Dark, 1);
  DrawShape(Painter, ObjectShape(kind), at, symbolRadius_, HasNose(kind) ? heading : 0);
}

void MapCanvas::Symbol(QPointF at, WaypointShape shape, std::uint8_t army) {
  if (isRaster_) {
    DrawPicture(at, symbols_->Of(shape, army));
    return;
  }
  SetArmyLook(Painter, army, Shown.Dark, 1);
  DrawShape(Painter, WaypointOutline(shape), at, symbolRadius_);
}

}  // namespace rws
