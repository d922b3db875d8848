#pragma once

#include <string>

#include "mission/document.h"

namespace rws {

/** Full path of a mission's file. */
std::string PathOf(const Mission& mission);

/** The choice that holds for the lines of a mission that the user does not edit. */
UntouchedLines UntouchedRule(const Document& doc, const Mission& mission);

/** True if an Update of the mission is to keep such lines: by choice, or without one as it was
 * read.
 */
bool WillKeepLines(const Document& doc, const Mission& mission);

inline constexpr char kNoMission[] = "this is no mission: it has neither [MAIN] nor [Wing]";

/** True if a text can be a mission whose lines are kept: where none of its sections is there, what
   is added would stand at a place of chance, such as ahead of the mark of another encoding. */
bool HoldsMission(const LineArray& lines);

/** True if a file's bytes are those that the mission was read from, or last written as; line ends
    that are repaired at reading make no difference. */
bool IsAsRead(const Mission& mission, std::string bytes);

}  // namespace rws
