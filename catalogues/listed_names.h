#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "catalogues/catalogues.h"
#include "mission/document.h"
#include "services/services.h"

/** What the lists of the player's own game tell. Texts are UTF-8; what a list does not tell is "".
 */
namespace rws {

enum class ListedArmy : std::uint8_t { None, Red, Blue };

struct ListedLoadout {
  std::string Key, Text;
};

struct ListedAircraft {
  std::string Key;    // as home bases and folders of skins spell it
  std::string Class;  // without "air."
  std::string Name;
  ListedArmy Army = ListedArmy::None;
  std::string DefaultCode;                   // of a regiment; "" where none is told
  std::vector<ListedLoadout> Loadouts = {};  // in the order of the texts, "default" and "none" not
};

struct ListedMap {
  std::string Path, Name;
};

struct ListedRegiment {
  std::string Code, Name, Info;
  /** Two letters each, "" where no open file tells: the air force ("un"), and the country that it
      counts as ("us"). */
  std::string Branch, Country;
  ListedArmy Army = ListedArmy::None;
};

struct ListedParked {
  std::string Key, Class;  // without "vehicles.planes.Plane$"
};

/** A name of a country or an air force. */
struct ListedCountry {
  std::string Code, Name;
};

struct ListedNames {
  std::vector<ListedAircraft> Aircraft;  // in the order of the game
  std::vector<ListedMap> Maps;
  std::vector<ListedRegiment> Regiments;  // red, blue, then those of no army
  std::vector<ListedParked> Parked;
  std::vector<ListedCountry> Countries;
};

/** Whether aircraft that only the lists know may be flown. */
enum class Unlisted : bool { NotFlyable, Flyable };

/** Puts the lists in place of the tables that were read before. What they tell wins; what they
    cannot tell of a class comes from its row of the table: flyable, nose art, companion and those
    loadouts that have no text. An empty list changes nothing. Names are made unique, letters that
    mission text lacks become base letters, and what cannot be spelled in it shows its key. */
void ApplyListedNames(Document& doc, Catalogues& catalogues, const Services& services,
                      const ListedNames& names, Unlisted unlisted);

}  // namespace rws
