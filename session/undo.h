#pragma once

#include <string>
#include <vector>

#include "session/session.h"

namespace rws {

/** What the window has to do when a step has been undone or redone. */
struct UndoResult {
  /** False if nothing was done at all; `Reason` tells why. */
  bool Done = false;
  std::string Reason;
  /** Of a step whose files are apart: why some of them were left as they are. */
  std::vector<std::string> LeftOut;
  /** Files have come, gone or other names: the folder must be listed anew. */
  bool Files = false;
  /** Full path of the mission where it happened, and its flight; "" for none. */
  std::string Mission;
  int Flight = 0;
};

/** Title of the step that `UndoStep` or `RedoStep` would take; "" for none. */
std::string UndoTitle(const Session& session);
std::string RedoTitle(const Session& session);

/** Takes the last step back, or does it again: records of both arrays and files. Where something on
    disk has changed since, nothing is done at all. The missions must be listed: a step of another
    folder needs that one opened first, `UndoFolder` or `RedoFolder`. */
UndoResult UndoStep(Session& session);
UndoResult RedoStep(Session& session);

/** Folder in which the step happened; "" for none. */
std::string UndoFolder(const Session& session);
std::string RedoFolder(const Session& session);

/** Gives up the step that would be undone next, so that those before it can be. Its files stay as
    they are. */
void SkipStep(Session& session);

}  // namespace rws
