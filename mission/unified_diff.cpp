#include "mission/unified_diff.h"

#include <algorithm>
#include <vector>

#include "mission/line_diff.h"

namespace rws {

namespace {

constexpr std::size_t kAround = 3;

/** Lines with their ends, so that a text without a last one differs there. */
std::vector<std::string_view> WholeLines(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size() - 1);
    lines.push_back(text.substr(0, end + 1));
    text.remove_prefix(end + 1);
  }
  return lines;
}

class DiffText {
 public:
  DiffText(std::string_view oldText, std::string_view newText)
      : old_(WholeLines(oldText)), new_(WholeLines(newText)), hunks_(DiffLines(old_, new_)) {}

  std::string Text() {
    for (std::size_t first = 0; first < hunks_.size(); ++first) {
      if (hunks_[first].Kind == HunkKind::Same) continue;
      std::size_t last = first;
      // Two changes with no more than this between them stand in one piece.
      while (last + 2 < hunks_.size() && hunks_[last + 1].Old.Count <= 2 * kAround) last += 2;
      AddPiece(first, last);
      first = last;
    }
    return text_;
  }

 private:
  void AddLines(char mark, const std::vector<std::string_view>& lines, LineSpan span) {
    for (std::size_t i = span.First; i < span.First + span.Count; ++i) {
      text_.append(1, mark).append(lines[i]);
      if (!lines[i].ends_with('\n')) text_ += "\n\\ No newline at end of file\n";
    }
  }
  /** A piece that is empty on a side stands behind a line there: that one is named. */
  void AddRange(char mark, LineSpan span) {
    text_.append(1, mark).append(std::to_string(span.First + (span.Count > 0 ? 1 : 0)));
    if (span.Count != 1) text_.append(",").append(std::to_string(span.Count));
  }
  void AddPiece(std::size_t first, std::size_t last) {
    const Hunk &begin = hunks_[first], &end = hunks_[last];
    const std::size_t before = first > 0 ? std::min(kAround, hunks_[first - 1].Old.Count) : 0;
    const std::size_t behind =
        last + 1 < hunks_.size() ? std::min(kAround, hunks_[last + 1].Old.Count) : 0;
    const auto span = [&](const LineSpan& from, const LineSpan& to) {
      const std::size_t start = from.First - before;
      return LineSpan{start, to.First + to.Count + behind - start};
    };
    const LineSpan oldSpan = span(begin.Old, end.Old), newSpan = span(begin.New, end.New);
    text_ += "@@ ";
    AddRange('-', oldSpan);
    text_ += ' ';
    AddRange('+', newSpan);
    text_ += " @@\n";
    AddLines(' ', old_, {oldSpan.First, before});
    for (std::size_t i = first; i <= last; ++i) {
      const Hunk& hunk = hunks_[i];
      if (hunk.Kind == HunkKind::Same) {
        AddLines(' ', old_, hunk.Old);
        continue;
      }
      AddLines('-', old_, hunk.Old);
      AddLines('+', new_, hunk.New);
    }
    AddLines(' ', old_, {end.Old.First + end.Old.Count, behind});
  }

  std::vector<std::string_view> old_, new_;
  std::vector<Hunk> hunks_;
  std::string text_;
};

}  // namespace

std::string UnifiedDiff(std::string_view oldName, std::string_view newName,
                        std::string_view oldText, std::string_view newText) {
  if (oldText == newText) return "";
  std::string text;
  text.append("--- ").append(oldName).append("\n+++ ").append(newName).append("\n");
  return text + DiffText(oldText, newText).Text();
}

}  // namespace rws
