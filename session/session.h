#pragma once

#include "catalogues/catalogues.h"
#include "mission/document.h"
#include "services/preferences.h"
#include "services/services.h"

namespace rws {

/** What is open and all that works on it. `main` owns it and hands it on; a test starts from a new
    one. */
struct Session {
  rws::Services Services;
  Document Doc;
  Preferences Prefs;
  Catalogues Tables;
};

}  // namespace rws
