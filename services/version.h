#pragma once

#include <string>

namespace rws {

/** This program's version: major, minor and revision as plain numbers, "2.0.0". */
std::string VersionText();

/** What the about box tells: what the program is, its version and who answers for it. */
std::string AboutText();

}  // namespace rws
