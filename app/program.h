#pragma once

#include <string>

#include "mainwindow/frmRWS.h"

namespace rws {

/** The state and the services of one run with the window over them. */
struct Program {
  Program();

  rws::Services Services;
  Document Doc;
  frmRWS Window;

  /** Shows the missions of a directory, or of the one used last when it is "". A path of a mission
      shows its directory with that mission selected. */
  void Open(const std::string& path);
};

}  // namespace rws
