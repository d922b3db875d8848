#pragma once

#include <functional>
#include <vector>

#include "catalogues/catalogues.h"
#include "mission/document.h"
#include "mission/update.h"
#include "services/preferences.h"
#include "services/services.h"
#include "session/history.h"

namespace rws {

struct Change;

/** What is open and all that works on it. `main` owns it and hands it on; a test starts from a new
    one. */
struct Session {
  rws::Services Services;
  Document Doc;
  Preferences Prefs;
  Catalogues Tables;

  /** What has been done, and what is unsaved. */
  rws::History History;

  /** Asks what becomes of lines that an Update would change beside the edits; without it they are
      written anew. */
  AskUntouched AskLines;

  /** Are told of every change of a record, when the history has it. */
  std::vector<std::function<void(const Change&)>> Listeners;
  /** How many calls of `Show` and of `Edit` are under way. */
  int Showing = 0, Editing = 0;
};

}  // namespace rws
