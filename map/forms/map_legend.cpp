#include "map/forms/map_legend.h"

#include <QFontMetricsF>
#include <QPen>
#include <algorithm>
#include <array>

#include "map/forms/map_colors.h"
#include "map/forms/map_symbols.h"
#include "map/map_texts.h"
#include "map/map_things.h"

namespace rws {

namespace {

constexpr double kSample = 6, kHalfLine = 12;

QString Utf8(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/** What kinds of things and which armies a mission has. */
struct Present {
  std::array<bool, kObjectKinds> Kinds{};
  std::array<bool, 3> Armies{};
  std::array<bool, 4> Shapes{};
  bool Triggers = false, Links = false, Patrols = false;

  void TakeArmy(std::uint8_t army) { Armies[army < Armies.size() ? army : 0] = true; }
};

void TakeRoutes(Present& present, const std::vector<MapRoute>& routes) {
  for (const auto& route : routes) {
    present.TakeArmy(route.Army);
    for (const auto& point : route.Points) {
      present.Shapes[static_cast<std::size_t>(point.Shape)] = true;
      present.Triggers |= point.HasTriggers;
      present.Links |= !point.Target.empty();
      present.Patrols |= !point.Patrol.empty();
    }
  }
}

Present PresentIn(const MapModel& model, const MapLayers& layers) {
  Present present;
  for (const auto& object : model.Scene.Things.Objects) {
    if (!layers[LayerOf(object.Kind)]) continue;
    present.Kinds[static_cast<std::size_t>(object.Kind)] = true;
    if (object.Kind != ObjectKind::Building) present.TakeArmy(object.Army);
  }
  for (const auto& unit : model.Scene.Things.Units) {
    if (!layers[MapLayer::Units]) break;
    present.Kinds[static_cast<std::size_t>(unit.Kind)] = true;
    present.TakeArmy(unit.Army);
  }
  if (layers[MapLayer::Routes]) TakeRoutes(present, model.Scene.Routes);
  return present;
}

LegendEntry LineEntry(const QString& text, QColor (*color)(bool), double width,
                      const QList<qreal>& pattern = {}) {
  return {text, [=](QPainter& painter, QPointF at, bool dark) {
            QPen pen(color(dark), width, Qt::SolidLine, Qt::FlatCap);
            if (!pattern.isEmpty()) pen.setDashPattern(pattern);
            painter.setPen(pen);
            painter.drawLine(at - QPointF(kHalfLine, 0), at + QPointF(kHalfLine, 0));
          }};
}

LegendEntry ArmyEntry(std::uint8_t army) {
  return {Utf8(ArmyName(army)), [army](QPainter& painter, QPointF at, bool dark) {
            painter.setPen(StrongPen(army, dark));
            painter.drawLine(at - QPointF(kHalfLine, 0), at + QPointF(kHalfLine, 0));
            SetArmyLook(painter, army, dark, 1.5);
            DrawShape(painter, WaypointOutline(WaypointShape::Normal), at, kSample);
          }};
}

LegendEntry ShapeEntry(const QString& text, const QPainterPath& shape) {
  return {text, [shape](QPainter& painter, QPointF at, bool dark) {
            painter.setPen(QPen(InkColor(dark), 1.2));
            painter.setBrush(Faint(InkColor(dark), dark, 0.3));
            DrawShape(painter, shape, at, kSample);
          }};
}

LegendEntry BaseEntry() {
  return {QStringLiteral("Home base"), [](QPainter& painter, QPointF at, bool dark) {
            painter.setPen(QPen(InkColor(dark), 1.5));
            painter.setBrush(Qt::NoBrush);
            painter.drawEllipse(at, kSample + 1, kSample + 1);
            painter.drawLine(at - QPointF(3, 0), at + QPointF(3, 0));
            painter.drawLine(at - QPointF(0, 3), at + QPointF(0, 3));
          }};
}

LegendEntry TargetEntry() {
  return {QStringLiteral("Target"), [](QPainter& painter, QPointF at, bool dark) {
            painter.setPen(QPen(TargetColor(dark), 1.8));
            painter.drawLine(at - QPointF(5, 5), at + QPointF(5, 5));
            painter.drawLine(at - QPointF(5, -5), at + QPointF(5, -5));
          }};
}

LegendEntry WayEntry() {
  return {QStringLiteral("Way of a column or ship"), [](QPainter& painter, QPointF at, bool dark) {
            painter.setPen(QPen(InkColor(dark), 1));
            const QPointF tip = at + QPointF(kHalfLine, 0);
            painter.drawLine(at - QPointF(kHalfLine, 0), tip);
            painter.drawLine(tip, tip + QPointF(-5, -4));
            painter.drawLine(tip, tip + QPointF(-5, 4));
          }};
}

LegendEntry BridgeEntry() {
  return {QStringLiteral("Bridge"), [](QPainter& painter, QPointF at, bool dark) {
            painter.setPen(QPen(InkColor(dark), 1.3));
            painter.drawLine(at + QPointF(-5, -2), at + QPointF(5, -2));
            painter.drawLine(at + QPointF(-5, 2), at + QPointF(5, 2));
          }};
}

void AddWaypoints(std::vector<LegendEntry>& entries, const Present& present) {
  constexpr std::array<const char*, 4> kNames{"Take-off", "Waypoint", "Ground attack", "Landing"};
  for (std::size_t i = 0; i < kNames.size(); ++i)
    if (present.Shapes[i])
      entries.push_back(
          ShapeEntry(QLatin1String(kNames[i]), WaypointOutline(static_cast<WaypointShape>(i))));
  if (present.Triggers)
    entries.push_back(
        {QStringLiteral("Delay or patrol"), [](QPainter& painter, QPointF at, bool dark) {
           painter.setPen(QPen(InkColor(dark), 1.5));
           painter.drawLine(at + QPointF(3, 3), at - QPointF(3, 3));
         }});
  if (present.Links)
    entries.push_back(LineEntry(QStringLiteral("To its target"), InkColor, 1, {2, 4}));
  if (present.Patrols) entries.push_back(LineEntry(QStringLiteral("Patrol"), InkColor, 1, {5, 3}));
}

}  // namespace

std::vector<LegendEntry> LegendOf(const MapModel& model, const MapLayers& layers) {
  const Present present = PresentIn(model, layers);
  const MapScene& scene = model.Scene;
  std::vector<LegendEntry> entries;
  for (const std::uint8_t army : {1, 2, 0})
    if (present.Armies[army]) entries.push_back(ArmyEntry(army));
  AddWaypoints(entries, present);
  if (layers[MapLayer::HomeBases] && !scene.Bases.empty()) entries.push_back(BaseEntry());
  for (std::size_t i = 0; i < kObjectKinds; ++i)
    if (present.Kinds[i]) {
      const auto kind = static_cast<ObjectKind>(i);
      entries.push_back(ShapeEntry(Utf8(KindName(kind)), ObjectShape(kind)));
    }
  if (layers[MapLayer::Units] && !scene.Things.Units.empty()) entries.push_back(WayEntry());
  if (layers[MapLayer::Front] && !model.Front.empty())
    entries.push_back(LineEntry(QStringLiteral("Front line"), FrontColor, 2.2));
  if (layers[MapLayer::Targets] && !scene.Things.Targets.empty()) entries.push_back(TargetEntry());
  if (layers[MapLayer::Objects] && !scene.Things.Rockets.empty())
    entries.push_back(LineEntry(QStringLiteral("Aim of a rocket"), InkColor, 1, {8, 3, 2, 3}));
  if (layers[MapLayer::Bridges] && !scene.Things.Bridges.empty()) entries.push_back(BridgeEntry());
  return entries;
}

namespace {

constexpr double kMargin = 8;

/** Where the lines of a legend stand: in a low window it goes on beside itself. */
struct Layout {
  double Row = 0, Column = 0;
  std::size_t Rows = 0;
  QSizeF Size;
};

Layout LayoutOf(const std::vector<LegendEntry>& entries, const QFontMetricsF& font, double height) {
  constexpr double kGap = 2;
  Layout layout;
  layout.Row = std::max(font.height(), 2 * kSample + kGap) + kGap;
  for (const auto& entry : entries)
    layout.Column = std::max(layout.Column, font.horizontalAdvance(entry.Text));
  layout.Column += 2 * kMargin + 2 * kHalfLine;
  const auto fitting = static_cast<std::size_t>(std::max(1.0, (height - 4 * kMargin) / layout.Row));
  const std::size_t columns = (entries.size() + fitting - 1) / fitting;
  layout.Rows = (entries.size() + columns - 1) / columns;
  layout.Size = {layout.Column * double(columns) + kMargin,
                 layout.Row * double(layout.Rows) + 2 * kMargin};
  return layout;
}

}  // namespace

double LegendWidth(const std::vector<LegendEntry>& entries, const QFont& font, const QSizeF& area) {
  constexpr double kMostOfWidth = 0.4;
  if (entries.empty()) return 0;
  const double width = LayoutOf(entries, QFontMetricsF(font), area.height()).Size.width();
  return width <= kMostOfWidth * area.width() ? width : 0;
}

QRectF PaintLegend(QPainter& painter, const std::vector<LegendEntry>& entries, const QRectF& area,
                   bool dark) {
  if (LegendWidth(entries, painter.font(), area.size()) == 0) return {};
  const QFontMetricsF font(painter.font());
  const Layout layout = LayoutOf(entries, font, area.height());
  const QPointF corner(layout.Size.width() + kMargin, layout.Size.height() + kMargin);
  const QRectF box(area.bottomRight() - corner, layout.Size);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  QColor ground = GroundColor(dark);
  ground.setAlphaF(0.88F);
  painter.setPen(QPen(GridColor(dark), 1));
  painter.setBrush(ground);
  painter.drawRoundedRect(box, 4, 4);
  for (std::size_t i = 0; i < entries.size(); ++i) {
    const double x = box.left() + kMargin + kHalfLine + layout.Column * double(i / layout.Rows);
    const double y = box.top() + kMargin + layout.Row * (double(i % layout.Rows) + 0.5);
    entries[i].Sample(painter, {x, y}, dark);
    painter.setPen(InkColor(dark));
    painter.drawText(QPointF(x + kHalfLine + kMargin, y + (font.ascent() - font.descent()) / 2),
                     entries[i].Text);
  }
  painter.restore();
  return box;
}

}  // namespace rws
