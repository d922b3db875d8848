#pragma once

#include <string>
#include <vector>

#include "services/services.h"

/** Where a game's own lists lie as open files: below the folders of its pack of mods, of which the
    game takes each file from the first folder that has it. */
namespace rws {

/** A pack that is, or may be, switched on. */
struct GamePack {
  std::string Name;     // as the game's settings call it, else its folder
  std::string Folders;  // "#UP#", "MODS, FILES"
  /** Full paths; the first that has a file wins. */
  std::vector<std::string> Roots = {};
};

struct FoundPacks {
  /** Several only where the game does not tell which is on: then the player must choose. */
  std::vector<GamePack> Packs;
  std::string Settings;  // the file that tells; "" for none
  /** Why something could not be looked at, UTF-8. */
  std::vector<std::string> Troubles;
};

/** The packs of a game. With "il2fb.ini" that which it switches on, none for a game without; else
    those whose folders lie there. Nothing fails: what cannot be read is told. */
FoundPacks FindPacks(const Services& services, const std::string& gamePath);

}  // namespace rws
