#include "mission/line_diff.h"

#include <algorithm>
#include <cstdint>
#include <unordered_map>

namespace rws {

namespace {

using Lines = std::vector<std::string_view>;
using Index = std::int32_t;

constexpr Index kNone = -1;
/** About what a tenth of a second is enough for on a slow machine. */
constexpr std::int64_t kMostSteps = 4'000'000;
/** Their traces take four megabytes. */
constexpr Index kMostEdits = 1000;

/** A part of both texts that is still to be matched. */
struct Box {
  Index A, AEnd, B, BEnd;
};

struct Pair {
  Index A, B;
};

/** The longest row of pairs that ascends on both sides; they ascend on side A already. */
std::vector<Pair> LongestAscending(const std::vector<Pair>& pairs) {
  std::vector<std::size_t> tops;  // of each pile, an index of `pairs`
  std::vector<std::size_t> before(pairs.size(), pairs.size());
  for (std::size_t i = 0; i < pairs.size(); ++i) {
    const auto pile = std::lower_bound(tops.begin(), tops.end(), pairs[i].B,
                                       [&](std::size_t top, Index b) { return pairs[top].B < b; });
    if (pile != tops.begin()) before[i] = *(pile - 1);
    if (pile == tops.end())
      tops.push_back(i);
    else
      *pile = i;
  }
  std::vector<Pair> row(tops.size());
  std::size_t at = tops.empty() ? pairs.size() : tops.back();
  for (auto slot = row.rbegin(); slot != row.rend(); ++slot) {
    *slot = pairs[at];
    at = before[at];
  }
  return row;
}

/** Finds the partner of each line: equal ends first, then lines that stand once on either side,
    then, between those, the shortest edit. */
class Matcher {
 public:
  Matcher(const Lines& a, const Lines& b) {
    std::unordered_map<std::string_view, Index> ids;
    ids.reserve(a.size() + b.size());
    const auto number = [&ids](const Lines& lines) {
      std::vector<Index> numbers;
      numbers.reserve(lines.size());
      for (const auto line : lines)
        numbers.push_back(ids.try_emplace(line, static_cast<Index>(ids.size())).first->second);
      return numbers;
    };
    a_ = number(a);
    b_ = number(b);
    inA_.resize(ids.size());
    inB_.resize(ids.size());
    placeInB_.resize(ids.size());
    Partners.assign(a.size(), kNone);
  }

  void Run() {
    waiting_.push_back({0, static_cast<Index>(a_.size()), 0, static_cast<Index>(b_.size())});
    while (!waiting_.empty()) {
      Box box = waiting_.back();
      waiting_.pop_back();
      CutEnds(box);
      if (box.A == box.AEnd || box.B == box.BEnd || steps_ <= 0) continue;
      Count(box, 1);
      if (!SplitAtAnchors(box)) MatchRest(box);
      Count(box, 0);
    }
  }

  /** For each line of A that of B; `kNone` where there is none. Ascending. */
  std::vector<Index> Partners;

 private:
  Index& Partner(Index a) { return Partners[static_cast<std::size_t>(a)]; }
  Index IdA(Index a) const { return a_[static_cast<std::size_t>(a)]; }
  Index IdB(Index b) const { return b_[static_cast<std::size_t>(b)]; }
  static Index& Of(std::vector<Index>& counts, Index id) {
    return counts[static_cast<std::size_t>(id)];
  }

  void CutEnds(Box& box) {
    while (box.A < box.AEnd && box.B < box.BEnd && IdA(box.A) == IdB(box.B))
      Partner(box.A++) = box.B++;
    while (box.A < box.AEnd && box.B < box.BEnd && IdA(box.AEnd - 1) == IdB(box.BEnd - 1))
      Partner(--box.AEnd) = --box.BEnd;
  }

  /** Counts the lines of a box on both sides, or forgets the counts again. */
  void Count(const Box& box, Index by) {
    const auto add = [by](Index& count) { count = by ? count + by : 0; };
    for (Index a = box.A; a < box.AEnd; ++a) add(Of(inA_, IdA(a)));
    for (Index b = box.B; b < box.BEnd; ++b) {
      add(Of(inB_, IdB(b)));
      Of(placeInB_, IdB(b)) = b;
    }
    steps_ -= box.AEnd - box.A + box.BEnd - box.B;
  }

  /** Parts a box at lines that stand in it once on either side; false where it has none. */
  bool SplitAtAnchors(const Box& box) {
    std::vector<Pair> once;
    for (Index a = box.A; a < box.AEnd; ++a) {
      const Index id = IdA(a);
      if (Of(inA_, id) == 1 && Of(inB_, id) == 1) once.push_back({a, Of(placeInB_, id)});
    }
    Box gap = box;
    for (const Pair& anchor : LongestAscending(once)) {
      Partner(anchor.A) = anchor.B;
      waiting_.push_back({gap.A, anchor.A, gap.B, anchor.B});
      gap.A = anchor.A + 1;
      gap.B = anchor.B + 1;
    }
    if (!once.empty()) waiting_.push_back(gap);
    return !once.empty();
  }

  /** Lines that the other side lacks have no partner and would only take time. */
  void MatchRest(const Box& box) {
    std::vector<Index> as, bs;
    for (Index a = box.A; a < box.AEnd; ++a)
      if (Of(inB_, IdA(a)) > 0) as.push_back(a);
    for (Index b = box.B; b < box.BEnd; ++b)
      if (Of(inA_, IdB(b)) > 0) bs.push_back(b);
    ShortestEdit(as, bs);
  }

  /** The greedy search along diagonals; gives up, matching nothing, when it takes too long. */
  void ShortestEdit(const std::vector<Index>& as, const std::vector<Index>& bs) {
    const auto n = static_cast<Index>(as.size()), m = static_cast<Index>(bs.size());
    const Index most = std::min(n + m, kMostEdits);
    // How far each diagonal reached, for every count of edits: diagonal k at k + edits.
    std::vector<std::vector<Index>> traces;
    for (Index edits = 0; edits <= most && steps_ > 0; ++edits) {
      std::vector<Index> reached(static_cast<std::size_t>(2 * edits + 1));
      for (Index k = -edits; k <= edits; k += 2) {
        Index x = edits == 0 ? 0 : StartOn(traces.back(), edits, k);
        Index y = x - k;
        const Index from = x;
        while (x < n && y >= 0 && y < m &&
               IdA(as[static_cast<std::size_t>(x)]) == IdB(bs[static_cast<std::size_t>(y)])) {
          ++x;
          ++y;
        }
        steps_ -= 1 + x - from;
        reached[static_cast<std::size_t>(k + edits)] = x;
        if (x == n && y == m) {
          traces.push_back(std::move(reached));
          return WalkBack(traces, as, bs);
        }
      }
      traces.push_back(std::move(reached));
    }
  }

  /** Whether diagonal k is entered from the one above it, by a line of B, rather than from the one
      below: whichever reached farther before. */
  static bool IsFromAbove(const std::vector<Index>& before, Index edits, Index k) {
    const auto at = static_cast<std::size_t>(k + edits);
    return k == -edits || (k != edits && before[at - 2] < before[at]);
  }
  /** Where it begins then. */
  static Index StartOn(const std::vector<Index>& before, Index edits, Index k) {
    const auto at = static_cast<std::size_t>(k + edits);
    return IsFromAbove(before, edits, k) ? before[at] : before[at - 2] + 1;
  }

  void WalkBack(const std::vector<std::vector<Index>>& traces, const std::vector<Index>& as,
                const std::vector<Index>& bs) {
    auto x = static_cast<Index>(as.size()), y = static_cast<Index>(bs.size());
    for (auto edits = static_cast<Index>(traces.size()) - 1; edits >= 0; --edits) {
      const std::vector<Index> none;
      const auto& before = edits == 0 ? none : traces[static_cast<std::size_t>(edits - 1)];
      const Index k = x - y, start = edits == 0 ? 0 : StartOn(before, edits, k);
      while (x > start) {
        --x;
        --y;
        Partner(as[static_cast<std::size_t>(x)]) = bs[static_cast<std::size_t>(y)];
      }
      if (edits > 0) --(IsFromAbove(before, edits, k) ? y : x);
    }
  }

  std::vector<Index> a_, b_;
  /** By the number of a line: how often the box at hand holds it on each side, and where. */
  std::vector<Index> inA_, inB_, placeInB_;
  std::vector<Box> waiting_;
  std::int64_t steps_ = kMostSteps;
};

HunkKind KindOf(const LineSpan& before, const LineSpan& after) {
  if (before.Count == 0) return HunkKind::Added;
  return after.Count == 0 ? HunkKind::Gone : HunkKind::Changed;
}

}  // namespace

std::vector<std::string_view> SplitLines(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    if (!line.empty() && line.back() == '\r' && end < text.size()) line.remove_suffix(1);
    lines.push_back(line);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

std::vector<Hunk> DiffLines(const Lines& before, const Lines& after) {
  Matcher matcher(before, after);
  matcher.Run();
  const auto& partners = matcher.Partners;
  std::vector<Hunk> hunks;
  std::size_t a = 0, b = 0;
  const auto isPair = [&] {
    return a < before.size() && b < after.size() && partners[a] == static_cast<Index>(b);
  };
  while (a < before.size() || b < after.size()) {
    Hunk hunk{HunkKind::Same, {a, 0}, {b, 0}};
    const bool same = isPair();
    if (same) {
      for (; isPair(); ++b) ++a;
    } else {
      while (a < before.size() && partners[a] == kNone) ++a;
      b = a < before.size() ? static_cast<std::size_t>(partners[a]) : after.size();
    }
    hunk.Old.Count = a - hunk.Old.First;
    hunk.New.Count = b - hunk.New.First;
    if (!same) hunk.Kind = KindOf(hunk.Old, hunk.New);
    hunks.push_back(hunk);
  }
  return hunks;
}

DiffCounts CountDifferences(const std::vector<Hunk>& hunks) {
  DiffCounts counts;
  for (const Hunk& hunk : hunks) {
    if (hunk.Kind == HunkKind::Same) continue;
    const std::size_t paired = std::min(hunk.Old.Count, hunk.New.Count);
    counts.Changed += paired;
    counts.Gone += hunk.Old.Count - paired;
    counts.Added += hunk.New.Count - paired;
  }
  return counts;
}

DiffCounts CountDifferences(std::string_view before, std::string_view after) {
  if (before == after) return {};
  return CountDifferences(DiffLines(SplitLines(before), SplitLines(after)));
}

}  // namespace rws
