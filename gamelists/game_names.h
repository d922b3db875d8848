#pragma once

#include <memory>
#include <string>
#include <vector>

#include "catalogues/catalogues.h"
#include "gamelists/names_cache.h"
#include "mission/document.h"
#include "services/settings.h"

/** The names of the player's own game: where they come from, and into the tables with them. */
namespace rws {

/** What the user has chosen. */
struct NameChoices {
  bool UseLists = true;
  std::string Pack;      // its folders, "#UP#", where the game does not tell which is on
  std::string Language;  // "" for that of the game
  /** Whether aircraft that only the lists know may be flown. */
  bool UnlistedFlyable = true;

  bool operator==(const NameChoices&) const = default;
};

NameChoices ReadNameChoices(const Settings& settings);
void WriteNameChoices(const Settings& settings, const NameChoices& choices);

/** Where the names come from. Without lists, those of the tables. */
struct GameNames {
  std::shared_ptr<const KeptLists> Kept;  // null without lists
  std::vector<GamePack> Packs;            // of the game
  bool MustChoose = false;                // several, and the user has chosen none
  bool IsCancelled = false;
  FileStamp Own;                      // of the file of the user's own entries
  std::vector<std::string> Troubles;  // why something could not be looked at
};

/** Whether lists that were kept will do. */
enum class ReadLists : bool { IfChanged, Anew };

/** Finds the pack that is on and reads its lists, from `keptIn` as long as nothing of them has
    changed, else from the pack, and keeps them there; "" keeps none. Nothing fails. Given up, it
    has no lists. */
GameNames FindGameNames(const Services& services, const std::string& gamePath,
                        const NameChoices& choices, const std::string& keptIn,
                        const TellWork& told = {}, ReadLists how = ReadLists::IfChanged);

/** True while a look at the disk would find what `names` has. */
bool AreCurrent(const Services& services, const std::string& gamePath, const NameChoices& choices,
                const GameNames& names);

/** Where the lists of a game are kept between two runs. */
std::string KeptListsFile(const Services& services);

/** The names of the lists, alive as long as they are needed; null without lists. */
std::shared_ptr<const ListedNames> ListedOf(const GameNames& names);

/** Puts the lists, and over them what the user has added by hand, in place of the tables, which
 * have just been read, and remembers them there. */
void ApplyGameNames(Document& doc, Catalogues& catalogues, const Services& services,
                    const GameNames& names, const NameChoices& choices);

/** "Ultrapack in #UP#: 620 aircraft, 5,541 loadouts, 243 maps, 4,180 squadrons; read 2026-11-20",
    or what is there instead. UTF-8. */
std::string NamesText(const GameNames& names, const NameChoices& choices);

}  // namespace rws
