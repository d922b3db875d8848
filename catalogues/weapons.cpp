#include "catalogues/weapons.h"

#include <algorithm>
#include <utility>

#include "catalogues/aircraft.h"
#include "catalogues/table.h"
#include "services/error_log.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr const char kTable[] = "RWS_Weapons.txt";

/** Index of the first line that holds `part`; the number of lines when none does. */
std::size_t FirstLineWith(const LineArray& lines, std::string_view part) {
  const std::size_t found = part.empty() ? part.npos : lines.FileText().find(part);
  return found == part.npos ? lines.size() : lines.LineAt(found);
}

/** A line "display text,key" of the table. */
Loadout MakeLoadout(std::string_view line) {
  const auto parts = SplitAt(line, ',');
  Loadout loadout{std::string(parts[0]), {}};
  if (parts.size() > 1) loadout.Key = parts[1];
  return loadout;
}

/** A subscript fault when there is none. */
const std::string& KeyOf(const Loadout& loadout) {
  if (!loadout.Key) throw SubscriptFault();
  return *loadout.Key;
}

}  // namespace

bool LoadWeaponsFile(Document& doc, const Services& services, LineArray& file) {
  bool read = false;
  LogAndLeave(services, "LoadWeaponsFile", [&] {
    auto lines = ReadTable(services, kTable);
    if (!lines) {
      services.Ask.MsgBox(
          std::string("Unable to load \"") + kTable + "\", RWS can not run without it.",
          Buttons::Ok, Icon::Critical, kProgramTitle);
      doc.Closing = true;
      services.Window.Close();
      return;
    }
    file = std::move(*lines);
    read = true;
  });
  return read;
}

std::vector<Loadout> DefaultLoadouts() {
  return {{"Default", "default"}, {"Empty (No Ammo)", "none"}};
}

void GetWeapons(const LineArray& file, std::string_view aircraftClass,
                std::vector<Loadout>& weapons) {
  weapons = DefaultLoadouts();
  const Loadout last = weapons.back();
  weapons.pop_back();
  std::size_t line = FirstLineWith(file, aircraftClass);
  if (line + 1 < file.size())
    for (; line < file.size() && !Contains(file[line], "none"); ++line)
      weapons.push_back(MakeLoadout(file[line]));
  weapons.push_back(last);
}

WeaponList MakeWeaponList(const Catalogues& catalogues, std::string_view nameOrClass) {
  WeaponList list{std::string(nameOrClass), {"Default"}};
  const std::ptrdiff_t index = GetPlaneIndex(catalogues, nameOrClass);
  if (index < 0) return list;
  const Aircraft& aircraft = At(catalogues.Aircraft, index);
  list.Tag = aircraft.Name;
  for (std::size_t i = 1; i < aircraft.Weapons.size(); ++i)
    list.Rows.push_back(aircraft.Weapons[i].Text);
  return list;
}

ShownWeapon DisplayWeps(Catalogues& catalogues, const Services& services, std::string_view tag,
                        std::string_view key) {
  ShownWeapon shown;
  LogAndLeave(services, "DisplayWeps", [&] {
    const std::ptrdiff_t row = GetPlaneIndex(catalogues, tag);
    if (row < 0) throw SubscriptFault();
    auto& weapons = catalogues.Aircraft.Loadouts(static_cast<std::size_t>(row));
    const std::string wanted = services.Page.LCase(key);
    for (const auto& entry : weapons) {
      if (services.Page.LCase(KeyOf(entry)) != wanted) continue;
      shown.Text = entry.Text;
      return;
    }
    shown.Text = key;
    // A flight without a loadout line teaches its aircraft nothing.
    if (key.empty()) return;
    weapons.insert(weapons.empty() ? weapons.end() : weapons.end() - 1, {shown.Text, shown.Text});
    shown.Learnt = true;
  });
  return shown;
}

std::string GetWeaponName(const Catalogues& catalogues, const Services& services,
                          std::string_view nameOrClass, std::string_view displayText) {
  std::string key;
  LogAndLeave(services, "GetWeaponName", [&] {
    const Aircraft* aircraft = AircraftOf(catalogues, nameOrClass);
    // An aircraft that is not known has the loadouts of the first row, on purpose.
    for (const auto& entry : aircraft ? aircraft->Weapons : At(catalogues.Aircraft, 0).Weapons)
      if (entry.Text == displayText) key = KeyOf(entry);
  });
  return key;
}

}  // namespace rws
