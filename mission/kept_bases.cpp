#include "mission/kept_bases.h"

#include <functional>
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
      : text_(text), planes_(section ? AircraftOf(text, *section) : std::vector<KeptAircraft>()) {
    for (std::size_t i = 0; i < planes_.size(); ++i)
      byName_[LowerKey(planes_[i].Name)].push_back(i);
  }

  const std::vector<KeptAircraft>& Planes() const { return planes_; }
  std::vector<std::string> LinesOf(std::size_t plane) const {
    std::vector<std::string> lines;
    for (std::size_t i = planes_[plane].First; i < planes_[plane].Last; ++i)
      lines.emplace_back(text_.Lines()[i]);
    return lines;
  }
  /** The place of the one that is listed as often before it, or `npos`. */
  std::size_t Find(std::string_view name, std::size_t before) const {
    const auto found = byName_.find(LowerKey(name));
    const bool has = found != byName_.end() && before < found->second.size();
    return has ? found->second[before] : KeptText::npos;
  }

 private:
  const KeptText& text_;
  std::vector<KeptAircraft> planes_;
  std::map<std::string, std::vector<std::size_t>> byName_;
};

/** What a record knows of its aircraft. */
class Known {
 public:
  explicit Known(std::string_view section)
      : lines_(LineArray::FromFileAsIs(std::string(section))),
        text_(lines_),
        section_(text_.Sections().empty() ? nullptr : &text_.Sections().front()),
        listed_(text_, section_) {}
  Known(const Known&) = delete;
  Known& operator=(const Known&) = delete;

  const KeptText& Text() const { return text_; }
  const KeptSection* Section() const { return section_; }
  const Listed& List() const { return listed_; }
  /** The lines of an aircraft; its name alone for one that is not listed. */
  std::vector<std::string> LinesOf(std::string_view name, std::size_t before) const {
    const std::size_t plane = listed_.Find(name, before);
    if (plane != KeptText::npos) return listed_.LinesOf(plane);
    return {std::string("  ").append(name)};
  }
  /** True if it knows nothing else of an aircraft than those lines, which may spell a bare name in
      another way. */
  bool Has(std::string_view name, std::size_t before, const std::vector<std::string>& lines) const {
    if (!section_) return true;
    if (listed_.Find(name, before) != KeptText::npos) return LinesOf(name, before) == lines;
    return lines.size() == 1 && KeyOf(lines[0]).Value.empty();
  }

 private:
  LineArray lines_;
  KeptText text_;
  const KeptSection* section_;
  Listed listed_;
};

/** Calls with each aircraft of a record, and how many of its name stand ahead of it. */
void ForEachAircraft(const BornPlace& base,
                     const std::function<void(std::string_view, std::size_t)>& take) {
  std::map<std::string, std::size_t> counts;
  for (const auto& plane : base.Planes)
    if (const auto name = KeyOf(plane).Key; !name.starts_with('+'))
      take(name, counts[LowerKey(name)]++);
}

/** Brings a list of aircraft into the wanted order, each with what is known of it beside its name.
 */
void EditList(const KeptText& text, LinePatch& patch, const KeptSection& section,
              const BornPlace& wanted, const Known& known) {
  const Listed listed(text, &section);
  const auto& planes = listed.Planes();
  std::size_t next = 0;
  const auto removeUpTo = [&](std::size_t plane) {
    for (; next < plane; ++next) patch.RemoveRange(planes[next].First, planes[next].Last);
  };
  ForEachAircraft(wanted, [&](std::string_view name, std::size_t before) {
    const std::size_t place = listed.Find(name, before);
    const bool isListed = place != KeptText::npos;
    const bool stays = isListed && known.Has(name, before, listed.LinesOf(place));
    if (stays && place >= next) {
      removeUpTo(place);
      ++next;
      return;
    }
    auto lines = stays ? listed.LinesOf(place) : known.LinesOf(name, before);
    if (isListed && place == next) removeUpTo(next + 1);
    for (auto& line : lines)
      patch.Insert(next < planes.size() ? planes[next].First : EndOfSection(text, section),
                   std::move(line));
  });
  removeUpTo(planes.size());
}

void EditAircraft(const KeptText& text, LinePatch& patch, std::size_t base,
                  const BornPlace& edited) {
  const Known known(edited.KeptPlanes);
  const KeptSection* section = AircraftSection(text, base);
  if (edited.Planes.empty() && section)
    return patch.RemoveRange(section->Header, EndOfSection(text, *section));
  if (section) return EditList(text, patch, *section, edited, known);
  // A section that comes back does so as a whole.
  LineArray lines = known.Text().Lines();
  const std::string name = "BornPlace" + std::to_string(base);
  if (!known.Section()) lines.Add("[" + name + "]");
  const KeptText whole(lines);
  LinePatch own(lines);
  // Others may have put bases ahead of it since.
  if (!EqualNoCase(whole.Sections().front().Name, name))
    RenameSection(whole, own, whole.Sections().front(), name);
  EditList(whole, own, whole.Sections().front(), edited, known);
  const LineArray result = own.Result();
  for (std::size_t i = 0; i < result.size(); ++i)
    patch.Insert(PlaceOfBaseSection(text, base), std::string(result[i]));
}

}  // namespace

bool SameAircraft(const BornPlace& a, const BornPlace& b) {
  if (a.KeptPlanes == b.KeptPlanes) return true;
  const Known known(a.KeptPlanes), other(b.KeptPlanes);
  if (!known.Section() || !other.Section()) return true;
  bool same = true;
  ForEachAircraft(a, [&](std::string_view name, std::size_t before) {
    same = same && (other.Has(name, before, known.LinesOf(name, before)) ||
                    known.Has(name, before, other.LinesOf(name, before)));
  });
  return same;
}

std::vector<bool> ChangedAircraft(const KeptText& text, const KeptSection& section,
                                  const BornPlace& base) {
  const Known known(base.KeptPlanes);
  const Listed listed(text, &section);
  std::map<std::string, std::size_t> counts;
  std::vector<bool> changed;
  for (std::size_t i = 0; i < listed.Planes().size(); ++i) {
    const auto name = listed.Planes()[i].Name;
    changed.push_back(!known.Has(name, counts[LowerKey(name)]++, listed.LinesOf(i)));
  }
  return changed;
}

std::string PatchedAircraft(std::string_view section, const BornPlace& from, const BornPlace& to) {
  const Known now(section), was(from.KeptPlanes), is(to.KeptPlanes);
  if (!is.Section()) return std::string(section);
  if (!now.Section()) return std::string(to.KeptPlanes);
  std::map<std::string, std::size_t> counts;
  ForEachAircraft(from, [&](std::string_view name, std::size_t) { ++counts[LowerKey(name)]; });
  LinePatch patch(now.Text().Lines());
  const auto& planes = now.List().Planes();
  ForEachAircraft(to, [&](std::string_view name, std::size_t before) {
    const auto lines = is.LinesOf(name, before);
    if (before < counts[LowerKey(name)] && was.Has(name, before, lines)) return;
    const std::size_t place = now.List().Find(name, before);
    const bool isListed = place != KeptText::npos;
    if (isListed) patch.RemoveRange(planes[place].First, planes[place].Last);
    for (const auto& line : lines)
      patch.Insert(isListed ? planes[place].First : EndOfSection(now.Text(), *now.Section()), line);
  });
  return patch.Result().FileText();
}

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
    if (was.Planes != is.Planes || !SameAircraft(was, is)) EditAircraft(text, patch, i, is);
  }
}

}  // namespace rws
