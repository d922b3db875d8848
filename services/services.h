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
  /** Tells runs with settings of their own from others; "" for the usual ones. */
  std::string Instance;
  /** The executable's own folder. */
  std::string ProgramPath;
  /** The executable's file name. */
  std::string ProgramName;
  /** The maker's web site as scheme and host, "https://host", that tells the latest version; ""
      when this build knows none. */
  std::string UpdateSite;
  /** Takes the place of the log file when set. */
  std::function<void(const std::string& line)> LogSink;
};

/** Path of a data table, or of the help: the user's own in `AppPath` when it is there, else the one
    that came with the program. */
std::string DataFile(const Services& services, const std::string& name);

/** Path of the one that came with the program: beside it, else in its shared folder. */
std::string ShippedFile(const Services& services, const std::string& name);

/** Where an installed program has its tables, seen from the executable's folder. */
std::string SharedFolder(const std::string& programPath);

}  // namespace rws
