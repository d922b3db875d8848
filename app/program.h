#pragma once

#include <string>

#include "mainwindow/frmRWS.h"

namespace rws {

/** The session of one run with the window over them. */
struct Program {
  Program();

  rws::Session Session;
  frmRWS Window;
};

/** What stands behind the program's name on its command line. */
std::string CommandLine();

}  // namespace rws
