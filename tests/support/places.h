#pragma once

#include <string>

namespace rws::test {

/** Top of the sources that the tests were built from. */
std::string SourceFolder();
/** The `rws-cli` that was built with them. */
std::string CliProgram();

}  // namespace rws::test
