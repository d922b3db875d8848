#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "services/file_stamp.h"
#include "services/services.h"

/** The folder "RWS Backup": which mission each of its files is of. A backup bears the file name of
    its mission alone, so that missions of one name in two folders share it; a list beside the
    backups notes the whole path that each came from. */
namespace rws {

/** The list of origins. A line that was cut off as it was written is passed over, and so is one
    that was changed since: each has a checksum. Of several for a backup the last one counts. */
std::string BackupOriginsPath(const Services& services);

/** Notes of which mission a backup is; both paths in any spelling. A failure is logged and leaves
    the backup without a note: nobody's work may end for that. */
void NoteBackup(const Services& services, const std::string& backupPath,
                const std::string& missionPath);

enum class BackupOrigin {
  ThisMission,
  Unknown,  // made before origins were noted, or its note was lost
  OtherFolder
};

/** A backup whose name fits a mission. */
struct Backup {
  std::string Path;
  BackupOrigin Origin = BackupOrigin::Unknown;
  /** Path of the mission that it was made of; "" where unknown. */
  std::string OriginPath;
  /** Size, and when its text was last changed. */
  FileStamp Stamp;
};

/** All backups with the file name of a mission, which need not stand on disk any more: those that
    are or may be its own, newest first, then those of missions of that name in other folders.
    Letter case counts where it does for files. An unreadable folder is a fault; an unreadable list
    of origins is logged, and all origins are unknown. */
std::vector<Backup> ListBackups(const Services& services, const std::string& missionPath);

/** Deletes the oldest backups of a mission above the `most` last ones; 0 keeps all. Only those
    count that carry a time in their name and are noted as made of the file at this very path: the
    first one stays for good, and so does whatever may be another mission's. Oldest is what was
    noted first, whatever the clock said. A failure is logged and leaves the backup. */
void LimitBackups(const Services& services, const std::string& missionPath, int most);

/** Bytes of all files in the folder; 0 where there is none. */
std::uint64_t BackupSpaceUsed(const Services& services);

}  // namespace rws
