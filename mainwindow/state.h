#pragma once

#include "mission/document.h"
#include "services/services.h"

namespace rws {

/** What every part of the main window works on. `main` owns it. */
struct WindowContext {
  Document& Doc;
  rws::Services& Services;
};

}  // namespace rws
