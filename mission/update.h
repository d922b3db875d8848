#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "mission/document.h"
#include "mission/writer.h"
#include "services/preferences.h"
#include "services/services.h"

namespace rws {

/** True if the working copy of a mission differs from its shadow. Coordinates, types and kept lines
    of waypoints and the aircraft and places of home bases take no part. A working copy that holds a
    flight, waypoint, home base or line more than the shadow counts as unchanged, on purpose: the
    commands that add one add it to the shadow too. */
bool MissionChanged(const Document& doc, std::size_t mission);

/** Lets the user choose what becomes of the lines of missions, by their full paths, that were not
    edited, since writing them anew would change what they mean. Nothing when that is cancelled. */
using AskUntouched =
    std::function<std::optional<UntouchedLines>(const std::vector<std::string>& paths)>;

/** What an Update asks of those who run it; any of them may be missing. */
struct UpdateHooks {
  /** Called after each mission that was written. */
  std::function<void(std::size_t mission)> Written;
  /** The mission as it was read, with what showing it has changed since. */
  std::function<Mission(std::size_t mission)> Saved;
  AskUntouched Ask;
};

/** Asks about those of the missions that have a question of their own still open; false if the user
    has cancelled. The choice for each of them holds for the run. */
bool AskAboutLines(Document& doc, const Services& services, const ShownValues& shown,
                   const std::vector<std::size_t>& missions, const AskUntouched& ask);

/** Writes every modified mission. One whose file another program has changed since it was read is
    only replaced when the user agrees, and what stood there is kept among the backups then, in any
    case; No counts as a failure that has been told. Each that cannot be written is told to the
   user, counts as saved until its next edit, and the rest is still attempted; only a mission that
   could not be restored either ends the run. `written` is called after each that was written. True
   if all were. */
bool UpdateChanges(Document& doc, const Services& services, const Preferences& prefs,
                   const ShownValues& shown, const UpdateHooks& hooks = {});

/** Writes one mission in the same way, modified or not. A file that has gone is simply written:
   there is nothing then to be copied or kept. True if it was written; else its edits live in memory
   only, and the user has been told why. The Update button stays as it is. */
bool SaveMission(Document& doc, const Services& services, const Preferences& prefs,
                 const ShownValues& shown, std::size_t mission, const UpdateHooks& hooks = {});

enum class LeaveBy { Mouse, Key };

/** Settles unsaved changes of the current mission, by `SavePromptMode`, when another is about to be
    shown. `clickUpdate` runs the Update button and tells whether all was written. False if the
    mission must not be left. */
bool WarnSave(Document& doc, const Services& services, const Preferences& prefs, LeaveBy by,
              const std::function<bool()>& clickUpdate);

/** True if edits of any mission live in memory only, also those that an Update failed to write,
    which for all else count as saved. */
bool IsAnyPending(const Document& doc);

/** Settles all of these before files are changed and read anew, as leaving a mission by the mouse
    does. False if that was cancelled or a mission could not be written. */
bool SettlePending(Document& doc, const Services& services, const Preferences& prefs,
                   const std::function<bool()>& clickUpdate);

/** Drops the edits of a mission. Its record becomes unread, so that the file's own state returns
   when it is shown next; the shadow may hold records that were added since. */
void DropEdits(Document& doc, std::size_t mission);

}  // namespace rws
