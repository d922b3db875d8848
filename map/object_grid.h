#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "map/map_scene.h"

namespace rws {

/** Finds the objects of a part of the map without looking at all of them. */
class ObjectGrid {
 public:
  ObjectGrid() = default;
  explicit ObjectGrid(const std::vector<MapObject>& objects);

  /** Calls `visit` with the index of each object within the bounds, and of some beside them; those
     of one kind of place keep their order. */
  template <class Visit>
  void Within(const MapBounds& bounds, Visit visit) const {
    if (starts_.empty()) return;
    const std::size_t left = Column(bounds.Left), right = Column(bounds.Right);
    const std::size_t bottom = Row(bounds.Bottom), top = Row(bounds.Top);
    for (std::size_t row = bottom; row <= top; ++row)
      for (auto i = starts_[row * kCells + left]; i < starts_[row * kCells + right + 1]; ++i)
        visit(static_cast<std::size_t>(indexes_[i]));
  }

 private:
  static constexpr std::size_t kCells = 64;  // each way

  std::size_t Column(double x) const {
    return Cell(x - bounds_.Left, bounds_.Right - bounds_.Left);
  }
  std::size_t Row(double y) const { return Cell(y - bounds_.Bottom, bounds_.Top - bounds_.Bottom); }
  static std::size_t Cell(double offset, double size);

  MapBounds bounds_;
  std::vector<std::uint32_t> starts_, indexes_;  // objects of a cell from one start to the next
};

}  // namespace rws
