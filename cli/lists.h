#pragma once

#include <string>

#include "cli/cli_services.h"
#include "gamelists/game_names.h"

/** The lists of the player's own game. */
namespace rws {

struct ListsOptions {
  std::string Pack, Language, Format;
};

/** The names of the game of `--game`, else of the one above `path`; without lists when the user
    wants none, or when there are none. */
GameNames NamesFor(const Services& services, const CliOptions& options, const std::string& path);

/** Puts them in place of the tables, which have just been read. */
void ApplyNames(Document& doc, Catalogues& tables, const Services& services,
                const CliOptions& options, const std::string& path);

/** `lists`: what was found, from which file, and each line that was not understood. */
int Lists(const Services& services, const CliOptions& options, const ListsOptions& lists);

}  // namespace rws
