#pragma once

#include <string>

#include "tests/support/places.h"

namespace rws::test {

/** Runs the `rws-cli` that was built with the tests, or another copy of it, in `folder`, where its
   output goes to "out.txt" and "err.txt". An argument with a blank stands in quotes. Gives the exit
   code; -1 if the program did not end by itself. */
int RunCli(const std::string& folder, const std::string& arguments,
           const std::string& program = CliProgram());

/** Sets a variable of the environment that the programs run from now on find. */
void SetVariable(const std::string& name, const std::string& value);

}  // namespace rws::test
