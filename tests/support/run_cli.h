#pragma once

#include <gtest/gtest.h>

#include <string>

#include "services/paths.h"
#include "services/text.h"
#include "tests/support/places.h"
#include "tests/support/sandbox.h"

namespace rws::test {

/** Runs the `rws-cli` that was built with the tests, or another copy of it, in `folder`, where its
   output goes to "out.txt" and "err.txt". An argument with a blank stands in quotes. Gives the exit
   code; -1 if the program did not end by itself. */
int RunCli(const std::string& folder, const std::string& arguments,
           const std::string& program = CliProgram());

/** A test that runs the tool in a folder of its own. */
class CliTest : public testing::Test {
 protected:
  /** With these arguments behind those of every run; gives the exit code. */
  int Run(const std::string& arguments) {
    const int code = RunCli(box_.Path(), always_ + arguments, program_);
    out_ = box_.Read("out.txt");
    err_ = box_.Read("err.txt");
    return code;
  }
  /** With the same separators and line ends on every system. */
  static std::string Slashed(const std::string& text) {
    return Replace(Replace(text, "\r", ""), std::string(1, kSeparator), "/");
  }

  Sandbox box_;
  std::string always_, program_ = CliProgram(), out_, err_;
};

/** Sets a variable of the environment that the programs run from now on find. */
void SetVariable(const std::string& name, const std::string& value);

}  // namespace rws::test
