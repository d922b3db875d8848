#pragma once

#include <string>
#include <vector>

namespace rws {

/** What the program was called with, its own name first, in the encoding of paths. */
std::vector<std::string> ProgramArguments(int argc, char** argv);

/** From now on the bytes of the standard output are just those that are written. */
void WriteRawOutput();

}  // namespace rws
