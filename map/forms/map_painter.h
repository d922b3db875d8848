#pragma once

#include <QPainter>
#include <optional>
#include <vector>

#include "map/forms/map_shown.h"

/** Paints a map on a window, a picture, a printer's page or a drawing: all that has a place,
    however far off, wherever that is. The painter's origin is the upper left corner of the
    projection. */
namespace rws {

/** Changes that are shown before they are made. */
struct MapPreview {
  /** Points of the selected route, and the metres by which they are moved. */
  std::vector<std::size_t> Points;
  double East = 0, North = 0;
  std::optional<MapBase> Base;  // in place of the selected home base
};

/** All of a map. Without a model only its ground and grid. */
void PaintMap(QPainter& painter, const MapShown& shown);

/** What depends on neither selection nor minute, and moves with the ground: painted once for a
    scale. */
void PaintMapGround(QPainter& painter, const MapShown& shown);
/** What is over it: the selected flight and base, the compared flights, the positions at the
    minute, and scales at the edges. */
void PaintMapTop(QPainter& painter, const MapShown& shown, const MapPreview& preview = {});

}  // namespace rws
