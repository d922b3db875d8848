#pragma once

#include <string>
#include <vector>

#include "cli/cli_services.h"

namespace rws {

struct CheckOptions {
  std::vector<std::string> Paths;
  bool Recursive = false;
  std::string Format = "table";
};

/** Prints what is wrong with missions, sorted by their paths and the places there. Gives the exit
    code: 1 where a finding is an error, or a folder or a mission could not be read, which hides no
    other. */
int Check(const Services& services, const CliOptions& options, const CheckOptions& check);

}  // namespace rws
