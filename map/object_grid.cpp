#include "map/object_grid.h"

#include <algorithm>

namespace rws {

std::size_t ObjectGrid::Cell(double offset, double size) {
  if (!(size > 0) || !(offset > 0)) return 0;
  return static_cast<std::size_t>(std::min(offset / size * double(kCells), double(kCells - 1)));
}

ObjectGrid::ObjectGrid(const std::vector<MapObject>& objects) {
  // Some that lie far off must not put all others into one cell.
  constexpr double kFarthest = 1'000'000;
  for (const auto& object : objects)
    bounds_.Add({std::clamp(object.At.X, -kFarthest, kFarthest),
                 std::clamp(object.At.Y, -kFarthest, kFarthest)});
  if (objects.empty()) return;
  const auto cellOf = [&](const MapObject& object) {
    return Row(object.At.Y) * kCells + Column(object.At.X);
  };
  starts_.assign(kCells * kCells + 1, 0);
  for (const auto& object : objects) ++starts_[cellOf(object) + 1];
  for (std::size_t i = 1; i < starts_.size(); ++i) starts_[i] += starts_[i - 1];
  auto next = starts_;
  indexes_.resize(objects.size());
  for (std::size_t i = 0; i < objects.size(); ++i)
    indexes_[next[cellOf(objects[i])]++] = static_cast<std::uint32_t>(i);
}

}  // namespace rws
