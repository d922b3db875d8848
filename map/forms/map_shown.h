#pragma once

#include <QImage>
#include <cstddef>
#include <optional>
#include <vector>

#include "map/map_layers.h"
#include "map/map_model.h"
#include "map/map_projection.h"

namespace rws {

/** What is selected on the map. Points are those of the selected route, not of the record. */
struct MapSelection {
  std::optional<std::size_t> Route;
  std::vector<std::size_t> Points;  // in rising order
  std::optional<std::size_t> Base;  // index in the scene

  bool operator==(const MapSelection&) const = default;
};

/** A picture of the user's own that lies under the map. */
struct MapUnderlay {
  QImage Picture;
  MapBounds Place;  // where its edges are
  double Opacity = 1;
};

/** What a picture of the map shows, and how. */
struct MapShown {
  const MapModel* Model = nullptr;
  MapProjection Projection;
  MapLayers Layers;
  MapSelection Selection;
  /** Routes that are shown as strongly as the selected one, to compare them. */
  std::vector<std::size_t> Compared;
  /** Minutes after the mission's start at which flights are shown; none for no moment. */
  std::optional<double> Minute;
  const MapUnderlay* Underlay = nullptr;
  bool Metric = true;
  bool Dark = false;
};

}  // namespace rws
