#pragma once

#include <string>
#include <string_view>

/** Keys and values as the settings' file spells them, which is how `QSettings` does: files of
   either are read by both. */
namespace rws {

/** A path of names joined by "\", UTF-8, each odd character of which becomes "%" and its number. */
std::string EscapedKey(std::string_view path);

/** A text as a value of one line. One that is no UTF-8 is spelled byte by byte. */
std::string EscapedValue(std::string_view text);

/** The text of a value. Parts that only a comma parts are joined by ", "; what is no escape stands
    for itself. */
std::string UnescapedValue(std::string_view value);

}  // namespace rws
