#include <algorithm>
#include <string>

#include "library/checking.h"
#include "mission/kept_flights.h"
#include "mission/route_line.h"
#include "services/numbers.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr double kHighest = 10'000, kFastest = 1000;

bool IsKind(std::string_view word, std::string_view kind) {
  return word.size() >= kind.size() && EqualNoCase(word.substr(0, kind.size()), kind);
}

bool IsTriggers(std::string_view word) { return EqualNoCase(word, "TRIGGERS"); }

/** A waypoint as the game takes its line apart. */
struct Row {
  std::size_t Line = 0;
  std::vector<KeptWord> Words;

  std::string_view Word(std::size_t place) const {
    return place < Words.size() ? Words[place].Text : std::string_view();
  }
  double Number(std::size_t place) const { return ParseNumber(Word(place)).value_or(0); }
};

/** The checks of one route. */
class RouteCheck {
 public:
  RouteCheck(Checking& check, const WingFlight& flight, const KeptSection& route)
      : check_(check), flight_(flight), route_(route) {
    for (std::size_t i = route.First; i < route.Last; ++i) {
      Row row{i, KeptWords(check.Text.Lines()[i])};
      if (row.Words.empty()) continue;
      if (IsTriggers(row.Word(0)))
        TakeTriggers(i);
      else
        rows_.push_back(std::move(row));
    }
  }

  void Run() {
    if (rows_.empty()) {
      Tell(Severity::Error, "no-route", route_.Header,
           "The route is empty: the game drops this flight and all behind it.");
      return;
    }
    if (rows_.size() == 1)
      Tell(Severity::Warning, "one-waypoint", 0,
           "The route has one waypoint only: the flight has nowhere to go.", true);
    CheckFirst();
    for (std::size_t i = 0; i < rows_.size(); ++i) {
      CheckWords(i);
      CheckPlace(i);
      CheckTail(i);
    }
    CheckTriggers();
  }

 private:
  void Tell(Severity severity, std::string_view kind, std::size_t lineOrRow, std::string text,
            bool isRow = false) {
    FindingPlace place{&route_, flight_.Name, -1, -1, lineOrRow};
    if (isRow) {
      place.Waypoint = static_cast<std::ptrdiff_t>(lineOrRow);
      place.Line = rows_[lineOrRow].Line;
    }
    check_.Tell(severity, kind, place, std::move(text));
  }

  void TakeTriggers(std::size_t line) {
    if (!rows_.empty() && NeedsTriggers(rows_.back().Word(0)) && triggered_ != rows_.size())
      triggered_ = rows_.size();
    else
      Tell(Severity::Warning, "triggers", line,
           "Nothing ahead of this line takes settings: the game flies to it as to a waypoint.");
    hasTriggers_.resize(rows_.size(), false);
    if (!rows_.empty()) hasTriggers_.back() = true;
  }

  /** The game takes the line behind such a word for its settings whatever it is. */
  void CheckTriggers() {
    hasTriggers_.resize(rows_.size(), false);
    for (std::size_t i = 0; i < rows_.size(); ++i) {
      if (hasTriggers_[i] || !NeedsTriggers(rows_[i].Word(0))) continue;
      const std::string word = check_.Quoted(rows_[i].Word(0));
      if (i + 1 < rows_.size())
        Tell(Severity::Warning, "triggers", i,
             "No line TRIGGERS follows " + word + ": the game takes the next waypoint for it.",
             true);
      else
        Tell(Severity::Error, "triggers", i,
             "No line TRIGGERS follows " + word + ": the game drops this flight and all behind it.",
             true);
    }
  }

  void CheckFirst() {
    const Row& first = rows_[0];
    const bool inAir = !IsKind(first.Word(0), "TAKEOFF") && !IsKind(first.Word(0), "LANDING");
    if (inAir && first.Words.size() > RouteLine::kSpeed) {
      if (first.Number(RouteLine::kSpeed) <= 0)
        Tell(Severity::Warning, "start-speed", 0, "The flight starts in the air without any speed.",
             true);
      if (first.Number(RouteLine::kAlt) <= 0)
        Tell(Severity::Warning, "start-height", 0,
             "The flight starts in the air at no height: in the ground.", true);
    }
    if (rows_.size() > 1 && first.Words.size() > RouteLine::kY && !first.Word(1).empty() &&
        first.Word(RouteLine::kX) == rows_[1].Word(RouteLine::kX) &&
        first.Word(RouteLine::kY) == rows_[1].Word(RouteLine::kY))
      Tell(Severity::Note, "same-place", 1,
           "The first two waypoints are at one place: where the flight heads is left open.", true);
  }

  void CheckWords(std::size_t i) {
    const Row& row = rows_[i];
    const bool isKnown = std::any_of(std::begin(kKinds), std::end(kKinds),
                                     [&](const auto kind) { return IsKind(row.Word(0), kind); });
    if (!isKnown)
      Tell(Severity::Warning, "waypoint-kind", i,
           "The game does not know " + check_.Quoted(row.Word(0)) + " and flies it as NORMFLY.",
           true);
    if (row.Words.size() <= RouteLine::kSpeed) {
      Tell(Severity::Warning, "route-words", i,
           "The line has too few words: the game takes 0 for those that are missing.", true);
      return;
    }
    for (std::size_t place = RouteLine::kX; place <= RouteLine::kSpeed; ++place)
      if (!ParseNumber(row.Word(place))) {
        Tell(Severity::Warning, "route-words", i,
             check_.Quoted(row.Word(place)) + " is no number: the game takes 0.", true);
        return;
      }
    const double height = row.Number(RouteLine::kAlt);
    if (height < 0) Tell(Severity::Note, "height", i, "The waypoint is below the ground.", true);
    if (height > kHighest || row.Number(RouteLine::kSpeed) > kFastest)
      Tell(Severity::Note, "height", i,
           "The game's builder lowers heights above 10000 m and speeds above 1000 km/h.", true);
  }

  void CheckPlace(std::size_t i) {
    const std::string_view kind = rows_[i].Word(0);
    if (IsKind(kind, "LANDING") && i + 1 < rows_.size())
      Tell(Severity::Warning, "landing", i,
           "A landing that is not the last waypoint: the flight may end there.", true);
    const bool isStart = std::all_of(rows_.begin(), rows_.begin() + static_cast<std::ptrdiff_t>(i),
                                     [](const Row& row) { return IsKind(row.Word(0), "TAKEOFF"); });
    if (IsKind(kind, "TAKEOFF") && !isStart)
      Tell(Severity::Warning, "takeoff", i, "A take-off that is not at the start of the route.",
           true);
  }

  /** What stands behind the speed: a target and its waypoint, the radio's marker, a formation. */
  void CheckTail(std::size_t i) {
    const Row& row = rows_[i];
    const std::size_t marker = MarkerPlace(row.Words);
    const std::string_view target = row.Word(RouteLine::kTarget);
    if (!target.empty() && marker != RouteLine::kTarget && !IsFormation(target)) {
      if (marker == RouteLine::kTarget + 1)
        Tell(Severity::Warning, "target-index", i,
             "No number stands behind the target: the game takes the radio's marker for it.", true);
      CheckTarget(i, target);
    }
    if (marker == KeptText::npos) return;
    for (std::size_t place = marker + 1; place < row.Words.size(); ++place) {
      const std::string_view word = row.Word(place);
      if ((word[0] == 'F' || word[0] == 'f') && !StrictWhole(word.substr(1)))
        Tell(Severity::Error, "formation", i,
             "No number follows the F of " + check_.Quoted(word) +
                 ": the game drops this flight and all behind it.",
             true);
    }
  }

  static bool IsFormation(std::string_view word) {
    return (word[0] == 'F' || word[0] == 'f') && StrictWhole(word.substr(1));
  }

  void CheckTarget(std::size_t i, std::string_view name) {
    if (check_.HasObject(name)) return;
    Tell(Severity::Warning, "target", i,
         "The mission has no " + check_.Quoted(name) +
             " for a target: the game takes the waypoint as done.",
         true);
  }

  static constexpr std::string_view kKinds[] = {"NORMFLY", "TAKEOFF", "LANDING", "GATTACK"};

  Checking& check_;
  const WingFlight& flight_;
  const KeptSection& route_;
  std::vector<Row> rows_;
  std::vector<bool> hasTriggers_;
  std::size_t triggered_ = 0;  // how many rows there were at the last settings that were taken
};

}  // namespace

void CheckRoutes(Checking& check) {
  for (const auto& flight : check.Wing) {
    if (!flight.Section || check.FlightNamed(flight.Name) != &flight) continue;
    if (const auto* route = RouteOf(check.Text, flight.Name))
      RouteCheck(check, flight, *route).Run();
    else
      check.Tell(Severity::Error, "no-route",
                 {flight.Section, flight.Name, -1, -1, flight.Section->Header},
                 "The flight has no route: the game drops it and all behind it.");
  }
}

}  // namespace rws
