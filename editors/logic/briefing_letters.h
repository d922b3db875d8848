#pragma once

#include <string>
#include <string_view>

#include "services/code_page.h"

/** How the letters of a briefing are spelled: as bytes of the code page, or as escapes "\uXXXX",
    which also spell what the page lacks. Letters are UTF-16. */
namespace rws {

/** The letters that bytes of a briefing stand for. An escape of a control character, or of half a
    letter, stays the six characters that it is. */
std::u16string BriefingLetters(const CodePage& page, std::string_view bytes);

/** The bytes of a text that was made out of `before` by editing. What was not touched keeps its
    spelling. Of the rest, letters that the page lacks or that `before` spells as escapes become
    escapes. */
std::string SpellBriefing(const CodePage& page, std::string_view before, std::u16string_view text);

}  // namespace rws
