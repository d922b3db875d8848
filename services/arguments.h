#pragma once

#include <string>
#include <vector>

namespace rws {

/** What the program was called with, its own name first, in the encoding of paths. */
std::vector<std::string> ProgramArguments(int argc, char** argv);

/** Whether the shell puts the names of files in place of a pattern before it calls a program. */
extern const bool kShellExpands;

/** From now on the bytes of the standard output and of what is complained about are just those that
    are written; a console takes them for UTF-8. */
void WriteRawOutput();

}  // namespace rws
