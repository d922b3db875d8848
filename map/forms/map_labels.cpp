#include "map/forms/map_labels.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <array>
#include <cmath>

#include "map/forms/map_colors.h"

namespace rws {

namespace {

constexpr double kHalo = 3;

}  // namespace

template <class Visit>
void LabelPlacer::EachCell(const QRectF& rect, Visit visit) {
  constexpr double kCell = 64, kFarthest = 1e6;
  const auto cell = [=](double pixel) {
    return static_cast<int>(std::floor(std::clamp(pixel, -kFarthest, kFarthest) / kCell));
  };
  for (int x = cell(rect.left()); x <= cell(rect.right()); ++x)
    for (int y = cell(rect.top()); y <= cell(rect.bottom()); ++y) visit(std::pair(x, y));
}

void LabelPlacer::Block(const QRectF& rect) {
  EachCell(rect, [&](const auto& cell) { taken_[cell].push_back(rect); });
}

bool LabelPlacer::IsFree(const QRectF& rect) const {
  bool isFree = true;
  EachCell(rect, [&](const auto& cell) {
    const auto found = taken_.constFind(cell);
    if (!isFree || found == taken_.constEnd()) return;
    isFree = std::none_of(found->begin(), found->end(),
                          [&](const QRectF& taken) { return taken.intersects(rect); });
  });
  return isFree;
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
    if (!IsFree(rect)) continue;
    Block(rect);
    return rect;
  }
  return {};
}

void DrawHaloText(QPainter& painter, QPointF at, const QString& text, const QColor& color,
                  bool dark) {
  QPainterPath path;
  path.addText(at, painter.font(), text);
  painter.strokePath(path,
                     QPen(GroundColor(dark), kHalo, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.fillPath(path, color);
}

const LabelCache::Label& LabelCache::Of(const QString& text, const QFont& font, const QColor& color,
                                        double scale, bool dark) {
  constexpr qsizetype kMost = 2000;
  const QString key = QStringLiteral("%1|%2|%3|%4|%5")
                          .arg(text, font.key(), color.name(), QString::number(scale))
                          .arg(dark);
  const auto found = labels_.constFind(key);
  if (found != labels_.constEnd()) return *found;
  if (labels_.size() >= kMost) labels_.clear();
  const QFontMetricsF metrics(font);
  const auto pixels = [&](double length) { return static_cast<int>(std::ceil(length * scale)); };
  Label label;
  label.Origin = {pixels(kHalo), pixels(kHalo + metrics.ascent())};
  label.Picture = QImage(pixels(metrics.horizontalAdvance(text) + 2 * kHalo),
                         pixels(metrics.height() + 2 * kHalo), QImage::Format_ARGB32_Premultiplied);
  label.Picture.fill(Qt::transparent);
  QPainter painter(&label.Picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(label.Origin);
  painter.scale(scale, scale);
  painter.setFont(font);
  DrawHaloText(painter, {}, text, color, dark);
  painter.end();
  return *labels_.insert(key, label);
}

}  // namespace rws
