#pragma once

#include "library/edit_many.h"
#include "session/session.h"

/** "Edit Many Missions": edits of many files by the window, which can be undone. */
namespace rws {

/** Missions that can be edited together. */
struct EditManyScope {
  std::string Caption;  // UTF-8, without their number
  std::vector<std::string> Paths;
};

/** What edits lean on in this session; the lines that are not edited are kept unless the user has
    chosen to have missions made anew. */
EditContext EditContextOf(const Session& session);

/** Hooks that leave missions with unsaved edits out, and tell `going`. */
EditHooks EditHooksOf(const Session& session, TellWork going);

/** Writes the missions of a plan, with backups as preferred, and makes one step of the history of
    it. What stood in each file is kept before it is written; one that cannot be kept is left out.
    Missions that are in memory are read anew. Undone, each file becomes what it was, unless it has
    changed since. */
EditReport ApplyAsStep(Session& session, const EditContext& context, const EditPlan& plan,
                       TellWork going);

}  // namespace rws
