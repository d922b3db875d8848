#pragma once

#include <optional>
#include <string>

#include "mission/backup_index.h"
#include "mission/line_diff.h"
#include "mission/records.h"
#include "services/preferences.h"
#include "services/services.h"
#include "session/session.h"

/** What "Restore a Backup" shows and does. */
namespace rws {

/** The bytes of a mission or of a backup. A failure is a fault, as is more than a mission can be.
 */
std::string ReadMissionBytes(const Services& services, const std::string& path);

/** The same for the mission as it stands on disk; nothing where it has gone. */
std::optional<std::string> ReadMissionNow(const Services& services, const std::string& missionPath);

/** Where a backup is from, for a cell of the list: "this mission", "some folder", or the folder. */
std::string OriginText(const Backup& backup);

/** When a text was last changed, for the user. */
std::string TimeText(const FileStamp& stamp);

/** Gives a mission the text of a backup, as an Update would write it, keeping what stands there
    among the backups also where those are switched off. A mission that has gone is simply written.
    Tells the user, in the status bar or, when it failed, in a box with the reason. True if the text
    of the backup stands there now, also when something behind that has failed; else what stood
    there still does. */
bool RestoreBackup(const Services& services, const Preferences& prefs, const Mission& mission,
                   const std::string& backupPath);

/** The same for a mission of the session, by its full path, as one step of the history. The mission
    is read anew. False if there is nothing new to be shown. */
bool RestoreAsStep(Session& session, const std::string& path, const std::string& backupPath);

}  // namespace rws
