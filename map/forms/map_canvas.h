#pragma once

#include <QPainter>
#include <QRectF>
#include <QString>
#include <vector>

#include "map/forms/map_labels.h"
#include "map/forms/map_shown.h"
#include "map/forms/map_symbols.h"

namespace rws {

/** Draws by places of the map. Only what is seen reaches the painter: a mission may put a thing
    farther away than a painter can count. */
class MapCanvas {
 public:
  MapCanvas(QPainter& painter, const MapShown& shown);

  QPainter& Painter;
  const MapShown& Shown;
  const MapModel* const Model;  // may be none
  /** What is seen, and a rim as wide as symbols may reach into it. */
  const MapBounds Seen;

  bool Shows(MapLayer layer) const { return Model && Shown.Layers[layer]; }
  double MetresPerPixel() const { return Shown.Projection.MetresPerPixel; }
  bool Sees(MapPoint point) const { return Seen.Holds(point); }
  /** Where a place that is seen is drawn. */
  QPointF At(MapPoint point) const;

  /** Adds what is seen of a line to lines that are drawn later. */
  void AddLine(std::vector<QLineF>& lines, MapPoint from, MapPoint to) const;
  /** Adds a line through points; those nearer together than two pixels are passed over. */
  template <class Points, class PlaceOfPoint>
  void AddLines(std::vector<QLineF>& lines, const Points& points, PlaceOfPoint placeOf) const {
    const double least = 2 * MetresPerPixel();
    const MapPoint* last = nullptr;
    for (const auto& point : points) {
      const MapPoint& at = placeOf(point);
      if (last && &point != &points.back() && std::abs(at.X - last->X) < least &&
          std::abs(at.Y - last->Y) < least)
        continue;
      if (last) AddLine(lines, *last, at);
      last = &at;
    }
  }
  /** Moves upright and level lines into the middle of device pixels, where a thin one is sharp. */
  void Sharpen(std::vector<QLineF>& lines) const;
  void Draw(const std::vector<QLineF>& lines);
  /** A line with the painter's pen; a pattern begins at `from`, wherever it is cut. */
  void Line(MapPoint from, MapPoint to);
  void Circle(MapPoint centre, double metres);
  /** Text with a rim in the colour of the ground, its left end on a base line. */
  void Text(QPointF at, const QString& text, const QColor& color);

  /** A small picture with its middle at a place; on a printer or in a drawing it is drawn as a
      shape. */
  void Symbol(QPointF at, ObjectKind kind, std::uint8_t army, double heading);
  void Symbol(QPointF at, WaypointShape shape, std::uint8_t army);
  /** Size of the symbols that follow, in pixels to each side. */
  void BeginSymbols(double radius);
  void EndSymbols();

 private:
  void DrawPicture(QPointF at, const QImage& picture);

  void SetPixelTransform(const QTransform& device);

  bool isRaster_ = false;
  SymbolCache* symbols_ = nullptr;
  double symbolRadius_ = 0;
  QTransform device_;
};

}  // namespace rws
