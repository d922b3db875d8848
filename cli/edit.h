#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/cli_services.h"
#include "values/mission_edit.h"

namespace rws {

struct EditOptions {
  std::vector<std::string> Files, Sets, Removals;
  ReadAs Lines = ReadAs::Kept;
  std::string BackupFolder, Output;
  bool NoBackup = false, DryRun = false, Force = false;
  /** With a query the files are folders, of whose missions those are meant for which it holds. */
  std::optional<std::string> Where;
  bool Recursive = false;
};

/** What is to be changed; nothing where that cannot be understood, which has been told. */
std::optional<EditOrder> ReadOrder(const Services& services, const EditOptions& edit);
/** The tables that an order needs. They take most of the time of a run. */
Catalogues TablesFor(const Services& services, const CliOptions& options, const EditOptions& edit,
                     const EditOrder& order);
/** Makes the folder for backups that the user has named; a fault where that cannot be used. */
void MakeBackupFolder(const Services& services, const std::string& folder);

/** Changes missions as a script asks for. Every file is read, changed and proved in memory first:
    where one of them cannot be, none is touched, and everything that is wrong is told. Gives the
    exit code. */
int Edit(const Services& services, const CliOptions& options, const EditOptions& edit);

/** The same for the missions that a query finds. One that cannot be changed is left out and named,
    and the exit code tells it; the others are changed. */
int EditFound(const Services& services, const CliOptions& options, const EditOptions& edit);

struct DiffOptions {
  std::string File;
  ReadAs Lines = ReadAs::Kept;
};

/** Prints what an Update without an edit would change; the exit code is that of `diff`: 0 for
    nothing, 1 for something, 2 for trouble. */
int Diff(const Services& services, const CliOptions& options, const DiffOptions& diff);

}  // namespace rws
