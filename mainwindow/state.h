#pragma once

#include "catalogues/catalogues.h"
#include "mainwindow/logic/start_up.h"
#include "mission/document.h"
#include "services/services.h"

namespace rws {

/** What every part of the main window works on. `main` owns it. */
struct WindowContext {
  Document& Doc;
  Catalogues& Tables;
  RunState& Run;
  rws::Services& Services;
};

}  // namespace rws
