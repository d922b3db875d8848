#pragma once

#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <array>
#include <cstdint>
#include <vector>

#include "map/map_scene.h"

/** The symbols of the map. Each thing has a shape of its own, and each army a way in which its
    shapes are filled, so that nobody needs the colours. */
namespace rws {

/** A shape about (0, 0) that reaches 1 to each side; what has a nose points up. */
QPainterPath ObjectShape(ObjectKind kind);
/** Up for take-off, down for landing, a diamond for an attack, else round. */
QPainterPath WaypointOutline(WaypointShape shape);
/** True for what is drawn in the direction in which it stands. */
bool HasNose(ObjectKind kind);

/** Sets pen and brush for the shapes of an army: red ones are filled, blue ones hollow, others
    half-filled. */
void SetArmyLook(QPainter& painter, std::uint8_t army, bool dark, double lineWidth);

/** The pen of a strong route. Armies differ by the pattern of their lines too. */
QPen StrongPen(std::uint8_t army, bool dark, double width = 2.8);

/** Draws a shape about a place, so many pixels to each side, turned by compass degrees. */
void DrawShape(QPainter& painter, const QPainterPath& shape, QPointF at, double radius,
               double heading = 0);

/** Symbols as small pictures, each painted once for a size. */
class SymbolCache {
 public:
  bool IsFor(double radius, bool dark) const { return radius == radius_ && dark == dark_; }
  /** Forgets all that has another size or ground. `radius` in pixels of the picture that is
      painted on. */
  void SetLook(double radius, bool dark);
  /** Its middle belongs at the place. `heading` counts only for what has a nose. */
  const QImage& Of(ObjectKind kind, std::uint8_t army, double heading);
  const QImage& Of(WaypointShape shape, std::uint8_t army);

 private:
  static constexpr std::size_t kTurns = 32, kArmies = 3, kWaypointShapes = 4;

  const QImage& Made(std::size_t place, const QPainterPath& shape, std::uint8_t army,
                     double heading);

  double radius_ = 0;
  bool dark_ = false;
  std::vector<QImage> images_;
};

}  // namespace rws
