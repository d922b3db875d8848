#include "map/forms/map_symbols.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <numbers>

#include "map/forms/map_colors.h"

namespace rws {

namespace {

constexpr double kFullTurn = 360;

void AddPolygon(QPainterPath& path, std::initializer_list<QPointF> corners) {
  path.addPolygon(QPolygonF(QList<QPointF>(corners)));
  path.closeSubpath();
}

QPainterPath Polygon(std::initializer_list<QPointF> corners) {
  QPainterPath path;
  AddPolygon(path, corners);
  return path;
}

QPainterPath Disc(QPointF centre, double radius) {
  QPainterPath path;
  path.addEllipse(centre, radius, radius);
  return path;
}

QPainterPath AircraftShape() {
  return Polygon({{0, -1},
                  {0.2, -0.35},
                  {1, 0},
                  {1, 0.25},
                  {0.2, 0.15},
                  {0.15, 0.6},
                  {0.45, 0.85},
                  {0.45, 1},
                  {-0.45, 1},
                  {-0.45, 0.85},
                  {-0.15, 0.6},
                  {-0.2, 0.15},
                  {-1, 0.25},
                  {-1, 0},
                  {-0.2, -0.35}});
}

QPainterPath GunShape() {
  QPainterPath path = Disc({0, 0.4}, 0.55);
  path.addRect(-0.14, -1, 0.28, 0.9);
  return path.simplified();
}

QPainterPath TrainShape() {
  QPainterPath path;
  path.addRect(-0.4, -1, 0.8, 0.85);
  path.addRect(-0.4, 0.15, 0.8, 0.85);
  path.addRect(-0.1, -0.3, 0.2, 0.6);
  return path.simplified();
}

QPainterPath LightShape() {
  QPainterPath path;
  constexpr int kRays = 8;
  for (int i = 0; i < 2 * kRays; ++i) {
    const double angle = std::numbers::pi * i / kRays, reach = i % 2 ? 0.4 : 1;
    const QPointF at(reach * std::sin(angle), -reach * std::cos(angle));
    i ? path.lineTo(at) : path.moveTo(at);
  }
  path.closeSubpath();
  return path;
}

QPainterPath SmokeShape() {
  return Disc({-0.45, 0.35}, 0.5).united(Disc({0.45, 0.35}, 0.5)).united(Disc({0, -0.4}, 0.55));
}

QPainterPath BalloonShape() {
  QPainterPath path = Disc({0, -0.3}, 0.68);
  AddPolygon(path, {{-0.25, 0.55}, {0.25, 0.55}, {0.2, 1}, {-0.2, 1}});
  return path;
}

QPainterPath CameraShape() {
  QPainterPath path;
  path.addRect(-1, -0.5, 1.3, 1);
  AddPolygon(path, {{0.3, 0}, {1, -0.5}, {1, 0.5}});
  return path;
}

QPainterPath RoundShape() { return Disc({0, 0}, 0.75); }

}  // namespace

QPainterPath ObjectShape(ObjectKind kind) {
  switch (kind) {
    case ObjectKind::Aircraft:
      return AircraftShape();
    case ObjectKind::Ship:
      return Polygon({{0, -1.1}, {0.38, -0.4}, {0.38, 0.9}, {-0.38, 0.9}, {-0.38, -0.4}});
    case ObjectKind::Armor:
      return Polygon({{0, -0.95}, {0.95, 0}, {0, 0.95}, {-0.95, 0}});
    case ObjectKind::Vehicle:
      return Polygon({{-0.7, -0.7}, {0.7, -0.7}, {0.7, 0.7}, {-0.7, 0.7}});
    case ObjectKind::Train:
      return TrainShape();
    case ObjectKind::Artillery:
      return GunShape();
    case ObjectKind::Rocket:
      return Polygon(
          {{0, -1.1}, {0.25, -0.5}, {0.25, 0.5}, {0.6, 1}, {-0.6, 1}, {-0.25, 0.5}, {-0.25, -0.5}});
    case ObjectKind::Building:
      return Polygon({{0, -0.9}, {0.8, -0.1}, {0.8, 0.8}, {-0.8, 0.8}, {-0.8, -0.1}});
    case ObjectKind::Light:
      return LightShape();
    case ObjectKind::Smoke:
      return SmokeShape();
    case ObjectKind::Balloon:
      return BalloonShape();
    case ObjectKind::Camera:
      return CameraShape();
    default:
      return Disc({0, 0}, 0.6);
  }
}

QPainterPath WaypointOutline(WaypointShape shape) {
  switch (shape) {
    case WaypointShape::TakeOff:
      return Polygon({{0, -1}, {0.95, 0.75}, {-0.95, 0.75}});
    case WaypointShape::Landing:
      return Polygon({{0, 1}, {0.95, -0.75}, {-0.95, -0.75}});
    case WaypointShape::Attack:
      return Polygon({{0, -1.15},
                      {0.35, -0.35},
                      {1.15, 0},
                      {0.35, 0.35},
                      {0, 1.15},
                      {-0.35, 0.35},
                      {-1.15, 0},
                      {-0.35, -0.35}});
    default:
      return RoundShape();
  }
}

bool HasNose(ObjectKind kind) {
  switch (kind) {
    case ObjectKind::Aircraft:
    case ObjectKind::Ship:
    case ObjectKind::Train:
    case ObjectKind::Artillery:
    case ObjectKind::Rocket:
      return true;
    default:
      return false;
  }
}

void SetArmyLook(QPainter& painter, std::uint8_t army, bool dark, double lineWidth) {
  constexpr double kHalf = 0.45;
  const QColor color = ArmyColor(army, dark);
  // What is filled has a rim that parts it from its neighbours.
  const QColor rim = army == 1 ? GroundColor(dark) : color;
  painter.setPen(QPen(rim, army == 1 ? lineWidth * 0.7 : lineWidth, Qt::SolidLine, Qt::SquareCap,
                      Qt::MiterJoin));
  painter.setBrush(army == 1 ? color : army == 2 ? GroundColor(dark) : Faint(color, dark, kHalf));
}

QPen StrongPen(std::uint8_t army, bool dark, double width) {
  QPen pen(ArmyColor(army, dark), width, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin);
  if (army == 2) pen.setDashPattern({7, 1.6});
  if (army != 1 && army != 2) pen.setDashPattern({7, 1.6, 1.6, 1.6});
  return pen;
}

void DrawShape(QPainter& painter, const QPainterPath& shape, QPointF at, double radius,
               double heading) {
  QTransform place;
  place.translate(at.x(), at.y());
  place.rotate(heading);
  place.scale(radius, radius);
  painter.drawPath(place.map(shape));
}

void SymbolCache::SetLook(double radius, bool dark) {
  radius_ = radius;
  dark_ = dark;
  images_.assign((kObjectKinds * kTurns + kWaypointShapes) * kArmies, QImage());
}

const QImage& SymbolCache::Of(ObjectKind kind, std::uint8_t army, double heading) {
  const auto turn =
      HasNose(kind)
          ? static_cast<std::size_t>(std::lround(heading / kFullTurn * double(kTurns))) % kTurns
          : 0;
  const std::size_t armyPlace = army < kArmies ? army : 0;
  const std::size_t place = (static_cast<std::size_t>(kind) * kTurns + turn) * kArmies + armyPlace;
  if (!images_[place].isNull()) return images_[place];
  return Made(place, ObjectShape(kind), army, double(turn) * kFullTurn / double(kTurns));
}

const QImage& SymbolCache::Of(WaypointShape shape, std::uint8_t army) {
  const std::size_t armyPlace = army < kArmies ? army : 0;
  const std::size_t place =
      (kObjectKinds * kTurns + static_cast<std::size_t>(shape)) * kArmies + armyPlace;
  if (!images_[place].isNull()) return images_[place];
  return Made(place, WaypointOutline(shape), army, 0);
}

const QImage& SymbolCache::Made(std::size_t place, const QPainterPath& shape, std::uint8_t army,
                                double heading) {
  constexpr double kReach = 1.3, kThinLine = 1, kLinePart = 0.18;
  // An odd number of pixels, so that one of them is the middle.
  const int size = 2 * static_cast<int>(std::ceil(radius_ * kReach + kThinLine)) + 1;
  QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  SetArmyLook(painter, army, dark_, std::max(kThinLine, radius_ * kLinePart));
  DrawShape(painter, shape, QPointF(size / 2.0, size / 2.0), radius_, heading);
  painter.end();
  return images_[place] = image;
}

}  // namespace rws
