#include "mission/kept_bases.h"

#include <algorithm>

#include "mission/kept_keys.h"
#include "mission/kept_reader.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr std::size_t kArmy = 0, kRadius = 1, kX = 2, kY = 3;

std::string PlaceName(std::string_view x, std::string_view y) {
  return std::string(x).append("_").append(y);
}

void EditAircraft(const KeptText& text, LinePatch& patch, std::size_t base,
                  std::vector<std::string> wanted) {
  const KeptSection* section = AircraftSection(text, base);
  if (wanted.empty() && section)
    return patch.RemoveRange(section->Header, EndOfSection(text, *section));
  const auto take = [&](std::string_view name) {
    const auto found = std::find_if(wanted.begin(), wanted.end(), [&](const std::string& plane) {
      return EqualNoCase(plane, name);
    });
    if (found == wanted.end()) return false;
    wanted.erase(found);
    return true;
  };
  if (section)
    for (const auto& plane : AircraftOf(text, *section))
      if (!take(plane.Name)) patch.RemoveRange(plane.First, plane.Last);
  const std::size_t place = section ? EndOfSection(text, *section) : PlaceOfBaseSection(text, base);
  if (!section) patch.Insert(place, "[BornPlace" + std::to_string(base) + "]");
  for (const auto& plane : wanted) patch.Insert(place, "  " + plane);
}

}  // namespace

std::string PlaceInBaseLine(std::string_view line) {
  const auto words = KeptWords(line);
  return words.size() > kY ? PlaceName(words[kX].Text, words[kY].Text) : "";
}

void MoveBaseSections(const KeptText& text, LinePatch& patch, std::size_t base,
                      const std::string& place) {
  for (const auto& named : SectionsAtBase(text, base)) {
    std::string name(named.Section->Name);
    RenameSection(text, patch, *named.Section, name.replace(named.At, named.Length, place));
  }
}

std::vector<PlacedSection> SectionsAtBase(const KeptText& text, std::size_t base) {
  std::vector<PlacedSection> sections;
  const auto lines = HomeBaseLines(text);
  const std::string place = base < lines.size() ? PlaceInBaseLine(text.Lines()[lines[base]]) : "";
  if (place.empty()) return sections;
  for (std::size_t i = 0; i < lines.size(); ++i)
    if (i != base && PlaceInBaseLine(text.Lines()[lines[i]]) == place) return sections;
  for (const auto& section : text.Sections())
    for (const std::string_view kind : {"MDS_BornPlace_", "BornPlace_Resources_"}) {
      if (!EqualNoCase(section.Name.substr(0, kind.size()), kind)) continue;
      const auto rest = section.Name.substr(kind.size());
      if (!rest.starts_with(place)) continue;
      if (rest.size() == place.size() || rest[place.size()] == '_')
        sections.push_back({&section, kind.size(), place.size()});
    }
  return sections;
}

std::size_t PlaceOfBaseSection(const KeptText& text, std::size_t base) {
  const KeptSection* last = text.Find("BornPlace");
  for (std::size_t i = 0; i < base; ++i)
    for (const char* kind : {"BornPlace", "BornPlaceCountries"})
      if (const auto* section = text.Find(kind + std::to_string(i)))
        if (section->Header > last->Header) last = section;
  return EndOfSection(text, *last);
}

void EditHomeBases(const KeptText& text, LinePatch& patch, const std::vector<BornPlace>& read,
                   const std::vector<BornPlace>& edited) {
  const auto lines = HomeBaseLines(text);
  for (std::size_t i = 0; i < lines.size() && i < edited.size(); ++i) {
    const BornPlace &was = read[i], &is = edited[i];
    WordLine words(text.Lines()[lines[i]]);
    const auto set = [&](std::size_t place, auto before, auto after) {
      if (before != after) words.Set(place, std::to_string(after));
    };
    set(kArmy, was.Army, is.Army);
    set(kRadius, was.Radius, is.Radius);
    set(kX, was.X, is.X);
    set(kY, was.Y, is.Y);
    patch.Replace(lines[i], words.Text());
    if (was.X != is.X || was.Y != is.Y)
      MoveBaseSections(text, patch, i, PlaceName(words.Word(kX), words.Word(kY)));
    if (was.Planes != is.Planes) EditAircraft(text, patch, i, is.Planes);
  }
}

}  // namespace rws
