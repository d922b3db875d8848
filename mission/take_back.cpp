#include "mission/take_back.h"

#include <algorithm>
#include <memory>
#include <set>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include "mission/carry_edits.h"
#include "mission/fewer_edits.h"
#include "mission/kept_flights.h"
#include "mission/kept_merge.h"
#include "mission/kept_reader.h"
#include "mission/kept_text.h"
#include "mission/line_diff.h"
#include "services/error_log.h"
#include "services/faults.h"
#include "services/text.h"

namespace rws {

namespace {

/** Two texts and what leads from the first to the second. They must outlive this. */
struct Difference {
  Difference(const std::string& before, const std::string& after)
      : OldText(before),
        NewText(after),
        Old(SplitLines(before)),
        New(SplitLines(after)),
        Hunks(DiffLines(Old, New)) {}

  std::string_view OldText, NewText;
  std::vector<std::string_view> Old, New;
  std::vector<Hunk> Hunks;
};

std::size_t Rows(const Hunk& hunk) { return std::max(hunk.Old.Count, hunk.New.Count); }

ChangedLine RowOf(const Hunk& hunk, std::size_t row) {
  ChangedLine line;
  if (row < hunk.Old.Count) line.Old = hunk.Old.First + row;
  if (row < hunk.New.Count) line.New = hunk.New.First + row;
  return line;
}

std::size_t CountChanges(const Difference& difference) {
  std::size_t count = 0;
  for (const auto& hunk : difference.Hunks)
    if (hunk.Kind != HunkKind::Same) count += Rows(hunk);
  return count;
}

/** True if the file's line is in the new text again, or the line that was new is not. */
bool IsBack(const Difference& edits, const Difference& rest, const ChangedLine& line) {
  if (line.Old != ChangedLine::kNone)
    return std::any_of(rest.Hunks.begin(), rest.Hunks.end(), [&](const Hunk& hunk) {
      return hunk.Kind == HunkKind::Same && line.Old - hunk.Old.First < hunk.Old.Count;
    });
  const auto text = edits.New[line.New];
  return std::count(rest.New.begin(), rest.New.end(), text) <
         std::count(edits.New.begin(), edits.New.end(), text);
}

/** True if each line of the new text is in one of the two others. */
bool HasNoOtherLine(const Difference& edits, const Difference& rest) {
  std::unordered_set<std::string_view> lines(edits.Old.begin(), edits.Old.end());
  lines.insert(edits.New.begin(), edits.New.end());
  return std::all_of(rest.New.begin(), rest.New.end(),
                     [&](std::string_view line) { return lines.contains(line); });
}

/** A line with its end. */
std::string_view Whole(std::string_view text, const std::vector<std::string_view>& lines,
                       std::size_t index) {
  const char* end = index + 1 < lines.size() ? lines[index + 1].data() : text.data() + text.size();
  return {lines[index].data(), static_cast<std::size_t>(end - lines[index].data())};
}

/** The edited text with some rows of a hunk as the file has them. */
std::string Reverted(const Difference& edits, const Hunk& hunk, std::size_t first,
                     std::size_t count) {
  std::string text;
  const auto add = [&](std::size_t from, std::size_t to) {
    for (std::size_t i = from; i < to; ++i) text += Whole(edits.NewText, edits.New, i);
  };
  add(0, hunk.New.First);
  for (std::size_t row = 0; row < Rows(hunk); ++row) {
    const ChangedLine line = RowOf(hunk, row);
    if (row >= first && row - first < count) {
      if (line.Old != ChangedLine::kNone) text += Whole(edits.OldText, edits.Old, line.Old);
    } else if (line.New != ChangedLine::kNone) {
      add(line.New, line.New + 1);
    }
  }
  add(hunk.New.First + hunk.New.Count, edits.New.size());
  return text;
}

std::vector<std::string_view> RouteLines(const LineArray& lines, std::string_view flight) {
  const KeptText text(lines);
  std::vector<std::string_view> rows;
  if (const auto* route = RouteOf(text, flight))
    for (const auto& waypoint : WaypointsOf(text, *route)) rows.push_back(lines[waypoint.Line]);
  return rows;
}

/** Calls `pair` for each two lines that stand for each other. */
template <class Pair>
void Align(const std::vector<std::string_view>& before, const std::vector<std::string_view>& after,
           Pair pair) {
  for (const auto& hunk : DiffLines(before, after))
    if (hunk.Old.Count == hunk.New.Count)
      for (std::size_t i = 0; i < hunk.Old.Count; ++i) pair(hunk.Old.First + i, hunk.New.First + i);
}

/** Tries to take one line back. All that is read here is read with its lines kept. */
class Attempt {
 public:
  Attempt(const Document& doc, const Services& services, const Mission& edited)
      : doc_(doc),
        services_(services),
        edited_(edited),
        read_(edited),
        file_(edited.AsRead.FileText()) {
    ReadKeptRecords(doc, services, read_);
  }

  TakenBack Run(const ChangedLine& line) {
    if (!BuildKeptFile(doc_, services_, edited_, kept_)) return {};
    const Difference edits(file_, kept_.FileText());
    for (const auto& hunk : edits.Hunks)
      for (std::size_t row = 0; hunk.Kind != HunkKind::Same && row < Rows(hunk); ++row)
        if (RowOf(hunk, row) == line) return RunAt(edits, hunk, row);
    return {};
  }

  /** What is written then. */
  LineArray Result;

 private:
  TakenBack RunAt(const Difference& edits, const Hunk& hunk, std::size_t row) {
    const ChangedLine line = RowOf(hunk, row);
    const std::size_t before = CountChanges(edits);
    const Mission edited = ReadFrom(kept_, edited_, kept_);
    for (auto& attempt : TriesFor(edits, hunk, row)) {
      Result = {};
      if (!BuildKeptFile(doc_, services_, attempt, Result)) continue;
      const Difference rest(file_, Result.FileText());
      const std::size_t after = CountChanges(rest);
      if (after >= before || !IsBack(edits, rest, line) || !HasNoOtherLine(edits, rest)) continue;
      const Mission result = ReadFrom(Result, attempt, Result);
      if (HasFewerEdits(read_, edited, result)) return {std::move(attempt), before - after - 1};
    }
    return {};
  }

  std::vector<Mission> TriesFor(const Difference& edits, const Hunk& hunk, std::size_t row) const {
    const ChangedLine line = RowOf(hunk, row);
    std::vector<Mission> tries;
    // Half a flight is no edit that anybody makes.
    if (const auto added = AddedFlightAt(line.New)) return {Without(*added)};
    const auto add = [&](std::size_t first, std::size_t count) {
      tries.push_back(WithRows(edits, hunk, first, count));
    };
    // Where the sides have not as many lines, those in a row do not belong together.
    const bool isPaired = hunk.Kind != HunkKind::Changed || hunk.Old.Count == hunk.New.Count;
    if (isPaired) add(row, 1);
    if (Rows(hunk) > 1 || !isPaired) add(0, Rows(hunk));
    if (line.New != ChangedLine::kNone) AddRenamedBack(edits.New[line.New], tries);
    if (line.Old != ChangedLine::kNone) AddRemovedBack(edits.Old[line.Old], tries);
    return tries;
  }

  Mission WithRows(const Difference& edits, const Hunk& hunk, std::size_t first,
                   std::size_t count) const {
    const std::string text = Reverted(edits, hunk, first, count);
    Mission result = ReadFrom(LineArray::FromFileAsIs(text), edited_, kept_);
    // Parked aircraft live in the lines themselves.
    if (result.Lines.size() == edited_.AsRead.size() && edits.Old.size() == result.Lines.size())
      for (std::size_t row = first; row < first + count && row < hunk.Old.Count; ++row)
        result.Lines.Set(hunk.Old.First + row, edited_.AsRead[hunk.Old.First + row]);
    return result;
  }

  /** The records of a text that edits of the file have made. Where its flights and waypoints come
      from is told by another such mission and by what is written of that. */
  Mission ReadFrom(const LineArray& text, const Mission& like, const LineArray& likeText) const {
    Mission result = like;
    result.Lines = text;
    ReadKeptRecords(doc_, services_, result);
    for (auto& flight : result.Flights) {
      const auto& flights = like.Flights;
      const auto same = std::find_if(flights.begin(), flights.end(), [&](const Flight& other) {
        return other.Name == flight.Name;
      });
      Adopt(text, flight, same == flights.end() ? nullptr : std::to_address(same), likeText);
    }
    result.Lines = like.Lines;
    result.Modified = like.Modified;
    result.NotWritten = like.NotWritten;
    return result;
  }

  void Adopt(const LineArray& text, Flight& flight, const Flight* like,
             const LineArray& likeText) const {
    if (like) {
      flight.KeptName = like->KeptName;
      flight.ArmyWord = like->ArmyWord;
      flight.Status = like->Status;
      flight.Shown = like->Shown;
    }
    flight.KeptIn = like ? like->KeptIn : edited_.Lines;
    const auto route = RouteLines(text, flight.Name);
    if (route.size() != flight.Waypoints.size()) return;
    for (auto& waypoint : flight.Waypoints) waypoint.KeptRow = -1;
    std::set<std::int32_t> taken;
    const auto give = [&](std::size_t waypoint, std::int32_t row) {
      std::int32_t& kept = flight.Waypoints[waypoint].KeptRow;
      if (kept < 0 && row >= 0 && taken.insert(row).second) kept = row;
    };
    if (like)
      Align(RouteLines(likeText, flight.Name), route, [&](std::size_t from, std::size_t to) {
        if (from < like->Waypoints.size()) give(to, like->Waypoints[from].KeptRow);
      });
    Align(RouteLines(flight.KeptIn, flight.KeptName), route,
          [&](std::size_t from, std::size_t to) { give(to, static_cast<std::int32_t>(from)); });
  }

  Mission Without(std::size_t flight) const {
    Mission result = edited_;
    result.Flights.erase(result.Flights.begin() + static_cast<std::ptrdiff_t>(flight));
    return result;
  }

  /** True for a copy, and for a flight that was never read. */
  bool IsAdded(std::size_t flight) const {
    const auto& flights = edited_.Flights;
    const std::string& name = flights[flight].KeptName;
    const auto end = flights.begin() + static_cast<std::ptrdiff_t>(flight);
    return std::none_of(read_.Flights.begin(), read_.Flights.end(),
                        [&](const Flight& other) { return EqualNoCase(other.KeptName, name); }) ||
           std::any_of(flights.begin(), end,
                       [&](const Flight& other) { return EqualNoCase(other.KeptName, name); });
  }

  /** The added flight to which a line of the edited text belongs. */
  std::optional<std::size_t> AddedFlightAt(std::size_t line) const {
    if (line >= kept_.size() || SplitLines(kept_.FileText()).size() != kept_.size()) return {};
    const KeptText text(kept_);
    for (std::size_t i = 0; i < edited_.Flights.size(); ++i) {
      const auto* section = IsAdded(i) ? text.Find(edited_.Flights[i].Name) : nullptr;
      if (!section) continue;
      const auto* wing = text.Find("Wing");
      if (wing && line > wing->Header && line < wing->Last &&
          EqualNoCase(KeyOf(kept_[line]).Key, edited_.Flights[i].Name))
        return i;
      for (const auto* part : SectionsOfFlight(text, *section))
        if (line >= part->Header && line < part->Last) return i;
    }
    return {};
  }

  /** A renamed flight has its name in several lines, which go back together. */
  void AddRenamedBack(std::string_view line, std::vector<Mission>& tries) const {
    for (std::size_t i = 0; i < edited_.Flights.size(); ++i) {
      const Flight& flight = edited_.Flights[i];
      if (flight.KeptName == flight.Name || IsAdded(i) || line.find(flight.Name) == line.npos)
        continue;
      Mission renamed = edited_;
      renamed.Flights[i].Name = flight.KeptName;
      if (renamed.Player == flight.Name) renamed.Player = read_.Player;
      tries.push_back(std::move(renamed));
    }
  }

  /** So has a removed flight, in "[Wing]" and in its sections. */
  void AddRemovedBack(std::string_view line, std::vector<Mission>& tries) const {
    const std::string_view name = KeyOf(line).Key;
    std::size_t place = 0;
    for (const auto& flight : read_.Flights) {
      const auto& flights = edited_.Flights;
      const auto stayed = std::find_if(flights.begin(), flights.end(), [&](const Flight& other) {
        return other.KeptName == flight.KeptName;
      });
      if (stayed != flights.end()) {
        place = static_cast<std::size_t>(stayed - flights.begin()) + 1;
      } else if (EqualNoCase(flight.Name, name)) {
        Mission more = edited_;
        more.Flights.insert(more.Flights.begin() + static_cast<std::ptrdiff_t>(place), flight);
        tries.push_back(std::move(more));
      }
    }
  }

  const Document& doc_;
  const Services& services_;
  const Mission& edited_;
  Mission read_;
  const std::string& file_;
  LineArray kept_;
};

}  // namespace

TakenBack TakeBack(const Document& doc, const Services& services, const Mission& mission,
                   const Mission& saved, const ChangedLine& line) {
  const Services silent = Silent(services);
  TakenBack taken;
  ResumeNext([&] {
    const Mission kept = ReadAs(doc, silent, mission, true, saved);
    Attempt attempt(doc, silent, kept);
    TakenBack found = attempt.Run(line);
    if (found.Record && !mission.KeepsLines) {
      found.Record = ReadAs(doc, silent, *found.Record, false, FreshlyRead(doc, silent, kept));
      // Not every edit can go from one way of reading to the other and back.
      const Mission again =
          ReadAs(doc, silent, *found.Record, true, FreshlyRead(doc, silent, *found.Record));
      LineArray written;
      if (!BuildKeptFile(doc, silent, again, written) || !(written == attempt.Result)) return;
    }
    taken = std::move(found);
  });
  return taken;
}

}  // namespace rws
