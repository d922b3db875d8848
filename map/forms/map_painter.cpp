#include "map/forms/map_painter.h"

#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

#include "map/forms/map_colors.h"
#include "map/forms/map_parts.h"

namespace rws {

namespace {

constexpr double kGridPixels = 80, kEdge = 8;

/** Calls `visit` with each multiple of the grid's step within a range. */
template <class Visit>
void EachGridLine(double step, double from, double to, Visit visit) {
  // Counted, because a step is lost in a coordinate that is far too large.
  constexpr int kMost = 1000;
  const double first = std::ceil(from / step);
  for (int i = 0; i < kMost && (first + i) * step <= to; ++i) visit((first + i) * step);
}

QString KilometresText(double metres, bool withUnit) {
  constexpr int kDigits = 7;
  return QString::number(metres / 1000, 'g', kDigits) +
         (withUnit ? QStringLiteral(" km") : QString());
}

/** The part of a picture that is seen, so that no painter scales all of it. */
struct SeenPart {
  QRectF Target, Source;
};
SeenPart PartOf(const MapCanvas& canvas, const MapUnderlay& underlay) {
  const MapBounds& place = underlay.Place;
  const MapBounds part{
      std::max(place.Left, canvas.Seen.Left), std::max(place.Bottom, canvas.Seen.Bottom),
      std::min(place.Right, canvas.Seen.Right), std::min(place.Top, canvas.Seen.Top)};
  if (part.Right <= part.Left || part.Top <= part.Bottom) return {};
  const double perX = underlay.Picture.width() / (place.Right - place.Left);
  const double perY = underlay.Picture.height() / (place.Top - place.Bottom);
  return {QRectF(canvas.At({part.Left, part.Top}), canvas.At({part.Right, part.Bottom})),
          QRectF((part.Left - place.Left) * perX, (place.Top - part.Top) * perY,
                 (part.Right - part.Left) * perX, (part.Top - part.Bottom) * perY)};
}

class Saved {
 public:
  explicit Saved(QPainter& painter) : painter_(painter) {
    painter_.save();
    painter_.setRenderHint(QPainter::Antialiasing);
  }
  ~Saved() { painter_.restore(); }
  Saved(const Saved&) = delete;
  Saved& operator=(const Saved&) = delete;

 private:
  QPainter& painter_;
};

QRectF Frame(const MapShown& shown) {
  return {0, 0, shown.Projection.Width, shown.Projection.Height};
}

}  // namespace

void PaintUnderlay(MapCanvas& canvas) {
  const MapUnderlay* underlay = canvas.Shown.Underlay;
  if (!underlay || !canvas.Shown.Layers[MapLayer::Picture] || underlay->Picture.isNull()) return;
  const SeenPart part = PartOf(canvas, *underlay);
  if (part.Target.isEmpty()) return;
  QPainter& painter = canvas.Painter;
  painter.save();
  painter.setOpacity(underlay->Opacity);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.drawImage(part.Target, underlay->Picture, part.Source);
  painter.restore();
}

void PaintGrid(MapCanvas& canvas) {
  if (!canvas.Shown.Layers[MapLayer::Grid]) return;
  const double step = GridStep(canvas.Shown.Projection, kGridPixels);
  const MapBounds& seen = canvas.Seen;
  std::vector<QLineF> lines;
  EachGridLine(step, seen.Left, seen.Right, [&](double x) {
    canvas.AddLine(lines, {x, seen.Bottom}, {x, seen.Top});
  });
  EachGridLine(step, seen.Bottom, seen.Top, [&](double y) {
    canvas.AddLine(lines, {seen.Left, y}, {seen.Right, y});
  });
  canvas.Sharpen(lines);
  canvas.Painter.setPen(QPen(GridColor(canvas.Shown.Dark), 1));
  canvas.Draw(lines);
}

void PaintGridLabels(MapCanvas& canvas) {
  if (!canvas.Shown.Layers[MapLayer::Grid]) return;
  const double step = GridStep(canvas.Shown.Projection, kGridPixels);
  const MapBounds seen = canvas.Shown.Projection.Seen();
  const QFontMetricsF font(canvas.Painter.font());
  const QColor color = Faint(InkColor(canvas.Shown.Dark), canvas.Shown.Dark, 0.7);
  bool isFirst = true;
  EachGridLine(step, seen.Left, seen.Right, [&](double x) {
    const QString text = KilometresText(x, isFirst);
    const double at = canvas.At({x, seen.Top}).x() - font.horizontalAdvance(text) / 2;
    // The corner belongs to the numbers of the other edge.
    if (at < 2 * kEdge || at + font.horizontalAdvance(text) > canvas.Shown.Projection.Width) return;
    canvas.Text({at, font.ascent() + 2}, text, color);
    isFirst = false;
  });
  EachGridLine(step, seen.Bottom, seen.Top, [&](double y) {
    const double at = canvas.At({seen.Left, y}).y() + font.ascent() / 2 - 1;
    if (at < 3 * font.height() || at > canvas.Shown.Projection.Height - 3 * font.height()) return;
    canvas.Text({kEdge / 2, at}, KilometresText(y, false), color);
  });
}

void PaintScaleBar(MapCanvas& canvas) {
  constexpr double kMost = 160, kTick = 5;
  const ScaleBar bar = ScaleBarOf(canvas.Shown.Projection, kMost, canvas.Shown.Metric);
  const double y = canvas.Shown.Projection.Height - 2 * kEdge;
  const double left = 2 * kEdge, right = left + bar.Pixels;
  const QPointF corners[] = {{left, y - kTick}, {left, y}, {right, y}, {right, y - kTick}};
  QPainter& painter = canvas.Painter;
  for (const auto& [color, width] : {std::pair(GroundColor(canvas.Shown.Dark), 4.0),
                                     std::pair(InkColor(canvas.Shown.Dark), 1.5)}) {
    painter.setPen(QPen(color, width));
    painter.drawPolyline(corners, 4);
  }
  canvas.Text({left + 4, y - kTick - 2}, QString::fromStdString(bar.Text),
              InkColor(canvas.Shown.Dark));
}

void PaintNorth(MapCanvas& canvas) {
  constexpr double kHalf = 6, kLength = 22;
  const QColor ink = InkColor(canvas.Shown.Dark);
  const double x = canvas.Shown.Projection.Width - 3 * kEdge, top = 3 * kEdge + kLength;
  QPainterPath arrow;
  arrow.moveTo(x, top - kLength / 2);
  arrow.lineTo(x + kHalf, top + kLength / 2);
  arrow.lineTo(x, top + kLength / 3);
  arrow.lineTo(x - kHalf, top + kLength / 2);
  arrow.closeSubpath();
  QPainter& painter = canvas.Painter;
  painter.strokePath(arrow, QPen(GroundColor(canvas.Shown.Dark), 4));
  painter.fillPath(arrow, ink);
  const QString text = QStringLiteral("N");
  const double width = QFontMetricsF(painter.font()).horizontalAdvance(text);
  canvas.Text({x - width / 2, top - kLength / 2 - 3}, text, ink);
}

void PaintMapGround(QPainter& painter, const MapShown& shown) {
  const Saved saved(painter);
  MapCanvas canvas(painter, shown);
  painter.fillRect(Frame(shown), GroundColor(shown.Dark));
  PaintUnderlay(canvas);
  PaintGrid(canvas);
  PaintFront(canvas);
  PaintBases(canvas);
  PaintBridges(canvas);
  PaintUnits(canvas);
  PaintRockets(canvas);
  PaintObjects(canvas);
  PaintTargets(canvas);
  PaintRoutes(canvas);
  PaintBaseNames(canvas);
}

void PaintMapTop(QPainter& painter, const MapShown& shown, const MapPreview& preview) {
  const Saved saved(painter);
  MapCanvas canvas(painter, shown);
  PaintSelectedBase(canvas, preview);
  LabelPlacer labels;
  PaintStrongRoutes(canvas, preview, labels);
  PaintMoments(canvas, labels);
  PaintGridLabels(canvas);
  PaintScaleBar(canvas);
  PaintNorth(canvas);
}

void PaintMap(QPainter& painter, const MapShown& shown) {
  painter.save();
  painter.setClipRect(Frame(shown), Qt::IntersectClip);
  PaintMapGround(painter, shown);
  PaintMapTop(painter, shown);
  painter.restore();
}

}  // namespace rws
