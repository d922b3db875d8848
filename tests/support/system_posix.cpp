#include <sys/wait.h>

#include <cstdlib>

#include "tests/support/run_cli.h"
#include "tests/support/sandbox.h"

namespace rws::test {

const bool kPosixFiles = true;

void SetVariable(const std::string& name, const std::string& value) {
  ::setenv(name.c_str(), value.c_str(), 1);
}

int RunCli(const std::string& folder, const std::string& arguments, const std::string& program) {
  const std::string command =
      "cd \"" + folder + "\" && \"" + program + "\" " + arguments + " > out.txt 2> err.txt";
  const int status = std::system(command.c_str());
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace rws::test
