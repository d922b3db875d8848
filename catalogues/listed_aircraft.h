#pragma once

#include <string>
#include <string_view>

#include "catalogues/listed_names.h"

namespace rws {

/** A UTF-8 text of a list as the name of an aircraft. */
std::string PlaneNameText(const CodePage& page, std::string_view utf8);

/** The folder of skins of a key, in the form of `SkinFolder::Folder`. */
std::string SkinFolderOf(std::string key);

/** Puts the aircraft of the lists in place of the table's, red ones first, each side in the order
   of the game, and what home bases may list. Without any nothing changes. */
void ApplyListedAircraft(Catalogues& catalogues, const Services& services, const ListedNames& names,
                         Unlisted unlisted);

}  // namespace rws
