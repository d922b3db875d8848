#pragma once

#include <string>
#include <vector>

#include "cli/cli_services.h"

namespace rws {

struct FindOptions {
  std::vector<std::string> Folders;
  std::string Where;
  bool Recursive = false;
  std::string Format = "table";
};

/** Prints the missions of folders for which a query holds, sorted by their paths. Gives the exit
    code: 1 where a folder or a mission could not be read, which hides no other. */
int Find(const Services& services, const FindOptions& find);

}  // namespace rws
