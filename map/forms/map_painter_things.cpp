#include <QFontMetricsF>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

#include "map/forms/map_colors.h"
#include "map/forms/map_parts.h"
#include "mission/home_base_values.h"

namespace rws {

namespace {

/** Symbols are as large as the scale has room for. */
double SymbolRadius(double metresPerPixel) {
  struct Row {
    double Above, Radius;
  };
  constexpr std::array<Row, 4> kRows{{{300, 2}, {120, 3}, {40, 4.5}, {10, 6}}};
  constexpr double kLargest = 8;
  for (const auto& row : kRows)
    if (metresPerPixel > row.Above) return row.Radius;
  return kLargest;
}
/** Below this size a direction cannot be seen. */
constexpr double kLeastTurned = 4;

/** Where symbols were drawn already: of many on one spot one is enough. The cells are those of the
    ground, so that a map that is moved shows the same ones. */
class Occupancy {
 public:
  Occupancy(const MapBounds& seen, double cell)
      : cell_(cell),
        columns_(static_cast<std::size_t>((seen.Right - seen.Left) / cell) + 3),
        left_(std::floor(seen.Left / cell)),
        bottom_(std::floor(seen.Bottom / cell)),
        taken_(columns_ * (static_cast<std::size_t>((seen.Top - seen.Bottom) / cell) + 3)) {}

  /** True the first time. The place must be seen. */
  bool Take(MapPoint at) {
    const auto column = static_cast<std::size_t>(std::floor(at.X / cell_) - left_);
    const auto row = static_cast<std::size_t>(std::floor(at.Y / cell_) - bottom_);
    char& taken = taken_[row * columns_ + column];
    return !std::exchange(taken, 1);
  }

 private:
  double cell_;
  std::size_t columns_;
  double left_, bottom_;
  std::vector<char> taken_;
};

/** Places where an object is drawn, in two turns: houses lie under all else. */
struct Visible {
  std::vector<std::uint32_t> Below, Above;
};

Visible VisibleOf(const MapCanvas& canvas, double radius) {
  Visible visible;
  const double cell = std::max(2.0, radius * 0.75) * canvas.MetresPerPixel();
  Occupancy below(canvas.Seen, cell), above(canvas.Seen, cell);
  const auto& objects = canvas.Model->Scene.Things.Objects;
  canvas.Model->Grid.Within(canvas.Seen, [&](std::size_t index) {
    const MapObject& object = objects[index];
    if (!canvas.Shown.Layers[LayerOf(object.Kind)] || !canvas.Sees(object.At)) return;
    const bool isBelow = object.Kind == ObjectKind::Building;
    if ((isBelow ? below : above).Take(object.At))
      (isBelow ? visible.Below : visible.Above).push_back(static_cast<std::uint32_t>(index));
  });
  return visible;
}

void PaintArrow(MapCanvas& canvas, QPointF at, double heading, double size) {
  QPainterPath head;
  head.moveTo(-0.6, 0.8);
  head.lineTo(0, 0);
  head.lineTo(0.6, 0.8);
  QTransform place;
  place.translate(at.x(), at.y());
  place.rotate(heading);
  place.scale(size, size);
  canvas.Painter.setBrush(Qt::NoBrush);
  canvas.Painter.drawPath(place.map(head));
}

void PaintRoad(MapCanvas& canvas, const MapUnit& unit) {
  std::vector<QLineF> lines;
  canvas.AddLines(lines, unit.Road,
                  [](const RoadPoint& point) -> const MapPoint& { return point.At; });
  canvas.Painter.setPen(
      QPen(Faint(ArmyColor(unit.Army, canvas.Shown.Dark), canvas.Shown.Dark, 0.7), 1));
  canvas.Draw(lines);
  const MapPoint end = unit.Road.back().At;
  const MapPoint start = unit.Road.front().At;
  constexpr double kArrow = 7;
  if (lines.empty() || !canvas.Sees(end) ||
      DistanceOf(start, end) < 2 * kArrow * canvas.MetresPerPixel())
    return;
  const QLineF last = lines.back();
  PaintArrow(canvas, canvas.At(end), 90 - last.angle(), kArrow);
}

void PaintTarget(MapCanvas& canvas, const MapTarget& target) {
  constexpr double kMark = 6;
  QPainter& painter = canvas.Painter;
  const QColor color = TargetColor(canvas.Shown.Dark);
  if (target.Radius > kMark * canvas.MetresPerPixel()) {
    QPen rim(color, 1.2);
    rim.setDashPattern({5, 4});
    painter.setPen(rim);
    canvas.Circle(target.At, target.Radius);
  }
  if (!canvas.Sees(target.At)) return;
  const QPointF at = canvas.At(target.At);
  for (const auto& pen : {QPen(GroundColor(canvas.Shown.Dark), 4), QPen(color, 1.8)}) {
    painter.setPen(pen);
    painter.drawLine(at - QPointF(kMark, kMark), at + QPointF(kMark, kMark));
    painter.drawLine(at - QPointF(kMark, -kMark), at + QPointF(kMark, -kMark));
  }
}

void PaintBase(MapCanvas& canvas, const MapBase& base, double width) {
  constexpr double kLeast = 4, kMark = 4;
  QPainter& painter = canvas.Painter;
  painter.setPen(QPen(BaseColor(base.Army, canvas.Shown.Dark), width));
  painter.setBrush(Qt::NoBrush);
  canvas.Circle(base.At, std::max(base.Radius, kLeast * canvas.MetresPerPixel()));
  if (!canvas.Sees(base.At) || base.Radius < 2 * kMark * canvas.MetresPerPixel()) return;
  const QPointF at = canvas.At(base.At);
  painter.drawLine(at - QPointF(kMark, 0), at + QPointF(kMark, 0));
  painter.drawLine(at - QPointF(0, kMark), at + QPointF(0, kMark));
}

/** The colour of a home base in a word, over its circle, where that is large enough. */
void PaintBaseName(MapCanvas& canvas, const MapBase& base) {
  constexpr double kLeast = 16, kGap = 4;
  const MapPoint top{base.At.X, base.At.Y + base.Radius};
  if (!canvas.Sees(top) || base.Radius < kLeast * canvas.MetresPerPixel()) return;
  if (base.Army >= kHomeBaseColors.size()) return;
  const auto name = kHomeBaseColors[base.Army].Name;
  const QString text = QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size()));
  const double width = QFontMetricsF(canvas.Painter.font()).horizontalAdvance(text);
  canvas.Text(canvas.At(top) - QPointF(width / 2, kGap), text,
              BaseColor(base.Army, canvas.Shown.Dark));
}

}  // namespace

void PaintFront(MapCanvas& canvas) {
  if (!canvas.Shows(MapLayer::Front)) return;
  std::vector<QLineF> lines;
  for (const auto& [from, to] : canvas.Model->Front) canvas.AddLine(lines, from, to);
  for (const auto& [color, width] : {std::pair(GroundColor(canvas.Shown.Dark), 5.0),
                                     std::pair(FrontColor(canvas.Shown.Dark), 2.2)}) {
    canvas.Painter.setPen(QPen(color, width, Qt::SolidLine, Qt::RoundCap));
    canvas.Draw(lines);
  }
}

void PaintBases(MapCanvas& canvas) {
  if (!canvas.Shows(MapLayer::HomeBases)) return;
  for (const auto& base : canvas.Model->Scene.Bases) PaintBase(canvas, base, 1.5);
}

void PaintBaseNames(MapCanvas& canvas) {
  if (!canvas.Shows(MapLayer::HomeBases)) return;
  for (const auto& base : canvas.Model->Scene.Bases) PaintBaseName(canvas, base);
}

void PaintSelectedBase(MapCanvas& canvas, const MapPreview& preview) {
  constexpr double kHandle = 4;
  const auto selected = canvas.Shown.Selection.Base;
  if (!canvas.Shows(MapLayer::HomeBases) || !selected ||
      *selected >= canvas.Model->Scene.Bases.size())
    return;
  const MapBase base = preview.Base.value_or(canvas.Model->Scene.Bases[*selected]);
  PaintBase(canvas, base, 3);
  QPainter& painter = canvas.Painter;
  painter.setPen(QPen(BaseColor(base.Army, canvas.Shown.Dark), 1.5));
  painter.setBrush(GroundColor(canvas.Shown.Dark));
  const double radius = base.Radius;
  for (const MapPoint offset : {MapPoint{}, MapPoint{radius, 0}, MapPoint{-radius, 0},
                                MapPoint{0, radius}, MapPoint{0, -radius}}) {
    const MapPoint handle{base.At.X + offset.X, base.At.Y + offset.Y};
    if (!canvas.Sees(handle)) continue;
    const QPointF at = canvas.At(handle);
    painter.drawRect(QRectF(at.x() - kHandle, at.y() - kHandle, 2 * kHandle, 2 * kHandle));
  }
}

void PaintBridges(MapCanvas& canvas) {
  if (!canvas.Shows(MapLayer::Bridges)) return;
  constexpr double kLeast = 8;
  for (const auto& bridge : canvas.Model->Scene.Things.Bridges) {
    const MapPoint middle = Between(bridge.From, bridge.To, 0.5);
    if (!canvas.Sees(middle)) continue;
    QLineF line(canvas.At(bridge.From), canvas.At(bridge.To));
    if (line.length() < kLeast) {
      const QPointF at = canvas.At(middle);
      const double angle = line.length() > 0 ? line.angle() : 0;
      line = QLineF::fromPolar(kLeast, angle).translated(at);
      line.translate(-line.dx() / 2, -line.dy() / 2);
    }
    for (const auto& pen :
         {QPen(InkColor(canvas.Shown.Dark), 5, Qt::SolidLine, Qt::FlatCap),
          QPen(GroundColor(canvas.Shown.Dark), 2.5, Qt::SolidLine, Qt::FlatCap)}) {
      canvas.Painter.setPen(pen);
      canvas.Painter.drawLine(line);
    }
  }
}

void PaintUnits(MapCanvas& canvas) {
  if (!canvas.Shows(MapLayer::Units)) return;
  const auto& units = canvas.Model->Scene.Things.Units;
  for (const auto& unit : units) PaintRoad(canvas, unit);
  const double radius = SymbolRadius(canvas.MetresPerPixel()) + 1;
  canvas.BeginSymbols(radius);
  for (const auto& unit : units) {
    const MapPoint at = unit.Road.front().At;
    if (!canvas.Sees(at)) continue;
    const double heading = unit.Road.size() > 1 ? HeadingOf(at, unit.Road[1].At) : 0;
    canvas.Symbol(canvas.At(at), unit.Kind, unit.Army, radius < kLeastTurned ? 0 : heading);
  }
  canvas.EndSymbols();
}

void PaintRockets(MapCanvas& canvas) {
  if (!canvas.Shows(MapLayer::Objects)) return;
  constexpr double kArrow = 7;
  for (const auto& rocket : canvas.Model->Scene.Things.Rockets) {
    QPen pen(Faint(ArmyColor(rocket.Army, canvas.Shown.Dark), canvas.Shown.Dark, 0.7), 1);
    pen.setDashPattern({8, 3, 2, 3});
    canvas.Painter.setPen(pen);
    canvas.Line(rocket.From, rocket.To);
    if (!canvas.Sees(rocket.To)) continue;
    pen.setStyle(Qt::SolidLine);
    canvas.Painter.setPen(pen);
    PaintArrow(canvas, canvas.At(rocket.To), HeadingOf(rocket.From, rocket.To), kArrow);
  }
}

void PaintObjects(MapCanvas& canvas) {
  if (!canvas.Model) return;
  const double radius = SymbolRadius(canvas.MetresPerPixel());
  const Visible visible = VisibleOf(canvas, radius);
  const auto& objects = canvas.Model->Scene.Things.Objects;
  canvas.BeginSymbols(radius);
  for (const auto* indexes : {&visible.Below, &visible.Above})
    for (const auto index : *indexes) {
      const MapObject& object = objects[index];
      canvas.Symbol(canvas.At(object.At), object.Kind, object.Army,
                    radius < kLeastTurned ? 0 : double(object.Heading));
    }
  canvas.EndSymbols();
}

void PaintTargets(MapCanvas& canvas) {
  if (!canvas.Shows(MapLayer::Targets)) return;
  canvas.Painter.setBrush(Qt::NoBrush);
  for (const auto& target : canvas.Model->Scene.Things.Targets) PaintTarget(canvas, target);
}

}  // namespace rws
