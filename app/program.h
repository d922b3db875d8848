#pragma once

#include <string>

#include "mainwindow/frmRWS.h"

namespace rws {

/** The state and the services of one run with the window over them. */
struct Program {
  Program();

  rws::Services Services;
  Document Doc;
  Catalogues Tables;
  RunState Run;
  frmRWS Window;
};

/** What stands behind the program's name on its command line. */
std::string CommandLine();

}  // namespace rws
