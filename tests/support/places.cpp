#include "tests/support/places.h"

namespace rws::test {

std::string SourceFolder() { return RWS_SOURCE_DIR; }

std::string CliProgram() { return RWS_CLI; }

}  // namespace rws::test
