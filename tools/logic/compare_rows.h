#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "mission/line_diff.h"

/** Two texts as rows of a table in which equal lines stand side by side. */
namespace rws {

/** One row. A side without a line there is empty. */
struct CompareRow {
  static constexpr std::size_t kNoLine = static_cast<std::size_t>(-1);

  HunkKind Kind = HunkKind::Same;
  /** Indexes of the lines, from 0; of a folded row, of the first line that it hides. */
  std::size_t Old = kNoLine, New = kNoLine;
  /** How many equal lines stand behind this row; 0 for a row of lines. */
  std::size_t Folded = 0;
};

/** Rows of all hunks. Of a long stretch of equal lines only those next to a difference are rows of
    their own; texts without a difference are not folded. */
std::vector<CompareRow> MakeCompareRows(const std::vector<Hunk>& hunks);

/** The rows that a folded one hides. */
std::vector<CompareRow> HiddenRows(const CompareRow& folded);

/** Where each difference begins, ascending: the first row of every run of rows that differ. */
std::vector<std::size_t> DifferenceRows(const std::vector<CompareRow>& rows);

/** What two texts differ in, as a sentence for the user. */
std::string DifferenceText(const DiffCounts& counts, bool sameBytes);

/** The same in a cell of a table: "+1 -2 ~3", without the parts that are none. */
std::string ShortDifferenceText(const DiffCounts& counts, bool sameBytes);

}  // namespace rws
