#include "session/patched_lines.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <string_view>
#include <vector>

#include "mission/line_diff.h"

namespace rws {

namespace {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

std::vector<std::string_view> LinesOf(const LineArray& lines) {
  std::vector<std::string_view> views;
  views.reserve(lines.size());
  for (std::size_t i = 0; i < lines.size(); ++i) views.push_back(lines[i]);
  return views;
}

/** For each line of `from` the one of `now` that it is. */
std::vector<std::size_t> PlacesIn(const LineArray& now, const LineArray& from) {
  std::vector<std::size_t> places(from.size(), kNone);
  for (const Hunk& hunk : DiffLines(LinesOf(from), LinesOf(now)))
    for (std::size_t i = 0; hunk.Kind == HunkKind::Same && i < hunk.Old.Count; ++i)
      places[hunk.Old.First + i] = hunk.New.First + i;
  return places;
}

/** What a step does to lines that others have changed. */
struct LineStep {
  std::vector<bool> Goes;
  /** What comes before a line, or at the end. */
  std::map<std::size_t, std::vector<LineSpan>> Comes;
};

/** Where lines that are put in before one of `from` come to stand; `kNone` where others have
    changed both neighbours. */
std::size_t PlaceBefore(const std::vector<std::size_t>& places, std::size_t line) {
  if (line > 0 && places[line - 1] != kNone) return places[line - 1] + 1;
  return line < places.size() ? places[line] : kNone;
}

void Add(LineStep& step, const std::vector<std::size_t>& places, const Hunk& hunk) {
  const auto& [kind, old, next] = hunk;
  const bool isPaired = old.Count == next.Count;
  std::size_t at = old.Count == 0 ? PlaceBefore(places, old.First) : kNone;
  for (std::size_t i = 0; i < old.Count; ++i) {
    const std::size_t place = places[old.First + i];
    if (place == kNone) continue;
    step.Goes[place] = true;
    if (isPaired) step.Comes[place].push_back({next.First + i, 1});
    if (at == kNone) at = place;
  }
  if (!isPaired && next.Count > 0 && at != kNone) step.Comes[at].push_back(next);
}

}  // namespace

LineArray PatchedLines(const LineArray& now, const LineArray& from, const LineArray& to) {
  const auto places = PlacesIn(now, from);
  LineStep step{std::vector<bool>(now.size()), {}};
  for (const Hunk& hunk : DiffLines(LinesOf(from), LinesOf(to)))
    if (hunk.Kind != HunkKind::Same) Add(step, places, hunk);
  LineArray patched;
  patched.Reserve(now.FileText().size() + to.FileText().size(), now.size() + to.size());
  for (std::size_t i = 0; i <= now.size(); ++i) {
    if (const auto comes = step.Comes.find(i); comes != step.Comes.end())
      for (const LineSpan& span : comes->second)
        patched.AddRange(to, span.First, span.First + span.Count);
    if (i < now.size() && !step.Goes[i]) patched.AddRange(now, i, i + 1);
  }
  return patched;
}

}  // namespace rws
