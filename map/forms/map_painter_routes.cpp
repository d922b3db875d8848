#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

#include "map/forms/map_colors.h"
#include "map/forms/map_parts.h"

namespace rws {

namespace {

constexpr double kSelectedWidth = 2.8, kComparedWidth = 1.8;
constexpr double kStrongSymbol = 7, kFaintSymbol = 4;
/** Above so many metres per pixel points of faint routes would only hide their lines. */
constexpr double kCoarsestPoints = 400;

bool HasPlaces(const RoutePoint& from, const RoutePoint& to) {
  return from.HasPlace && to.HasPlace;
}

QPen LinkPen(std::uint8_t army, bool dark, bool isStrong) {
  QPen pen(Faint(ArmyColor(army, dark), dark, isStrong ? 0.9 : 0.5), 1);
  pen.setDashPattern({2, 4});
  return pen;
}

/** Dotted lines from the points to what they name. */
void PaintLinks(MapCanvas& canvas, const MapRoute& route, bool isStrong) {
  canvas.Painter.setPen(LinkPen(route.Army, canvas.Shown.Dark, isStrong));
  for (const auto& point : route.Points) {
    if (point.Target.empty() || !point.HasPlace) continue;
    if (const auto at = PlaceOf(canvas.Model->Scene, point.Target, point.TargetPoint))
      canvas.Line(point.At, *at);
  }
}

void PaintPatrols(MapCanvas& canvas, const MapRoute& route, const QColor& color) {
  QPen pen(color, 1);
  pen.setDashPattern({5, 3});
  canvas.Painter.setPen(pen);
  for (const auto& point : route.Points)
    for (std::size_t i = 0; i < point.Patrol.size(); ++i)
      canvas.Line(point.Patrol[i], point.Patrol[(i + 1) % point.Patrol.size()]);
}

std::vector<QLineF> LegsOf(const MapCanvas& canvas, const MapRoute& route) {
  std::vector<QLineF> lines;
  for (std::size_t i = 1; i < route.Points.size(); ++i)
    if (HasPlaces(route.Points[i - 1], route.Points[i]))
      canvas.AddLine(lines, route.Points[i - 1].At, route.Points[i].At);
  return lines;
}

void PaintFaintPoints(MapCanvas& canvas, const std::vector<MapRoute>& routes) {
  canvas.BeginSymbols(kFaintSymbol);
  for (const auto& route : routes)
    for (const auto& point : route.Points)
      if (point.HasPlace && canvas.Sees(point.At))
        canvas.Symbol(canvas.At(point.At), point.Shape, route.Army);
  canvas.EndSymbols();
}

void PaintTrigger(MapCanvas& canvas, const RoutePoint& point, std::uint8_t army, double radius) {
  constexpr double kTick = 6;
  const QPointF at = canvas.At(point.At) + QPointF(-radius * 0.8, -radius * 0.8);
  canvas.Painter.setPen(QPen(ArmyColor(army, canvas.Shown.Dark), 1.5));
  canvas.Painter.drawLine(at, at - QPointF(kTick, kTick));
}

void PaintTriggers(MapCanvas& canvas, const MapRoute& route, double radius) {
  for (const auto& point : route.Points)
    if (point.HasTriggers && point.HasPlace && canvas.Sees(point.At))
      PaintTrigger(canvas, point, route.Army, radius);
}

void PaintStrongLegs(MapCanvas& canvas, const MapRoute& route, double width) {
  std::vector<QLineF> halo = LegsOf(canvas, route);
  canvas.Painter.setPen(QPen(GroundColor(canvas.Shown.Dark), 5));
  canvas.Draw(halo);
  canvas.Painter.setPen(StrongPen(route.Army, canvas.Shown.Dark, width));
  for (std::size_t i = 1; i < route.Points.size(); ++i)
    if (HasPlaces(route.Points[i - 1], route.Points[i]))
      canvas.Line(route.Points[i - 1].At, route.Points[i].At);
}

void PaintStrongPoints(MapCanvas& canvas, const MapRoute& route,
                       const std::vector<std::size_t>& selected) {
  constexpr double kRing = 11;
  QPainter& painter = canvas.Painter;
  for (std::size_t i = 0; i < route.Points.size(); ++i) {
    const RoutePoint& point = route.Points[i];
    if (!point.HasPlace || !canvas.Sees(point.At)) continue;
    const QPointF at = canvas.At(point.At);
    if (std::binary_search(selected.begin(), selected.end(), i)) {
      painter.setPen(QPen(InkColor(canvas.Shown.Dark), 2.5));
      painter.setBrush(Qt::NoBrush);
      painter.drawEllipse(at, kRing, kRing);
    }
    SetArmyLook(painter, route.Army, canvas.Shown.Dark, 1.8);
    DrawShape(painter, WaypointOutline(point.Shape), at, kStrongSymbol);
  }
  PaintTriggers(canvas, route, kStrongSymbol);
}

void BlockPoints(const MapCanvas& canvas, LabelPlacer& labels, const MapRoute& route) {
  for (const auto& point : route.Points) {
    if (!point.HasPlace || !canvas.Sees(point.At)) continue;
    const QPointF reach(kStrongSymbol, kStrongSymbol), at = canvas.At(point.At);
    labels.Block(QRectF(at - reach, at + reach));
    if (point.HasTriggers) labels.Block(QRectF(at - 2 * reach, at));
  }
}

void PaintNumbers(MapCanvas& canvas, LabelPlacer& labels, const MapRoute& route,
                  const std::vector<std::size_t>& first, const QColor& color) {
  const QFontMetricsF font(canvas.Painter.font());
  const auto label = [&](std::size_t i) {
    const RoutePoint& point = route.Points[i];
    if (!point.HasPlace || !canvas.Sees(point.At)) return;
    const QString text = QString::number(i);
    const QSizeF size(font.horizontalAdvance(text), font.ascent());
    const QRectF rect = labels.Place(canvas.At(point.At), size, kStrongSymbol + 1);
    if (!rect.isEmpty()) canvas.Text(rect.bottomLeft(), text, color);
  };
  // Where there is no room for all, the selected ones have theirs.
  for (const auto i : first)
    if (i < route.Points.size()) label(i);
  for (std::size_t i = 0; i < route.Points.size(); ++i)
    if (!std::binary_search(first.begin(), first.end(), i)) label(i);
}

/** The route as it would be after a move. */
MapRoute Moved(MapRoute route, const MapPreview& preview) {
  const auto move = [&](MapPoint& at) { at = {at.X + preview.East, at.Y + preview.North}; };
  for (const auto i : preview.Points) {
    if (i >= route.Points.size()) continue;
    move(route.Points[i].At);
    for (auto& corner : route.Points[i].Patrol) move(corner);
  }
  return route;
}

void PaintStrong(MapCanvas& canvas, const MapRoute& route, const std::vector<std::size_t>& selected,
                 double width) {
  PaintLinks(canvas, route, true);
  PaintPatrols(canvas, route, ArmyColor(route.Army, canvas.Shown.Dark));
  PaintStrongLegs(canvas, route, width);
  PaintStrongPoints(canvas, route, selected);
}

}  // namespace

bool IsStrong(const MapShown& shown, std::size_t route) {
  return shown.Selection.Route == route ||
         std::find(shown.Compared.begin(), shown.Compared.end(), route) != shown.Compared.end();
}

void PaintRoutes(MapCanvas& canvas) {
  if (!canvas.Shows(MapLayer::Routes)) return;
  constexpr double kPart = 0.6;
  const auto& routes = canvas.Model->Scene.Routes;
  for (const auto& route : routes) PaintLinks(canvas, route, false);
  for (const auto& route : routes) {
    const QColor color = Faint(ArmyColor(route.Army, canvas.Shown.Dark), canvas.Shown.Dark, kPart);
    PaintPatrols(canvas, route, color);
    canvas.Painter.setPen(QPen(color, 1));
    canvas.Draw(LegsOf(canvas, route));
  }
  if (canvas.MetresPerPixel() > kCoarsestPoints) return;
  PaintFaintPoints(canvas, routes);
  for (const auto& route : routes) PaintTriggers(canvas, route, kFaintSymbol);
}

void PaintStrongRoutes(MapCanvas& canvas, const MapPreview& preview, LabelPlacer& labels) {
  if (!canvas.Shows(MapLayer::Routes)) return;
  const auto& routes = canvas.Model->Scene.Routes;
  const auto& selection = canvas.Shown.Selection;
  for (const auto index : canvas.Shown.Compared)
    if (index < routes.size() && selection.Route != index)
      PaintStrong(canvas, routes[index], {}, kComparedWidth);
  if (!selection.Route || *selection.Route >= routes.size()) return;
  const MapRoute selected = Moved(routes[*selection.Route], preview);
  PaintStrong(canvas, selected, selection.Points, kSelectedWidth);
  BlockPoints(canvas, labels, selected);
  PaintNumbers(canvas, labels, selected, selection.Points, InkColor(canvas.Shown.Dark));
  for (const auto index : canvas.Shown.Compared) {
    if (index >= routes.size() || selection.Route == index) continue;
    BlockPoints(canvas, labels, routes[index]);
    PaintNumbers(canvas, labels, routes[index], {},
                 ArmyColor(routes[index].Army, canvas.Shown.Dark));
  }
}

void PaintMoments(MapCanvas& canvas, LabelPlacer& labels) {
  if (!canvas.Shows(MapLayer::Routes) || !canvas.Shown.Minute) return;
  constexpr double kRadius = 9, kStrongRadius = 12;
  constexpr std::size_t kMostNames = 60;
  const auto& routes = canvas.Model->Scene.Routes;
  const QFontMetricsF font(canvas.Painter.font());
  std::size_t names = 0;
  for (std::size_t i = 0; i < routes.size() && i < canvas.Model->Clocks.size(); ++i) {
    const auto moment = MomentOf(routes[i], canvas.Model->Clocks[i], *canvas.Shown.Minute);
    if (!moment || !canvas.Sees(moment->At)) continue;
    if (moment->Phase != FlightPhase::Flying && moment->Phase != FlightPhase::Waiting) continue;
    const QPointF at = canvas.At(moment->At);
    const double radius = IsStrong(canvas.Shown, i) ? kStrongRadius : kRadius;
    canvas.BeginSymbols(radius);
    canvas.Symbol(at, ObjectKind::Aircraft, routes[i].Army, moment->Heading);
    canvas.EndSymbols();
    labels.Block(QRectF(at - QPointF(radius, radius), at + QPointF(radius, radius)));
    const QString name = QString::fromLatin1(routes[i].Name.c_str());
    const QSizeF size(font.horizontalAdvance(name), font.ascent());
    if (++names > kMostNames && !IsStrong(canvas.Shown, i)) continue;
    const QRectF rect = labels.Place(at, size, radius);
    if (!rect.isEmpty())
      canvas.Text(rect.bottomLeft(), name, ArmyColor(routes[i].Army, canvas.Shown.Dark));
  }
}

}  // namespace rws
