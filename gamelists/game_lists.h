#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "gamelists/game_pack.h"
#include "services/services.h"
#include "services/work.h"

/** What a pack's own lists tell of the game. Texts are UTF-8; what a list does not tell is "". */
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
  std::vector<ListedLoadout> Loadouts = {};  // in the order of the texts, "default" and "none" not
};

struct ListedMap {
  std::string Path, Name;
};

struct ListedRegiment {
  std::string Code, Name, Info;
  std::string Country;  // two letters; "" where no open file tells
  ListedArmy Army = ListedArmy::None;
};

struct ListedParked {
  std::string Key, Class;  // without "vehicles.planes.Plane$"
};

/** A file that was read. */
struct ListSource {
  std::string List;  // "aircraft", for the user
  std::string Path;
  std::size_t Entries = 0;
};

/** A line that was not understood, or a file that could not be read. */
struct ListTrouble {
  std::string Path;
  std::size_t Line = 0;  // from 1 on, 0 for the whole file
  std::string Text;
};

struct GameLists {
  GamePack Pack;
  std::vector<ListedAircraft> Aircraft;  // in the order of the game
  std::vector<ListedMap> Maps;
  std::vector<ListedRegiment> Regiments;  // red, blue, then those of no army
  std::vector<ListedParked> Parked;
  std::vector<ListSource> Sources;
  std::vector<ListTrouble> Troubles;
  bool IsCancelled = false;

  bool IsEmpty() const { return Sources.empty(); }
};

/** Reads the lists of a pack. `language` is the one of the game's settings, "us", "ru", "de"; texts
    come from its files first, then from those of no language, then from the Russian ones. Nothing
    fails: what cannot be read or understood is told. */
GameLists ReadGameLists(const Services& services, const GamePack& pack, const std::string& language,
                        const TellWork& told = {});

/** The language of the game's "conf.ini", "us" where it does not tell. */
std::string GameLanguage(const Services& services, const std::string& gamePath);

}  // namespace rws
