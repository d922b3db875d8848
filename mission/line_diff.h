#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

/** What differs between two texts, line by line. Indexes count from 0. */
namespace rws {

/** Lines of a text, without their ends; a line feed ends one, with or without a carriage return
    before it. The views point into `text`. */
std::vector<std::string_view> SplitLines(std::string_view text);

/** A stretch of lines of one text. */
struct LineSpan {
  std::size_t First = 0, Count = 0;
};

enum class HunkKind {
  Same,
  Added,   // in the new text only
  Gone,    // in the old text only
  Changed  // both sides have lines here, and none of them is equal
};

/** A stretch of both texts. One that is empty on a side says before which line it lies there. */
struct Hunk {
  HunkKind Kind;
  LineSpan Old, New;
};

/** The hunks that lead from the old text to the new one, in order and without gaps; two in a row
    are never both `Same`, nor both of another kind. Texts that have little in common are not taken
    apart to the end, so that the time is bounded: what is left counts as changed. */
std::vector<Hunk> DiffLines(const std::vector<std::string_view>& before,
                            const std::vector<std::string_view>& after);

/** Lines that differ. Of a changed hunk as many count as changed as stand on both sides, and the
    rest as added or gone. */
struct DiffCounts {
  std::size_t Added = 0, Gone = 0, Changed = 0;

  bool operator==(const DiffCounts&) const = default;
  bool None() const { return Added + Gone + Changed == 0; }
};

DiffCounts CountDifferences(const std::vector<Hunk>& hunks);

/** The counts for two texts. */
DiffCounts CountDifferences(std::string_view before, std::string_view after);

}  // namespace rws
