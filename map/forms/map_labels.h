#pragma once

#include <QColor>
#include <QFont>
#include <QHash>
#include <QImage>
#include <QRectF>
#include <QString>
#include <utility>
#include <vector>

/** Words on the map. */
namespace rws {

/** Finds room for labels beside their places, so that none covers another. */
class LabelPlacer {
 public:
  void Block(const QRectF& rect);
  /** Where a label of this size goes, beside a symbol of this radius; an empty rectangle when
      there is no room. */
  QRectF Place(QPointF at, QSizeF size, double radius);

 private:
  template <class Visit>
  static void EachCell(const QRectF& rect, Visit visit);
  bool IsFree(const QRectF& rect) const;

  /** What is taken, by the cells of a grid that it touches. */
  QHash<std::pair<int, int>, std::vector<QRectF>> taken_;
};

/** Text with a rim in the colour of the ground, its left end on a base line. */
void DrawHaloText(QPainter& painter, QPointF at, const QString& text, const QColor& color,
                  bool dark);

/** Such texts as small pictures, each painted once. */
class LabelCache {
 public:
  struct Label {
    QImage Picture;
    QPoint Origin;  // where the left end of the base line is in it
  };
  /** `scale` is how many pixels there are to each pixel of the font. */
  const Label& Of(const QString& text, const QFont& font, const QColor& color, double scale,
                  bool dark);

 private:
  QHash<QString, Label> labels_;
};

}  // namespace rws
