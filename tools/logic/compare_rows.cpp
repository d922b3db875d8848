#include "tools/logic/compare_rows.h"

#include <algorithm>

#include "services/numbers.h"

namespace rws {

namespace {

/** Equal lines that are shown next to a difference. */
constexpr std::size_t kContext = 3;
/** Fewer are not worth a fold. */
constexpr std::size_t kFewestFolded = 4;

void AddSame(std::vector<CompareRow>& rows, const Hunk& hunk, std::size_t from, std::size_t to) {
  for (; from < to; ++from)
    rows.push_back({HunkKind::Same, hunk.Old.First + from, hunk.New.First + from});
}

void AddFolded(std::vector<CompareRow>& rows, const Hunk& hunk, bool first, bool last) {
  const std::size_t count = hunk.Old.Count;
  const std::size_t head = first ? 0 : kContext, tail = last ? 0 : kContext;
  if (count < head + tail + kFewestFolded) return AddSame(rows, hunk, 0, count);
  AddSame(rows, hunk, 0, head);
  rows.push_back(
      {HunkKind::Same, hunk.Old.First + head, hunk.New.First + head, count - head - tail});
  AddSame(rows, hunk, count - tail, count);
}

void AddDifferent(std::vector<CompareRow>& rows, const Hunk& hunk) {
  for (std::size_t i = 0; i < std::max(hunk.Old.Count, hunk.New.Count); ++i) {
    CompareRow row{HunkKind::Changed};
    if (i < hunk.Old.Count) row.Old = hunk.Old.First + i;
    if (i < hunk.New.Count) row.New = hunk.New.First + i;
    if (row.Old == CompareRow::kNoLine) row.Kind = HunkKind::Added;
    if (row.New == CompareRow::kNoLine) row.Kind = HunkKind::Gone;
    rows.push_back(row);
  }
}

std::string Counted(std::size_t count, const char* what) {
  return GroupedNumber(count) + (count == 1 ? " line " : " lines ") + what;
}

constexpr char kLineEndsOnly[] = "line ends only";

}  // namespace

std::vector<CompareRow> MakeCompareRows(const std::vector<Hunk>& hunks) {
  std::vector<CompareRow> rows;
  for (const Hunk& hunk : hunks) {
    if (hunk.Kind != HunkKind::Same)
      AddDifferent(rows, hunk);
    else if (hunks.size() == 1)
      AddSame(rows, hunk, 0, hunk.Old.Count);
    else
      AddFolded(rows, hunk, &hunk == &hunks.front(), &hunk == &hunks.back());
  }
  return rows;
}

std::vector<CompareRow> HiddenRows(const CompareRow& folded) {
  std::vector<CompareRow> rows;
  const Hunk hidden{HunkKind::Same, {folded.Old, folded.Folded}, {folded.New, folded.Folded}};
  AddSame(rows, hidden, 0, folded.Folded);
  return rows;
}

std::vector<std::size_t> DifferenceRows(const std::vector<CompareRow>& rows) {
  std::vector<std::size_t> starts;
  for (std::size_t i = 0; i < rows.size(); ++i)
    if (rows[i].Kind != HunkKind::Same && (i == 0 || rows[i - 1].Kind == HunkKind::Same))
      starts.push_back(i);
  return starts;
}

std::string DifferenceText(const DiffCounts& counts, bool sameBytes) {
  if (counts.None())
    return sameBytes ? "No difference." : "All lines are equal; their line ends are not.";
  std::string text;
  const auto add = [&](std::size_t count, const char* what) {
    if (count > 0) text += (text.empty() ? "" : ", ") + Counted(count, what);
  };
  add(counts.Changed, "changed");
  add(counts.Added, "added");
  add(counts.Gone, "gone");
  return text + ".";
}

std::string ShortDifferenceText(const DiffCounts& counts, bool sameBytes) {
  if (counts.None()) return sameBytes ? "none" : kLineEndsOnly;
  std::string text;
  const auto add = [&](char sign, std::size_t count) {
    if (count > 0) text += (text.empty() ? "" : " ") + (sign + GroupedNumber(count));
  };
  add('+', counts.Added);
  add('-', counts.Gone);
  add('~', counts.Changed);
  return text;
}

}  // namespace rws
