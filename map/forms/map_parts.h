#pragma once

#include "map/forms/map_canvas.h"
#include "map/forms/map_painter.h"

/** The parts of which a picture of a map is made, each on its own layer. */
namespace rws {

void PaintUnderlay(MapCanvas& canvas);
void PaintGrid(MapCanvas& canvas);
void PaintGridLabels(MapCanvas& canvas);
void PaintScaleBar(MapCanvas& canvas);
void PaintNorth(MapCanvas& canvas);

void PaintFront(MapCanvas& canvas);
void PaintBases(MapCanvas& canvas);
void PaintBaseNames(MapCanvas& canvas);
void PaintSelectedBase(MapCanvas& canvas, const MapPreview& preview);
void PaintBridges(MapCanvas& canvas);
void PaintUnits(MapCanvas& canvas);
void PaintRockets(MapCanvas& canvas);
void PaintObjects(MapCanvas& canvas);
void PaintTargets(MapCanvas& canvas);

/** Every flight, faintly. */
void PaintRoutes(MapCanvas& canvas);
/** The selected flight and those that are compared with it. */
void PaintStrongRoutes(MapCanvas& canvas, const MapPreview& preview, LabelPlacer& labels);
/** Where the flights are at the minute shown. */
void PaintMoments(MapCanvas& canvas, LabelPlacer& labels);

/** True for a flight that is selected or compared. */
bool IsStrong(const MapShown& shown, std::size_t route);

}  // namespace rws
