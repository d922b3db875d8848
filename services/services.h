#pragma once

#include <functional>
#include <string>

#include "services/code_page.h"
#include "services/file_system.h"
#include "services/prompts.h"
#include "services/settings.h"
#include "services/shell.h"
#include "services/window_seam.h"

namespace rws {

/** Everything that the rules of the system lean on. `main` makes one; a test makes its own. */
struct Services {
  FileSystem Files;
  rws::Settings Settings;
  Prompts Ask;
  Shell System;
  WindowSeam Window;
  CodePage Page;
  /** Where log, backups and temporary copies are written. */
  std::string AppPath;
  /** The executable's own folder; tables that are not in `AppPath` are sought here. */
  std::string ProgramPath;
  /** The executable's file name. */
  std::string ProgramName;
  /** Takes the place of the log file when set. */
  std::function<void(const std::string& line)> LogSink;
};

/** Path of a data table: in `AppPath` when it is there, else beside the program. */
std::string DataFile(const Services& services, const std::string& name);

}  // namespace rws
