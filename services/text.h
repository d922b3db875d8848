#pragma once

#include <string>
#include <string_view>
#include <vector>

/** Text helpers with the rules of the mission files: bytes, blanks and nothing of the locale. */
namespace rws {

/** `text` without the blanks at both ends. Only the blank counts; a tab is a letter. */
std::string_view Trim(std::string_view text);

/** Parts of `text` between every single occurrence of `separator`; two in a row yield an empty
    part, an empty text yields one empty part. The views point into `text`. */
std::vector<std::string_view> SplitAt(std::string_view text, char separator);

/** As `SplitAt`, into an array that is used again; spares the reader an allocation a line. */
void SplitInto(std::vector<std::string_view>& parts, std::string_view text, char separator);

/** `text` with every occurrence of `find` replaced; an empty `find` changes nothing. */
std::string Replace(std::string_view text, std::string_view find, std::string_view with);

/** True if `text` holds `part`, letter case being significant. */
bool Contains(std::string_view text, std::string_view part);

/** ASCII letters lowered, all other bytes kept. */
char LowerAscii(char c);

/** True if both are equal but for the case of ASCII letters. */
bool EqualNoCase(std::string_view a, std::string_view b);

/** True if `text` holds `lowerPart`, which is given in lower case, in any case of ASCII letters. */
bool ContainsNoCase(std::string_view text, std::string_view lowerPart);

/** Position of `lowerPart` in `text` from `from` on, in any case of ASCII letters; `npos` if it is
    not there. */
std::size_t FindNoCase(std::string_view text, std::string_view lowerPart, std::size_t from);

/** Wildcard test of a whole text: "*" any run, "?" one character, "#" one digit, "[list]" one
    character of a list ("[!list]" one outside it). Case-sensitive. */
bool Like(std::string_view text, std::string_view pattern);

/** `text` and `suffix` with blanks between them up to `width` bytes; joined directly when they fill
    it already. */
std::string RightJust(std::string_view text, std::string_view suffix, std::size_t width);

/** The same for the rows of the aircraft list. */
inline std::string PadName(std::string_view left, std::string_view right, std::size_t width) {
  return RightJust(left, right, width);
}

}  // namespace rws
