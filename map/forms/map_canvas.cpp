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
SymbolCache& Symbols() {
  static SymbolCache cache;
  return cache;
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
  constexpr double kHalo = 3;
  QPainterPath path;
  path.addText(at, Painter.font(), text);
  Painter.strokePath(
      path, QPen(GroundColor(Shown.Dark), kHalo, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  Painter.fillPath(path, color);
}

void MapCanvas::BeginSymbols(double radius) {
  symbolRadius_ = radius;
  Painter.save();
  device_ = Painter.deviceTransform();
  // Turned pictures of symbols would be neither quick nor fine.
  isRaster_ = isRaster_ && device_.type() <= QTransform::TxScale;
  if (!isRaster_) return;
  // Pixel for pixel: anything else would be scaled anew for each symbol.
  Symbols().SetLook(radius * device_.m11(), Shown.Dark);
  const QTransform toDevice = device_ * Painter.worldTransform().inverted();
  Painter.setWorldTransform(toDevice.inverted());
}

void MapCanvas::EndSymbols() { Painter.restore(); }

void MapCanvas::DrawPicture(QPointF at, const QImage& picture) {
  const QPointF middle = device_.map(at);
  Painter.drawImage(QPoint(static_cast<int>(std::floor(middle.x() + kTie)) - picture.width() / 2,
                           static_cast<int>(std::floor(middle.y() + kTie)) - picture.height() / 2),
                    picture);
}

void MapCanvas::Symbol(QPointF at, ObjectKind kind, std::uint8_t army, double heading) {
  if (isRaster_) {
    DrawPicture(at, Symbols().Of(kind, army, heading));
    return;
  }
  SetArmyLook(Painter, army, Shown.Dark, 1);
  DrawShape(Painter, ObjectShape(kind), at, symbolRadius_, HasNose(kind) ? heading : 0);
}

void MapCanvas::Symbol(QPointF at, WaypointShape shape, std::uint8_t army) {
  if (isRaster_) {
    DrawPicture(at, Symbols().Of(shape, army));
    return;
  }
  SetArmyLook(Painter, army, Shown.Dark, 1);
  DrawShape(Painter, WaypointOutline(shape), at, symbolRadius_);
}

QRectF LabelPlacer::Place(QPointF at, QSizeF size, double radius) {
  const double right = radius + 2, left = -radius - 2 - size.width();
  const double above = -radius - size.height(), below = radius;
  const double centreX = -size.width() / 2, centreY = -size.height() / 2;
  const std::array<QPointF, 8> offsets{{{right, above},
                                        {right, centreY},
                                        {right, below},
                                        {left, above},
                                        {left, centreY},
                                        {left, below},
                                        {centreX, above},
                                        {centreX, below}}};
  for (const auto& offset : offsets) {
    const QRectF rect(at + offset, size);
    if (std::any_of(taken_.begin(), taken_.end(),
                    [&](const QRectF& taken) { return taken.intersects(rect); }))
      continue;
    taken_.push_back(rect);
    return rect;
  }
  return {};
}

}  // namespace rws
