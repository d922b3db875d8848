#include "services/arguments.h"

namespace rws {

const bool kShellExpands = true;

std::vector<std::string> ProgramArguments(int argc, char** argv) { return {argv, argv + argc}; }

void WriteRawOutput() {}

}  // namespace rws
