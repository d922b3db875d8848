#include "library/filter.h"

#include <algorithm>

#include "services/text.h"

namespace rws {

namespace {

bool Holds(std::string_view text, std::string_view part) { return text.find(part) != text.npos; }

bool IsAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(),
                     [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

bool IsWithin(double value, double least, double most) {
  if (least <= most) return value >= least && value <= most;
  return value >= least || value <= most;
}

}  // namespace

Filter::Filter(const Query& query, const MissionIndex& index) : index_(index) {
  for (const auto& term : query.Terms) conditions_.push_back(Compile(term));
  // What costs least goes first.
  std::stable_sort(conditions_.begin(), conditions_.end(),
                   [](const Condition& a, const Condition& b) { return a.What > b.What; });
}

Filter::Condition Filter::Compile(const QueryTerm& term) {
  Condition condition;
  condition.Term = term;
  condition.Negated = term.Negated;
  condition.Folded = FoldName(term.Value);
  const auto bytes = index_.Page().FromUtf8(term.Value);
  condition.IsSpelled = bytes.has_value();
  condition.Lower = index_.Page().LCase(bytes.value_or(""));
  const auto byValue = [&](Test what, const NamedValues& values) {
    condition.What = what;
    condition.Values = &values;
    condition.Lower = ComparedText(index_.Page(), condition.Lower);
  };
  switch (term.Key) {
    case QueryKey::Name:
      break;
    case QueryKey::Map:
      byValue(Test::Value, index_.Maps);
      break;
    case QueryKey::Aircraft:
      byValue(Test::Value, index_.Aircraft);
      break;
    case QueryKey::Squadron:
      byValue(Test::Value, index_.Squadrons);
      break;
    case QueryKey::Player:
      byValue(Test::Player, index_.Aircraft);
      break;
    case QueryKey::Time:
      condition.What = Test::Time;
      break;
    case QueryKey::Flights:
      condition.What = Test::Flights;
      break;
    case QueryKey::Text:
      condition.What = Test::Text;
      condition.Text = texts_.size();
      if (condition.IsSpelled) texts_.push_back(condition.Lower);
      break;
    default:
      CompileFixed(condition);
  }
  return condition;
}

void Filter::CompileFixed(Condition& condition) const {
  const QueryKey key = condition.Term.Key;
  const auto values = FixedValues(key);
  for (std::size_t i = 0; i < values.size(); ++i) {
    const std::size_t found = FindNoCase(values[i], condition.Folded, 0);
    if (found == 0 || (key == QueryKey::Weather && found != std::string_view::npos))
      condition.Bits |= 1U << i;
  }
  if (key == QueryKey::Army) condition.What = Test::Army;
  if (key == QueryKey::Kind) condition.What = Test::Kind;
  if (key == QueryKey::Weather) condition.What = Test::Weather;
  if (key == QueryKey::Is) condition.What = condition.Bits == 1 ? Test::Unsaved : Test::Broken;
}

void Filter::SetTexts(std::size_t row, std::uint32_t found) {
  if (row >= isKnown_.size()) {
    isKnown_.resize(std::max(row + 1, index_.size()));
    found_.resize(isKnown_.size());
  }
  isKnown_[row] = true;
  found_[row] = found;
}

bool Filter::Matches(std::size_t row) { return Matches(row, false); }

bool Filter::MayMatch(std::size_t row) { return Matches(row, true); }

bool Filter::Matches(std::size_t row, bool unknownTexts) {
  if (index_[row].IsGone) return false;
  for (auto& condition : conditions_) {
    if (condition.What == Test::Text && unknownTexts && !KnowsTexts(row)) continue;
    bool isKnown = true;
    const bool holds = Holds(condition, row, isKnown);
    if (!isKnown || holds == condition.Negated) return false;
  }
  return true;
}

bool Filter::Holds(Condition& condition, std::size_t row, bool& isKnown) const {
  const IndexedMission& mission = index_[row];
  const auto hasBit = [&](std::uint32_t bit) {
    return bit < 32 && (condition.Bits >> bit & 1) != 0;
  };
  isKnown = mission.IsRead || condition.What == Test::Name || condition.What == Test::Unsaved;
  switch (condition.What) {
    case Test::Name:
      return HoldsForName(condition, row);
    case Test::Value:
      return HoldsForFlights(condition, row);
    case Test::Player:
      return HoldsForPlayer(condition, row);
    case Test::Army:
      return hasBit(mission.Army - 1U);
    case Test::Kind:
      return mission.Kind != MissionKind::Unknown &&
             hasBit(static_cast<std::uint32_t>(mission.Kind) - 1U);
    case Test::Time:
      return mission.Hours >= 0 &&
             IsWithin(mission.Hours, condition.Term.Least, condition.Term.Most);
    case Test::Weather:
      return hasBit(mission.Weather);
    case Test::Flights:
      return IsWithin(mission.Flights, condition.Term.Least, condition.Term.Most);
    case Test::Text:
      isKnown = KnowsTexts(row);
      return isKnown && condition.IsSpelled && (found_[row] >> condition.Text & 1) != 0;
    case Test::Unsaved:
      return Unsaved.contains(row);
    case Test::Broken:
      return mission.Fault != MissionFault::None;
  }
  return false;
}

bool Filter::HoldsForName(const Condition& condition, std::size_t row) const {
  if (IsAscii(condition.Folded)) return rws::Holds(index_.SoughtText(row), condition.Folded);
  return rws::Holds(index_.Text(row, MissionText::FoldedFileName), condition.Folded) ||
         (condition.IsSpelled &&
          rws::Holds(index_.Text(row, MissionText::LowerBriefingName), condition.Lower));
}

bool Filter::IsWanted(Condition& condition, std::uint32_t value) {
  auto& isWanted = condition.IsWanted;
  while (isWanted.size() <= value) {
    const NamedValue& next = (*condition.Values)[static_cast<std::uint32_t>(isWanted.size())];
    isWanted.push_back(condition.IsSpelled && !next.Word.empty() &&
                       rws::Holds(next.Compared, condition.Lower));
  }
  return isWanted[value];
}

bool Filter::HoldsForFlights(Condition& condition, std::size_t row) const {
  const IndexedMission& mission = index_[row];
  if (condition.Term.Key == QueryKey::Map) return IsWanted(condition, mission.Map);
  const IndexedFlight* const flights = index_.Flights(row);
  const bool byClass = condition.Term.Key == QueryKey::Aircraft;
  return std::any_of(flights, flights + mission.Flights, [&](const IndexedFlight& flight) {
    return IsWanted(condition, byClass ? flight.Class : flight.Squadron);
  });
}

bool Filter::HoldsForPlayer(Condition& condition, std::size_t row) const {
  const bool hasPlayer = index_[row].Player != IndexedMission::kNoFlight;
  if (condition.Folded == "yes") return hasPlayer;
  if (condition.Folded == "no") return !hasPlayer;
  return hasPlayer && IsWanted(condition, index_.PlayerClass(row));
}

}  // namespace rws
