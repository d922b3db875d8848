#include "editors/logic/stationary_aircraft.h"

#include <algorithm>
#include <map>
#include <utility>

#include "catalogues/aircraft.h"
#include "mission/kept_keys.h"
#include "services/arrays.h"
#include "services/faults.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr std::size_t kClassWord = 1, kCountryWord = 7;
constexpr char kNoCountry[] = "null", kUnsupported[] = "not";

using Words = std::vector<std::string_view>;

std::string_view NameOf(const Words& words) {
  if (words.size() <= kClassWord) return {};
  const std::string_view word = words[kClassWord];
  const auto sign = word.find('$');
  return sign == word.npos ? std::string_view() : word.substr(sign + 1);
}

std::string_view CountryOf(const Words& words) {
  const bool given = words.size() > kCountryWord && !words[kCountryWord].empty();
  return given ? words[kCountryWord] : kNoCountry;
}

/** What the rows of one class have in common. */
struct ClassFacts {
  std::string Name;
  bool Flyable = false, Known = false;
  std::string Side;  // lower case
};

ClassFacts FactsOf(const std::string& planeClass, const Catalogues& catalogues,
                   const Services& services) {
  const CodePage& page = services.Page;
  ClassFacts facts;
  facts.Name = GetPlaneName(catalogues, services, planeClass);
  facts.Flyable = IsFlyable(catalogues, planeClass);
  facts.Known = IsKnownPlane(catalogues, planeClass);
  if (const Aircraft* parked = FindParked(catalogues, planeClass)) {
    facts.Flyable = parked->Flyable;
    facts.Known = true;
    facts.Side = page.LCase(parked->Side);
    return facts;
  }
  if (const Aircraft* flying = FindClass(catalogues, page, planeClass))
    facts.Side = page.LCase(flying->Side);
  return facts;
}

/** What the rows of one country have in common. */
struct CountryFacts {
  std::string Name;
  std::string ColorWord;  // lower case; "" if the table gives none
};

CountryFacts FactsOfCountry(const std::string& code, const Catalogues& catalogues,
                            const CodePage& page) {
  const auto& rows = catalogues.Countries;
  const auto byCode = std::find_if(rows.begin(), rows.end(),
                                   [&](const auto& row) { return row.StaticCode == code; });
  CountryFacts facts;
  facts.Name = byCode == rows.end() ? "Default" : byCode->Name;
  const std::string lower = page.LCase(facts.Name);
  const auto byName = std::find_if(rows.begin(), rows.end(),
                                   [&](const auto& row) { return page.LCase(row.Name) == lower; });
  if (byName != rows.end()) facts.ColorWord = page.LCase(byName->FlightCode);
  if (facts.ColorWord >= "z") facts.ColorWord.clear();
  return facts;
}

/** Facts by key, each looked up once: thousands of parked aircraft are of few types. */
template <class Facts, class Find>
const Facts& Once(std::map<std::string, Facts>& known, const std::string& key, Find find) {
  const auto place = known.find(key);
  return place != known.end() ? place->second : known.emplace(key, find(key)).first->second;
}

std::string ChangedLine(const Words& words, const StaticPlane& plane) {
  const std::string_view oldName = NameOf(words);
  std::string line;
  for (std::size_t i = 0; i < words.size(); ++i) {
    line += i == 0 ? "  " : " ";
    // By its place: it may be the last word, and its text may stand elsewhere as well.
    line += i == kCountryWord ? plane.Country : Replace(words[i], oldName, plane.PlaneClass);
  }
  return words.size() > kCountryWord ? line : line + " " + plane.Country;
}

/** A line that is no aircraft to the game, such as a comment: its words are those of the list. */
std::string WithWordsReplaced(std::string_view line, const Words& words, const StaticPlane& plane) {
  const auto offset = [&](std::string_view word) {
    return static_cast<std::size_t>(word.data() - line.data());
  };
  std::string text(line);
  if (words.size() <= kCountryWord) text.append(" ").append(plane.Country);
  // From the end on, so that places ahead of it stay.
  if (words.size() > kCountryWord)
    text.replace(offset(words[kCountryWord]), words[kCountryWord].size(), plane.Country);
  const std::string_view name = NameOf(words);
  return text.replace(offset(name), name.size(), plane.PlaneClass);
}

std::string KeptLine(std::string_view line, const StaticPlane& plane, const StaticPlane& was) {
  WordLine words(line);
  const std::string old(words.Word(kClassWord));
  const Words listed = SplitAt(Trim(line), ' ');
  if (!Contains(old, "$") && !NameOf(listed).empty()) return WithWordsReplaced(line, listed, plane);
  if (plane.PlaneClass != was.PlaneClass)
    words.Set(kClassWord, old.substr(0, old.find('$') + 1) + plane.PlaneClass);
  if (plane.Country != was.Country) words.Set(kCountryWord, plane.Country);
  return words.Text();
}

}  // namespace

std::vector<StaticPlane> FindStaticPlanes(const LineArray& lines) {
  std::vector<StaticPlane> planes;
  Words words;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (!Contains(lines[i], "planes.Plane")) continue;
    SplitInto(words, Trim(lines[i]), ' ');
    planes.push_back({std::string(NameOf(words)), i, std::string(CountryOf(words))});
  }
  return planes;
}

std::vector<StaticRow> MakeStaticRows(const std::vector<StaticPlane>& planes,
                                      const Catalogues& catalogues, const Services& services) {
  std::map<std::string, ClassFacts> classes;
  std::map<std::string, CountryFacts> countries;
  std::vector<StaticRow> rows;
  rows.reserve(planes.size());
  for (const auto& plane : planes) {
    const ClassFacts& type = Once(classes, plane.PlaneClass, [&](const auto& planeClass) {
      return FactsOf(planeClass, catalogues, services);
    });
    const CountryFacts& country = Once(countries, plane.Country, [&](const auto& code) {
      return FactsOfCountry(code, catalogues, services.Page);
    });
    StaticRow row{rows.size(), type.Name, type.Flyable, country.Name, "", country.ColorWord};
    row.SortKey = row.Country + "  " + row.PlaneName;
    if (row.ColorWord.empty()) row.ColorWord = type.Side;
    if (!type.Known) row.ColorWord = kUnsupported;
    rows.push_back(std::move(row));
  }
  return rows;
}

void SortStaticRows(std::vector<StaticRow>& rows, const CodePage& page, bool descending) {
  SortByKey(
      rows, [&](const StaticRow& row) { return page.LCase(row.SortKey); }, &StaticRow::Plane,
      descending);
}

bool ChangeStaticPlanes(std::vector<StaticPlane>& planes, const std::vector<std::size_t>& chosen,
                        const Catalogues& catalogues, std::string_view name,
                        std::string_view code) {
  if (Trim(name).empty() || name == "Cancel") return false;
  const std::string planeClass = GetIntPlaneName(catalogues, NameInRow(name));
  const std::ptrdiff_t row = GetPlaneIndex(catalogues, planeClass);
  const std::string parked = row < 0 ? "" : At(catalogues.Aircraft, row).ParkedClass;
  for (const std::size_t index : chosen) {
    StaticPlane& plane = At(planes, static_cast<std::ptrdiff_t>(index));
    // Its line has no place for a class.
    if (plane.PlaneClass.empty()) continue;
    // One that is this aircraft already keeps the class that the game parks it by.
    if (parked.empty() || plane.PlaneClass != parked) plane.PlaneClass = planeClass;
    plane.Country = code.empty() ? kNoCountry : code;
  }
  return true;
}

bool ApplyStaticPlanes(const std::vector<StaticPlane>& planes, LineArray& lines) {
  LineArray result;
  result.Reserve(lines.FileText().size() + planes.size() * 16, lines.size());
  std::size_t next = 0;
  bool written = false;
  Words words;
  for (const auto& plane : planes) {
    if (plane.PlaneClass.empty()) continue;
    SplitInto(words, Trim(At(lines, static_cast<std::ptrdiff_t>(plane.LineIndex))), ' ');
    result.AddRange(lines, next, plane.LineIndex);
    result.Add(ChangedLine(words, plane));
    next = plane.LineIndex + 1;
    written = true;
  }
  if (!written) return false;
  result.AddRange(lines, next, lines.size());
  lines = std::move(result);
  return true;
}

bool ApplyKeptStaticPlanes(const std::vector<StaticPlane>& planes, LineArray& lines) {
  const auto before = FindStaticPlanes(lines);
  bool written = false;
  for (std::size_t i = 0; i < planes.size(); ++i) {
    const StaticPlane &plane = planes[i], &was = At(before, static_cast<std::ptrdiff_t>(i));
    if (plane.PlaneClass == was.PlaneClass && plane.Country == was.Country) continue;
    const auto line = At(lines, static_cast<std::ptrdiff_t>(plane.LineIndex));
    lines.Set(plane.LineIndex, KeptLine(line, plane, was));
    written = true;
  }
  return written;
}

}  // namespace rws
