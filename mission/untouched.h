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

}  // namespace rws
