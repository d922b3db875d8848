#include "catalogues/listed_aircraft.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "catalogues/aircraft.h"
#include "catalogues/listed_text.h"
#include "catalogues/squadrons.h"
#include "catalogues/weapons.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr const char kRed[] = "Red", kBlue[] = "Blue";
/** Behind a loadout that only a text tells of: of a hundred of them six do not exist, and one that
    does not exist costs the game all flights behind it. */
constexpr std::string_view kUncertain = " (uncertain)";

class Aircrafts {
 public:
  Aircrafts(Catalogues& catalogues, const Services& services, const ListedNames& names,
            Unlisted unlisted)
      : catalogues_(catalogues),
        services_(services),
        names_(names),
        unlisted_(unlisted),
        unique_(services.Page),
        keys_(services.Page),
        texts_(services.Page) {
    for (const auto& parked : names.Parked) {
      parkedOfKey_.emplace(parked.Key, parked.Class);
      parkedClasses_.insert(parked.Class);
    }
  }

  void Apply() {
    for (const auto& listed : names_.Aircraft) unique_.Reserve(listed.Class);
    std::vector<Aircraft> red, blue;
    red.reserve(names_.Aircraft.size());
    std::vector<DogFightPlane> redPlanes, bluePlanes;
    for (const auto& listed : names_.Aircraft) {
      std::optional<Aircraft> made = Make(listed);
      if (!made) continue;
      const bool isRed = made->Side == kRed;
      (isRed ? redPlanes : bluePlanes)
          .push_back({made->Name, ExactText(services_.Page, listed.Key), "R", !made->Flyable});
      (isRed ? red : blue).push_back(std::move(*made));
    }
    if (red.empty() && blue.empty()) return;
    std::move(blue.begin(), blue.end(), std::back_inserter(red));
    std::move(bluePlanes.begin(), bluePlanes.end(), std::back_inserter(redPlanes));
    catalogues_.Aircraft = AircraftTable(std::move(red));
    catalogues_.ListedDogFight = std::move(redPlanes);
  }

 private:
  std::optional<Aircraft> Make(const ListedAircraft& listed) {
    const CodePage& page = services_.Page;
    const std::string key = ExactText(page, listed.Key);
    Aircraft aircraft;
    aircraft.Class = ExactText(page, listed.Class);
    if (key.empty() || aircraft.Class.empty()) return {};
    const Aircraft* known = Known(aircraft.Class);
    aircraft.Name = NameOf(listed, key, aircraft.Class);
    aircraft.Side = SideOf(listed, known);
    aircraft.Folder = SkinFolderOf(key);
    aircraft.Companion = known ? known->Companion : "";
    aircraft.Flyable = known ? known->Flyable : unlisted_ == Unlisted::Flyable;
    aircraft.NoseArtOk = known && known->NoseArtOk;
    aircraft.ParkedClass = ParkedOf(listed, known);
    aircraft.Weapons = LoadoutsOf(listed, known);
    return aircraft;
  }

  const Aircraft* Known(std::string_view aircraftClass) const {
    const Aircraft* known = AircraftOf(catalogues_, aircraftClass);
    return known && known->Class == aircraftClass ? known : nullptr;
  }

  std::string NameOf(const ListedAircraft& listed, const std::string& key,
                     const std::string& aircraftClass) {
    std::string name = PlaneNameText(services_.Page, listed.Name);
    if (name.empty()) name = key;
    // Its own class is the one taken text that it may have.
    if (services_.Page.LCase(name) == services_.Page.LCase(aircraftClass)) return name;
    return unique_.Make(std::move(name), key);
  }

  std::string SideOf(const ListedAircraft& listed, const Aircraft* known) const {
    if (listed.Army == ListedArmy::Red) return kRed;
    if (listed.Army == ListedArmy::Blue) return kBlue;
    if (known) return known->Side;
    const std::string group = ExactText(services_.Page, listed.DefaultCode) + "00";
    return GetColorByGroup(catalogues_, services_, group) == "blue" ? kBlue : kRed;
  }

  std::string ParkedOf(const ListedAircraft& listed, const Aircraft* known) const {
    if (parkedClasses_.contains(listed.Class)) return "";
    const auto found = parkedOfKey_.find(listed.Key);
    if (found != parkedOfKey_.end()) return ExactText(services_.Page, found->second);
    return known ? known->ParkedClass : "";
  }

  /** Those that the table has in its order, with the text of the list; then those of the list. */
  std::vector<Loadout> LoadoutsOf(const ListedAircraft& listed, const Aircraft* known) {
    const CodePage& page = services_.Page;
    std::vector<Loadout> loadouts = DefaultLoadouts();
    loadouts.reserve(loadouts.size() + listed.Loadouts.size());
    const Loadout last = loadouts.back();
    loadouts.pop_back();
    keys_.Clear();
    texts_.Clear();
    for (const auto& usual : {loadouts.front(), last}) {
      keys_.Add(*usual.Key);
      texts_.Add(usual.Text);
    }
    const auto add = [&](std::string text, std::string key) {
      if (!texts_.Add(text)) text += " (" + key + ")";
      loadouts.push_back({std::move(text), std::move(key)});
    };
    if (known) AddKnown(listed, *known, add);
    const bool isProved = loadouts.size() == 1;
    for (const auto& one : listed.Loadouts) {
      std::string key = ExactText(page, one.Key), text = ShownText(page, one.Text);
      if (key.empty() || !keys_.Add(key)) continue;
      if (text.empty()) text = key;
      if (!isProved) text += kUncertain;
      add(std::move(text), std::move(key));
    }
    loadouts.push_back(last);
    return loadouts;
  }

  template <class Add>
  void AddKnown(const ListedAircraft& listed, const Aircraft& known, const Add& add) {
    const CodePage& page = services_.Page;
    std::unordered_map<std::string, const ListedLoadout*> byKey;
    for (const auto& one : listed.Loadouts) byKey.emplace(page.LCase(one.Key), &one);
    for (const auto& row : known.Weapons) {
      if (!row.Key || !keys_.Add(*row.Key)) continue;
      const auto found = byKey.find(page.LCase(*row.Key));
      std::string text = found == byKey.end() ? "" : ShownText(page, found->second->Text);
      add(text.empty() ? row.Text : std::move(text), *row.Key);
    }
  }

  Catalogues& catalogues_;
  const Services& services_;
  const ListedNames& names_;
  const Unlisted unlisted_;
  UniqueTexts unique_;
  SeenTexts keys_, texts_;  // of the loadouts of one aircraft
  std::unordered_map<std::string, std::string> parkedOfKey_;
  std::unordered_set<std::string> parkedClasses_;
};

}  // namespace

std::string PlaneNameText(const CodePage& page, std::string_view utf8) {
  std::string name = ShownText(page, utf8);
  // A row of the aircraft list has the side, and "F" for flyable, behind the name and is read back:
  // in a name, the blank before them is one that does not break.
  const char blank = page.FromUnicode(0xA0).value_or('-');
  for (const char* side : {kRed, kBlue})
    name = Replace(name, std::string(" ") + side, std::string(1, blank) + side);
  if (name.ends_with(" F")) name[name.size() - 2] = blank;
  return name;
}

std::string SkinFolderOf(std::string key) {
  for (char& c : key)
    if (c == '\\' || c == '/' || c == '?') c = '_';
  std::erase_if(key, [](char c) { return c == '_' || c == '-'; });
  return key;
}

void ApplyListedAircraft(Catalogues& catalogues, const Services& services, const ListedNames& names,
                         Unlisted unlisted) {
  Aircrafts(catalogues, services, names, unlisted).Apply();
}

}  // namespace rws
