#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "mission/pending_lines.h"
#include "mission/take_back.h"
#include "tools/logic/compare_rows.h"

/** What an Update will change in a mission, for the user to look at. */
namespace rws {

/** A stretch of bytes of a line. */
struct ByteSpan {
  std::size_t First = 0, Count = 0;

  bool operator==(const ByteSpan&) const = default;
};

/** The words of two lines that differ, in order; words that differ side by side are one stretch.
    None of lines that have no word in common, which differ as a whole. If only blanks differ,
    these. */
struct ChangedWords {
  std::vector<ByteSpan> Old, New;
};

ChangedWords FindChangedWords(std::string_view before, std::string_view after);

/** The same words as text, for one who does not see them marked: "100, default". */
std::string WordsOf(std::string_view line, const std::vector<ByteSpan>& spans);

/** Whose doing it is that a line will change. */
enum class ChangeLabel {
  None,      // it does not change
  Edit,      // the user's
  Rewritten  // the program's, as it makes the file anew
};

/** Tells the user's edits of a mission from what is only rewritten. */
class ChangeLabels {
 public:
  /** Knows no edit. */
  ChangeLabels() = default;
  /** By a mission's file and by what the edits alone make of it. */
  ChangeLabels(const std::string& file, const std::string& kept);

  /** The edit that a row of a comparison of the file shows, by its lines in what the edits alone
      make; `line` is the row's new line, without meaning for a row that has none. */
  std::optional<ChangedLine> EditAt(const CompareRow& row, std::string_view line) const;
  ChangeLabel LabelOf(const CompareRow& row, std::string_view line) const;

 private:
  std::unordered_map<std::size_t, ChangedLine> byOld_;
  std::unordered_map<std::string, ChangedLine> byText_;  // without blanks at the ends
};

/** "3 lines changed, 46 more rewritten", for one of the two ways to write; as the status bar has
    it. */
std::string ChangeCountText(const PendingLines& pending, bool keeps);

}  // namespace rws
