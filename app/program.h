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

/** What stands behind the program's name on its command line, in the encoding of paths. */
std::string CommandLine(int argc, char** argv);

/** The answer to "--help" or "--version", to be printed before any window; "" for anything else. */
std::string AnswerTo(int argc, char** argv);

}  // namespace rws
