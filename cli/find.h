#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli/cli_services.h"
#include "library/index.h"

namespace rws {

struct FindOptions {
  std::vector<std::string> Folders;
  std::string Where;
  bool Recursive = false;
  std::string Format = "table";
};

/** Missions of folders for which a query holds. */
struct FoundMissions {
  std::unique_ptr<MissionIndex> Index;
  std::vector<std::size_t> Rows;  // sorted by their paths
  /** False where a folder or a mission could not be read, which has been told. */
  bool IsWhole = true;
};

/** Nothing for a query that cannot be understood, which has been told. */
std::optional<FoundMissions> FindMissions(const Services& services, const CliOptions& options,
                                          const FindOptions& find);

/** Prints the missions of folders for which a query holds, sorted by their paths. Gives the exit
    code: 1 where a folder or a mission could not be read, which hides no other. */
int Find(const Services& services, const CliOptions& options, const FindOptions& find);

}  // namespace rws
