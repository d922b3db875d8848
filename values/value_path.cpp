#include "values/value_path.h"

#include <algorithm>
#include <charconv>
#include <vector>

#include "services/text.h"
#include "values/edit_rules.h"

namespace rws {

namespace {

struct Known {
  ValueOf Of;
  std::string_view Part;  // the last part of the path, ahead of the field
  std::vector<std::string_view> Fields;
};

const std::vector<Known>& KnownFields() {
  static const std::vector<Known> known = {
      {ValueOf::Mission,
       "",
       {"Time", "CloudType", "CloudHeight", "Army", "Player", "PlayerNum", "TimeConstant",
        "WeaponsConstant"}},
      {ValueOf::Flight,
       "flight",
       {"Fuel", "Skill", "Weapons", "Planes", "StartTime", "OnlyAI", "Parachute", "Class"}},
      {ValueOf::Plane, "plane", {"Skin", "Pilot", "NoseArt", "Skill", "NumberOn"}},
      {ValueOf::Waypoint, "waypoint", {"Alt", "Speed", "Type", "Marker"}},
      {ValueOf::Base, "base", {"Army", "Radius"}}};
  return known;
}

std::string FieldsText(const Known& known) {
  std::string text;
  for (const auto field : known.Fields) text.append(text.empty() ? "" : ", ").append(field);
  return text;
}

/** One part of a path: a word, mostly with brackets behind it. */
struct Part {
  std::string_view Word;
  std::optional<std::string_view> Brackets;
};

/** Position of a character outside of brackets; the length of the text for none. */
std::size_t FindOutside(std::string_view text, char wanted) {
  bool inside = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == wanted && !inside) return i;
    if (text[i] == '[') inside = true;
    if (text[i] == ']') inside = false;
  }
  return text.size();
}

Part ParsePart(std::string_view text) {
  const std::size_t open = text.find('[');
  Part part{text.substr(0, open), {}};
  if (open != text.npos) {
    if (text.back() != ']') throw ValueFault("\"[\" without \"]\" at the end");
    part.Brackets = text.substr(open + 1, text.size() - open - 2);
    if (part.Brackets->empty()) throw ValueFault("nothing stands in the brackets");
  }
  const std::string_view rest = part.Brackets.value_or("");
  if (part.Word.empty() || rest.find_first_of("[]") != rest.npos ||
      part.Word.find(']') != text.npos)
    throw ValueFault("the path cannot be read");
  return part;
}

std::vector<Part> ParseParts(std::string_view text) {
  std::vector<Part> parts;
  while (true) {
    const std::size_t end = FindOutside(text, '.');
    parts.push_back(ParsePart(text.substr(0, end)));
    if (end == text.size()) return parts;
    text.remove_prefix(end + 1);
  }
}

FlightChoice ParseChoice(std::string_view text) {
  constexpr std::pair<std::string_view, FlightChoice::Kind> kKinds[] = {
      {"class", FlightChoice::Class},
      {"army", FlightChoice::Army},
      {"aircraft", FlightChoice::Aircraft},
      {"squadron", FlightChoice::Squadron}};
  FlightChoice choice{FlightChoice::Name, std::string(text)};
  const std::size_t equals = text.find('=');
  if (equals == text.npos) return choice;
  const auto word = text.substr(0, equals);
  const auto kind = std::find_if(std::begin(kKinds), std::end(kKinds),
                                 [&](const auto& known) { return EqualNoCase(known.first, word); });
  if (kind == std::end(kKinds) || equals + 1 == text.size())
    throw ValueFault("flights are chosen by name, or by class=, army=, aircraft= or squadron=");
  choice = {kind->second, std::string(text.substr(equals + 1))};
  if (choice.By == FlightChoice::Class && FindNoCase(choice.Text, "air.", 0) == 0)
    choice.Text.erase(0, 4);
  const bool isArmy = FitsPattern(choice.Text, "red") || FitsPattern(choice.Text, "blue") ||
                      FitsPattern(choice.Text, "white");
  if (choice.By == FlightChoice::Army && !isArmy) throw ValueFault("an army is red, blue or white");
  return choice;
}

std::optional<std::size_t> ParseIndex(std::string_view text) {
  if (text == "*") return {};
  std::size_t index = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), index);
  if (error != std::errc() || end != text.data() + text.size())
    throw ValueFault("\"" + std::string(text) + "\" is no number from 0 on");
  return index;
}

const Part& RequireBrackets(const Part& part) {
  if (!part.Brackets) throw ValueFault("\"" + std::string(part.Word) + "\" needs brackets");
  return part;
}

/** What the parts ahead of the field name. */
ValueOf ParseOwner(const std::vector<Part>& parts, ValuePath& path) {
  if (parts.size() == 1) return ValueOf::Mission;
  const Part& first = RequireBrackets(parts[0]);
  if (EqualNoCase(first.Word, "base") && parts.size() == 2) {
    path.Index = ParseIndex(*first.Brackets);
    return ValueOf::Base;
  }
  if (!EqualNoCase(first.Word, "flight") || parts.size() > 3)
    throw ValueFault("a path begins with flight[...] or base[...], or is a value of the mission");
  path.Flights = ParseChoice(*first.Brackets);
  if (parts.size() == 2) return ValueOf::Flight;
  const Part& second = RequireBrackets(parts[1]);
  path.Index = ParseIndex(*second.Brackets);
  if (EqualNoCase(second.Word, "plane")) return ValueOf::Plane;
  if (EqualNoCase(second.Word, "waypoint")) return ValueOf::Waypoint;
  throw ValueFault("a flight has plane[...] and waypoint[...]");
}

ValuePath ParsePath(std::string_view text) {
  const auto parts = ParseParts(text);
  ValuePath path;
  path.Of = ParseOwner(parts, path);
  const auto& known = *std::find_if(KnownFields().begin(), KnownFields().end(),
                                    [&](const Known& row) { return row.Of == path.Of; });
  for (const auto field : known.Fields)
    if (EqualNoCase(field, parts.back().Word) && !parts.back().Brackets) path.Field = field;
  if (path.Field.empty())
    throw ValueFault("there is no such value; it is one of " + FieldsText(known));
  return path;
}

}  // namespace

bool ValuePath::IsPattern() const {
  const bool ofFlight = Of != ValueOf::Mission && Of != ValueOf::Base;
  const bool hasIndex = Of != ValueOf::Mission && Of != ValueOf::Flight;
  return (ofFlight && Flights.IsPattern()) || (hasIndex && !Index);
}

Assignment ParseAssignment(std::string_view text) {
  const std::size_t equals = FindOutside(text, '=');
  if (equals == text.size()) throw ValueFault("it is to be PATH=VALUE");
  Assignment assignment{ParsePath(text.substr(0, equals)), std::string(text.substr(equals + 1)),
                        std::string(text)};
  return assignment;
}

FlightChoice ParseFlight(std::string_view text) {
  const Part part = ParsePart(text);
  if (!EqualNoCase(part.Word, "flight") || !part.Brackets)
    throw ValueFault("only flight[...] can be removed");
  return ParseChoice(*part.Brackets);
}

bool FitsPattern(std::string_view text, std::string_view pattern) {
  // Where the last "*" stands, and how much of the text it has taken so far.
  std::size_t at = 0, star = pattern.npos, taken = 0, next = 0;
  while (at < text.size()) {
    if (next < pattern.size() && pattern[next] == '*') {
      star = next++;
      taken = at;
    } else if (next < pattern.size() && LowerAscii(pattern[next]) == LowerAscii(text[at])) {
      ++next;
      ++at;
    } else if (star != pattern.npos) {
      next = star + 1;
      at = ++taken;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of('*', next) == pattern.npos;
}

}  // namespace rws
