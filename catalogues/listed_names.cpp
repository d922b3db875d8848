#include "catalogues/listed_names.h"

#include <unordered_set>
#include <utility>

#include "catalogues/listed_aircraft.h"
#include "catalogues/listed_squadrons.h"
#include "catalogues/listed_text.h"

namespace rws {

namespace {

/** The maps of the lists first. The others stay, since the list is that of the game's builder alone
    and the game loads any map that it has. */
void ApplyMaps(Document& doc, const Services& services, const ListedNames& names) {
  const CodePage& page = services.Page;
  std::vector<MapRow> rows;
  std::unordered_set<std::string> paths;
  UniqueTexts shown(page);
  const auto add = [&](std::string name, const std::string& path) {
    if (path.empty() || !paths.insert(page.LCase(path)).second) return;
    if (name.empty()) name = path;
    rows.push_back({shown.Make(std::move(name), path), path});
  };
  for (const auto& map : names.Maps) add(ShownText(page, map.Name), ExactText(page, map.Path));
  for (const auto& row : doc.Maps) add(row.Name, row.Path);
  doc.Maps = std::move(rows);
}

}  // namespace

void ApplyListedNames(Document& doc, Catalogues& catalogues, const Services& services,
                      const ListedNames& names, Unlisted unlisted) {
  // Sides of aircraft are sought in the table of squadrons, which therefore changes last.
  ApplyListedAircraft(catalogues, services, names, unlisted);
  ApplyListedSquadrons(catalogues, services, names);
  if (!names.Maps.empty()) ApplyMaps(doc, services, names);
}

}  // namespace rws
