#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "catalogues/catalogues.h"
#include "mission/document.h"
#include "mission/line_array.h"
#include "services/services.h"

/** The loadouts of each aircraft: the user sees a display text, a mission stores a key. */
namespace rws {

/** Reads the loadout table. Without it the program cannot run: a missing one is told and ends the
    program. False if it was not read, logged if it could not be. */
bool LoadWeaponsFile(Document& doc, const Services& services, LineArray& file);

/** The two that every aircraft has: the first and the last. */
std::vector<Loadout> DefaultLoadouts();

/** Builds the entries of one aircraft: the default, its block of the lines of
    the loadout table, the empty loadout. A block begins at the first line that holds the class
   anywhere, so that longer class names must stand first, and ends before a line that holds "none".
   The last line begins no block. */
void GetWeapons(const LineArray& file, std::string_view aircraftClass,
                std::vector<Loadout>& weapons);

/** What the loadout list shows. `Tag` tells for which aircraft. */
struct WeaponList {
  std::string Tag;
  std::vector<std::string> Rows;
};

/** The loadout list of an aircraft, given by name or class. An unknown one has "Default" alone, and
    the text given as tag, so that no other aircraft learns its keys. */
WeaponList MakeWeaponList(const Catalogues& catalogues, std::string_view nameOrClass);

struct ShownWeapon {
  std::string Text = "Default";
  /** The key was new: the list needs a row of this text before its last one. */
  bool Learnt = false;
};

/** Display text of a loadout key, in any letter case, of the aircraft whose name or class is
   `tag`. A key that the table lacks is its own text and is learnt for the rest of the run.
   "Default", logged, for an aircraft that is not known. */
ShownWeapon DisplayWeps(Catalogues& catalogues, const Services& services, std::string_view tag,
                        std::string_view key);

/** Key of a display text of an aircraft, given by its exact name or class; an unknown one counts as
    the first of the table. The last entry with that text wins; "" when there is none. */
std::string GetWeaponName(const Catalogues& catalogues, const Services& services,
                          std::string_view nameOrClass, std::string_view displayText);

}  // namespace rws
