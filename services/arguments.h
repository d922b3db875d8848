#pragma once

#include <string>
#include <vector>

namespace rws {

/** What the program was called with, its own name first, in the encoding of paths. */
std::vector<std::string> ProgramArguments(int argc, char** argv);

}  // namespace rws
