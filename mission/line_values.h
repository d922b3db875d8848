#pragma once

#include <string>
#include <string_view>

#include "mission/document.h"
#include "services/services.h"

/** Single values of mission lines. */
namespace rws {

/** Second word of a line that has exactly two; otherwise "". Strict on purpose: two blanks between
    key and value, or a value of two words, read as nothing. */
std::string GetValue(std::string_view line);

/** The first digit of the line, or -1. */
int GetNumber(std::string_view line);

/** The text before the first "," or, without one, before the first ".". */
std::string_view IntegerPart(std::string_view text);

/** A route's altitude or speed: whole number text, decimals dropped. */
std::string WholeNumberWord(std::string_view word);

/** Display name of a map path, or "". */
std::string GetMapName(const Document& doc, const Services& services, std::string_view mapPath);

/** Full path of the sound that a whole `briefSound` line names. */
std::string GetBriefSoundPath(const Document& doc, const Services& services, std::string_view line);

/** True if the line opens a section: its very first character is "[". */
inline bool IsSectionHeader(std::string_view line) { return !line.empty() && line[0] == '['; }

}  // namespace rws
