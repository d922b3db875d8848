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
