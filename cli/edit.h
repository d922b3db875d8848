#pragma once

#include <string>
#include <vector>

#include "cli/cli_services.h"

namespace rws {

struct EditOptions {
  std::vector<std::string> Files, Sets, Removals;
  ReadAs Lines = ReadAs::Kept;
  std::string BackupFolder, Output;
  bool NoBackup = false, DryRun = false, Force = false;
};

/** Changes missions as a script asks for. Every file is read, changed and proved in memory first:
    where one of them cannot be, none is touched, and everything that is wrong is told. Gives the
    exit code. */
int Edit(const Services& services, const CliOptions& options, const EditOptions& edit);

struct DiffOptions {
  std::string File;
  ReadAs Lines = ReadAs::Kept;
};

/** Prints what an Update without an edit would change; the exit code is that of `diff`: 0 for
    nothing, 1 for something, 2 for trouble. */
int Diff(const Services& services, const CliOptions& options, const DiffOptions& diff);

}  // namespace rws
