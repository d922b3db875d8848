#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "services/code_page.h"

/** The encodings of the data tables. */
namespace rws {

/** The text of a data table in the page of mission text. A table that is byte for byte one that the
    program is shipped with is Windows-1252 on every system, one that begins with the UTF-8 mark is
    UTF-8, any other is in the page already. A letter that the page lacks becomes its base letter,
    any other character that it lacks a "?". No comma comes or goes. */
std::string TableText(const CodePage& page, std::string bytes);

/** A UTF-8 text in the page of mission text, with base letters for those that it lacks; nothing
   when one has none. */
std::optional<std::string> TextInPage(const CodePage& page, std::string_view utf8);

}  // namespace rws
