#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "catalogues/catalogues.h"
#include "services/services.h"

/** The paint schemes of an aircraft and the notes on them. Names of schemes are base names of
    files, in the system's own spelling. */
namespace rws {

struct SchemeList {
  /** Where the bitmaps lie; "" when the game has no folder for the aircraft. */
  std::string Folder;
  std::vector<std::string> Names;
};

/** The schemes of an exact class, in the order of the folder; neither the default paint, which has
    no file, nor "Void". */
SchemeList ListSchemes(const Catalogues& catalogues, std::string_view className);

/** Skinner, country and comments, in the encoding of mission text; "" for none. */
using SkinNotes = std::array<std::string, 3>;

/** Longest text of a note, in characters of the code page. */
inline constexpr std::size_t kLongestNote = 255;

/** Path of the file with the notes of an aircraft, given by its display name in the encoding of
    mission text. Characters that no file name can have become "_". */
std::string SideFile(const Services& services, std::string_view imagesPath,
                     std::string_view planeName);

/** The notes on one scheme; a file that is not there has none. One that cannot be read is a fault.
 */
SkinNotes ReadSkinNotes(const Services& services, const std::string& file, std::string_view scheme);

/** Stores the notes on one scheme, all or none. A line that reads as its note already stays as it
    is, as do all other lines. A file that cannot be read or written is a fault. */
void SaveSkinNotes(const Services& services, const std::string& file, std::string_view scheme,
                   const SkinNotes& notes);

}  // namespace rws
