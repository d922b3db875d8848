#pragma once

#include <string>
#include <vector>

#include "session/session.h"

namespace rws {

/** What a look at the folder has found. */
struct Relisted {
  /** Missions have come, or gone. */
  bool Changed = false;
  /** Missions whose file has gone, but not their unsaved edits; by index. */
  std::vector<std::size_t> Gone;
};

/** Lists the missions of the folder anew and keeps what is in memory: records follow their files.
    A mission that has gone leaves the list, unless it has unsaved edits or is one of `stay`. The
   current mission stays the current one; when it has gone, the one at its place is. */
Relisted RelistFolder(Session& session, const std::vector<std::string>& stay = {});

/** Opens another folder. Unsaved edits of this one stay unsaved and come back with it. */
void OpenFolderKeeping(Session& session, const std::string& folder);

}  // namespace rws
