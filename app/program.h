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

/** The answer to "--help" or "--version", to be printed before any window; "" for anything else. */
std::string AnswerTo(int argc, char** argv);

}  // namespace rws
