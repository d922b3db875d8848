#pragma once

#include <optional>
#include <string>

#include "mission/document.h"
#include "services/services.h"

namespace rws {

/** "RWS Backup", which is made when it is not there. */
std::string BackupFolder(const Services& services);

/** Path of a file's next backup in "RWS Backup", which is made when it is not there. The first one
    keeps the plain name for good; later ones carry their time. */
std::string BackupPath(const Services& services, const std::string& fileName);

/** How a mission is written. */
struct WriteRules {
  bool Backup = true;
  /** Where the backup goes, a folder that is there; "" for "RWS Backup". */
  std::string BackupFolder = {};
  /** What the file must still hold; nothing for whatever it holds. */
  std::optional<std::string> Expected = {};
};

/** Puts a mission's new lines on disk. In this order: a note that tells the mission and a copy of
   it in "$$$TEMP"; with backups on, the old file linked or copied into "RWS Backup"; the new file
    written beside, taking the mission's name when it is whole; copy and note deleted. Each step is
   on disk before the next begins, and at every moment the mission's path holds the old file or the
   new one, whole. With backups off a read-only mission is a failure. The new file has the access
   rights of the old one. Programs that share `AppPath` write one after the other; who waits too
   long for another has failed and touched nothing. A failure is logged and the copy moved back, or
   deleted where the mission still stands as it was; false then, and `reason` tells why. Where
   another file stands at the mission's path that move is refused, since nothing is ever replaced by
   it: a box tells where the good copy lies and the fault goes up to the caller. */
bool WriteMissionFile(const Services& services, const Mission& mission, const LineArray& lines,
                      const WriteRules& rules, std::string* reason = nullptr);
inline bool WriteMissionFile(const Services& services, const Mission& mission,
                             const LineArray& lines, bool backup, std::string* reason = nullptr) {
  return WriteMissionFile(services, mission, lines, WriteRules{backup}, reason);
}

/** Writes the squadron stems of a chosen mission's `[Wing]` list to "sq.txt" in `AppPath`, one a
    line, and closes the main window. No control reaches it. */
void GetSqFile(Document& doc, const Services& services);

}  // namespace rws
