#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "catalogues/listed_names.h"
#include "gamelists/game_pack.h"
#include "services/services.h"
#include "services/work.h"

/** What a pack's own lists tell of the game. Texts are UTF-8; what a list does not tell is "". */
namespace rws {

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
  ListedNames Names;
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
