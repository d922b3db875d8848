#include "mission/kept_bases.h"

#include <map>
#include <utility>

#include "mission/kept_keys.h"
#include "mission/kept_reader.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr std::size_t kArmy = 0, kRadius = 1, kX = 2, kY = 3;

std::string PlaceName(std::string_view x, std::string_view y) {
  return std::string(x).append("_").append(y);
}

/** Aircraft of a section by their names. */
class Listed {
 public:
  explicit Listed(const KeptText& text, const KeptSection* section)
      : text_(text), planes_(section ? AircraftOf(text, *section) : std::vector<KeptAircraft>()) {}

  const std::vector<KeptAircraft>& Planes() const { return planes_; }
  std::vector<std::string> LinesOf(std::size_t plane) const {
    std::vector<std::string> lines;
    for (std::size_t i = planes_[plane].First; i < planes_[plane].Last; ++i)
      lines.emplace_back(text_.Lines()[i]);
    return lines;
  }
  /** The place of the one that is listed as often before it, or `npos`. */
  std::size_t Find(std::string_view name, std::size_t before) const {
    for (std::size_t i = 0; i < planes_.size(); ++i)
      if (EqualNoCase(planes_[i].Name, name) && before-- == 0) return i;
    return KeptText::npos;
  }

 private:
  const KeptText& text_;
  std::vector<KeptAircraft> planes_;
};

/** Brings a list of aircraft into the wanted order, each with what its lines say beside its name:
    one that it lacks has those that are known of it. */
void EditList(const KeptText& text, LinePatch& patch, const KeptSection& section,
              const std::vector<std::string>& wanted, const Listed& known) {
  const Listed listed(text, &section);
  const auto& planes = listed.Planes();
  std::map<std::string, std::size_t> counts;
  std::size_t next = 0;
  const auto removeUpTo = [&](std::size_t plane) {
    for (; next < plane; ++next) patch.RemoveRange(planes[next].First, planes[next].Last);
  };
  for (const auto& name : wanted) {
    const std::size_t before = counts[LowerKey(name)]++;
    const std::size_t place = listed.Find(name, before), was = known.Find(name, before);
    if (place != KeptText::npos && place >= next) {
      removeUpTo(place);
      ++next;
      continue;
    }
    std::vector<std::string> lines{"  " + name};
    if (was != KeptText::npos) lines = known.LinesOf(was);
    if (place != KeptText::npos) lines = listed.LinesOf(place);
    for (auto& line : lines)
      patch.Insert(next < planes.size() ? planes[next].First : EndOfSection(text, section),
                   std::move(line));
  }
  removeUpTo(planes.size());
}

void EditAircraft(const KeptText& text, LinePatch& patch, std::size_t base,
                  const BornPlace& edited) {
  const LineArray kept = LineArray::FromFileAsIs(std::string(edited.KeptPlanes));
  const KeptText keptText(kept);
  const KeptSection* keptSection =
      keptText.Sections().empty() ? nullptr : &keptText.Sections().front();
  const Listed known(keptText, keptSection);
  const KeptSection* section = AircraftSection(text, base);
  if (edited.Planes.empty() && section)
    return patch.RemoveRange(section->Header, EndOfSection(text, *section));
  if (section) return EditList(text, patch, *section, edited.Planes, known);
  // A section that comes back does so as a whole.
  LineArray lines = kept;
  if (!keptSection) lines.Add("[BornPlace" + std::to_string(base) + "]");
  const KeptText whole(lines);
  LinePatch own(lines);
  EditList(whole, own, whole.Sections().front(), edited.Planes, known);
  const LineArray result = own.Result();
  for (std::size_t i = 0; i < result.size(); ++i)
    patch.Insert(PlaceOfBaseSection(text, base), std::string(result[i]));
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
    if (was.Planes != is.Planes) EditAircraft(text, patch, i, is);
  }
}

}  // namespace rws
