#include "library/query.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

#include "library/index.h"
#include "library/mission_kind.h"
#include "services/numbers.h"
#include "services/text.h"

namespace rws {

namespace {

struct KeyRow {
  std::string_view Name;
  QueryKey Key;
  std::string_view Hint;
};

constexpr std::array<KeyRow, 11> kKeys = {{
    {"map", QueryKey::Map, "name of the map"},
    {"aircraft", QueryKey::Aircraft, "an aircraft that flies, by its name or class"},
    {"squadron", QueryKey::Squadron, "a squadron that flies, by its name or code"},
    {"player", QueryKey::Player, "yes, no, or the aircraft that the player flies"},
    {"army", QueryKey::Army, "red or blue: the side whose mission it is"},
    {"kind", QueryKey::Kind, "single, campaign, coop or dogfight"},
    {"time", QueryKey::Time, "hour of the day: 5, 5-8, 5:30-8, >20"},
    {"weather", QueryKey::Weather, "clear, good, hazy, poor, blind, rain/snow or thunder"},
    {"flights", QueryKey::Flights, "number of flights: 5, 5-8, >10"},
    {"text", QueryKey::Text, "a text in the file or its briefing"},
    {"is", QueryKey::Is, "unsaved or broken"},
}};

/** Parts a line; quotes may stand anywhere in a part. */
class Splitter {
 public:
  explicit Splitter(std::string_view line) : line_(line) {}

  std::vector<QueryPart> Split() {
    std::vector<QueryPart> parts;
    while (SkipBlanks()) parts.push_back(TakePart());
    return parts;
  }

 private:
  bool SkipBlanks() {
    while (at_ < line_.size() && IsBlank(line_[at_])) ++at_;
    return at_ < line_.size();
  }
  static bool IsBlank(char c) { return c == ' ' || c == '\t'; }

  QueryPart TakePart() {
    QueryPart part;
    part.At = at_;
    if (line_[at_] == '-') {
      part.Negated = true;
      ++at_;
    }
    part.KeyAt = part.ValueAt = at_;
    bool isQuoted = false;
    for (; at_ < line_.size() && (isQuoted || !IsBlank(line_[at_])); ++at_) {
      const char c = line_[at_];
      if (c == '"') {
        isQuoted = !isQuoted;
      } else if (c == ':' && !isQuoted && !part.HasKey && IsPlain(part)) {
        part.HasKey = true;
        part.Key = std::exchange(part.Value, {});
        part.ValueAt = at_ + 1;
      } else {
        part.Value += c;
      }
    }
    part.IsOpen = isQuoted;
    part.Length = at_ - part.At;
    return part;
  }

  /** True while no quote has stood in the part, so that it may still be a key. */
  bool IsPlain(const QueryPart& part) const { return at_ - part.KeyAt == part.Value.size(); }

  std::string_view line_;
  std::size_t at_ = 0;
};

/** "5", "5.5" or "5:30". */
std::optional<double> HoursOf(std::string_view text) {
  const std::size_t colon = text.find(':');
  const auto hours = ParseNumber(text.substr(0, colon));
  if (!hours || colon == text.npos) return hours;
  const auto minutes = ParseNumber(text.substr(colon + 1));
  if (!minutes || *minutes < 0 || *minutes >= 60) return {};
  return *hours + *minutes / 60;
}

bool ReadNumber(QueryKey key, std::string_view text, double& number) {
  const bool isPlain = text.find_first_not_of("0123456789.:") == text.npos;
  const auto read = key == QueryKey::Time ? HoursOf(text) : ParseNumber(text);
  if (!isPlain || !read) return false;
  number = *read;
  return true;
}

/** A number alone stands for the whole hour or minute that it names. */
double EndOf(QueryKey key, std::string_view text, double number) {
  if (key != QueryKey::Time) return number;
  const bool isHour = text.find_first_of(":.") == text.npos;
  return std::nextafter(number + (isHour ? 1 : 1.0 / 60), number);
}

bool ReadRange(QueryTerm& term) {
  constexpr double kFar = std::numeric_limits<double>::infinity();
  std::string_view text = term.Value;
  const std::string_view sign = text.substr(0, text.find_first_not_of("<>="));
  text.remove_prefix(sign.size());
  const std::size_t dash = sign.empty() ? text.find('-') : text.npos;
  double number = 0, last = 0;
  if (!ReadNumber(term.Key, text.substr(0, dash), number)) return false;
  if (dash != text.npos && !ReadNumber(term.Key, text.substr(dash + 1), last)) return false;
  const auto set = [&](double least, double most) {
    term.Least = least;
    term.Most = most;
    return true;
  };
  if (dash != text.npos) return (term.Key == QueryKey::Time || number <= last) && set(number, last);
  if (sign.empty() || sign == "=") return set(number, EndOf(term.Key, text, number));
  if (sign == ">") return set(std::nextafter(number, kFar), kFar);
  if (sign == ">=") return set(number, kFar);
  if (sign == "<") return set(0, std::nextafter(number, -kFar));
  return sign == "<=" && set(0, number);
}

std::string ListOf(const std::vector<std::string_view>& words) {
  std::string list;
  for (std::size_t i = 0; i < words.size(); ++i)
    list.append(i == 0 ? "" : i + 1 == words.size() ? " or " : ", ").append(words[i]);
  return list;
}

/** The start of a fixed value will do, of the weather any part. */
bool IsOneOf(const std::vector<std::string_view>& values, const QueryTerm& term) {
  const std::string wanted = FoldName(term.Value);
  return std::any_of(values.begin(), values.end(), [&](std::string_view value) {
    const std::size_t found = FindNoCase(value, wanted, 0);
    return term.Key == QueryKey::Weather ? found != value.npos : found == 0;
  });
}

/** What a value is to be; "" for one that can be taken. */
std::string WantedValue(QueryTerm& term) {
  if (term.Key == QueryKey::Time || term.Key == QueryKey::Flights)
    return ReadRange(term) ? "" : std::string(KeyHint(term.Key));
  const auto fixed = FixedValues(term.Key);
  const bool isFree = fixed.empty() || term.Key == QueryKey::Player;
  return isFree || IsOneOf(fixed, term) ? "" : ListOf(fixed);
}

bool IsUnfinished(const QueryPart& part, const QueryTerm& term) {
  if (part.Value.empty()) return true;
  const bool isNumber = term.Key == QueryKey::Time || term.Key == QueryKey::Flights;
  return isNumber && std::string_view("<>=-:").find(part.Value.back()) != std::string_view::npos;
}

/** Adds what a part says to the query. */
void TakePart(const QueryPart& part, Query& query) {
  const auto fault = [&](std::string text, std::size_t at, std::size_t end) {
    return QueryFault{std::move(text), at, end - at};
  };
  const std::size_t end = part.At + part.Length;
  if (part.IsOpen) {
    query.Fault = fault("A quote is open.", part.At, end);
    return;
  }
  QueryTerm term;
  if (part.HasKey) {
    const auto key = KeyNamed(part.Key);
    if (!key) {
      query.Fault =
          fault("\"" + part.Key + "\" is no key. A word that holds a colon stands in quotes.",
                part.KeyAt, part.ValueAt);
      return;
    }
    term.Key = *key;
  }
  term.Negated = part.Negated;
  term.Value = part.Value;
  if (IsUnfinished(part, term)) {
    query.Unfinished = fault("The condition has no end yet.", part.At, end);
    return;
  }
  const std::string wanted = WantedValue(term);
  if (wanted.empty())
    query.Terms.push_back(std::move(term));
  else
    query.Fault = fault("After \"" + part.Key + ":\" comes " + wanted + ".", part.ValueAt, end);
}

}  // namespace

const std::vector<std::string_view>& QueryKeys() {
  static const std::vector<std::string_view> kNames = [] {
    std::vector<std::string_view> names;
    for (const auto& row : kKeys) names.push_back(row.Name);
    return names;
  }();
  return kNames;
}

std::string_view KeyHint(QueryKey key) {
  for (const auto& row : kKeys)
    if (row.Key == key) return row.Hint;
  return "";
}

std::optional<QueryKey> KeyNamed(std::string_view name) {
  for (const auto& row : kKeys)
    if (EqualNoCase(row.Name, name)) return row.Key;
  return {};
}

std::vector<std::string_view> FixedValues(QueryKey key) {
  std::vector<std::string_view> values;
  if (key == QueryKey::Player) values = {"yes", "no"};
  if (key == QueryKey::Army) values = {"red", "blue"};
  if (key == QueryKey::Is) values = {"unsaved", "broken"};
  if (key == QueryKey::Kind)
    for (const auto kind :
         {MissionKind::Single, MissionKind::Campaign, MissionKind::Coop, MissionKind::Dogfight})
      values.push_back(KindWord(kind));
  if (key == QueryKey::Weather)
    for (std::uint8_t i = 0; i < kWeathers; ++i) values.push_back(WeatherWord(i));
  return values;
}

std::vector<QueryPart> SplitQuery(std::string_view line) { return Splitter(line).Split(); }

Query ParseQuery(std::string_view line) {
  constexpr std::ptrdiff_t kMostTexts = 32;
  Query query;
  for (const auto& part : SplitQuery(line)) {
    if (!query.Fault) TakePart(part, query);
  }
  const auto texts =
      std::count_if(query.Terms.begin(), query.Terms.end(),
                    [](const QueryTerm& term) { return term.Key == QueryKey::Text; });
  if (texts > kMostTexts) query.Fault = QueryFault{"Too many texts.", 0, line.size()};
  if (query.Fault) query.Terms.clear();
  return query;
}

std::string QuotedValue(std::string_view value) {
  std::string bare(value);
  std::erase(bare, '"');
  const bool isPlain = bare.find_first_of(" \t:") == bare.npos && !bare.starts_with('-');
  return isPlain ? bare : "\"" + bare + "\"";
}

}  // namespace rws
