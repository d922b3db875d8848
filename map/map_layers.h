#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "map/map_scene.h"

namespace rws {

/** What can be shown on the map or left out. */
enum class MapLayer : std::uint8_t {
  Picture,
  Grid,
  Routes,
  HomeBases,
  Parked,
  Objects,
  Buildings,
  Units,
  Front,
  Targets,
  Cameras,
  Bridges
};
inline constexpr std::size_t kMapLayers = 12;

inline constexpr std::array<std::string_view, kMapLayers> kMapLayerNames{
    "Picture of the map", "Grid",    "Flights",   "Home bases",
    "Parked aircraft",    "Objects", "Buildings", "Columns, trains and ships",
    "Front line",         "Targets", "Cameras",   "Bridges"};

/** The layer that an object is in. */
constexpr MapLayer LayerOf(ObjectKind kind) {
  switch (kind) {
    case ObjectKind::Aircraft:
      return MapLayer::Parked;
    case ObjectKind::Building:
      return MapLayer::Buildings;
    case ObjectKind::Camera:
      return MapLayer::Cameras;
    default:
      return MapLayer::Objects;
  }
}

struct MapLayers {
  std::array<bool, kMapLayers> Shown{true, true, true, true, true, true,
                                     true, true, true, true, true, true};

  bool operator[](MapLayer layer) const { return Shown[static_cast<std::size_t>(layer)]; }
  bool operator==(const MapLayers&) const = default;
};

}  // namespace rws
