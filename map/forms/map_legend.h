#pragma once

#include <QPainter>
#include <QRectF>
#include <QString>
#include <functional>
#include <vector>

#include "map/forms/map_shown.h"

namespace rws {

/** One line of the legend: a sample, drawn about a place, and what it means. */
struct LegendEntry {
  QString Text;
  std::function<void(QPainter&, QPointF, bool dark)> Sample;
};

/** What there is on a map, by the layers that are shown and by what the mission really has. */
std::vector<LegendEntry> LegendOf(const MapModel& model, const MapLayers& layers);

/** How wide a legend is in an area; 0 where there is no room for one: it would hide too much. */
double LegendWidth(const std::vector<LegendEntry>& entries, const QFont& font, const QSizeF& area);

/** Paints a legend into the lower right corner of an area that has room for it. Returns where. */
QRectF PaintLegend(QPainter& painter, const std::vector<LegendEntry>& entries, const QRectF& area,
                   bool dark);

}  // namespace rws
