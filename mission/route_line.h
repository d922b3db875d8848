#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace rws {

/** A line of a route, its words known by their places; every single blank parts two words. Behind
    the speed stands the marker, or a target, what else the game wrote, and maybe a marker. Words
    point into the line that was read; one that is missing is a subscript fault. */
class RouteLine {
 public:
  enum Place : std::size_t { kType, kX, kY, kAlt, kSpeed, kTarget };

  RouteLine() = default;
  explicit RouteLine(std::string_view line) { Read(line); }
  /** Takes another line, in the memory of the one before. */
  void Read(std::string_view line);

  std::size_t size() const { return words_.size(); }
  std::string_view Word(std::size_t place) const;

  /** Coordinates in the file's unit, decimals dropped; a word that is no number is a type mismatch.
   */
  double X() const;
  double Y() const;
  /** The last two characters when they hold "&", otherwise "". */
  std::string_view Marker() const { return marker_; }

 private:
  std::vector<std::string_view> words_;
  std::string_view marker_;
};

}  // namespace rws
