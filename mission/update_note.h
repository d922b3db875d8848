#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "services/services.h"

/** The copy "$$$TEMP" that an Update makes of a mission, and the note beside it that tells which
    mission it is: so that a copy that an Update left, which may be the only one, finds its way
   back.
 */
namespace rws {

inline constexpr std::string_view kCopyName = "$$$TEMP", kNoteEnding = ".note",
                                  kKeptEnding = ".kept", kLockEnding = ".lock";

/** Full path of the copy. */
std::string CopyPath(const Services& services);
/** How long an Update waits for that of another program, in milliseconds. */
inline constexpr int kLongWait = 30'000;
/** Keeps every other program out that makes such a copy in `AppPath`, or looks for one, until what
    it gives is dropped: there is one name for all. Waits so long for who has it; a `FileOpen` fault
    if that lasts. Where no lock can be made it goes without. */
std::shared_ptr<void> HoldCopy(const Services& services, int mostWait = kLongWait);

/** Path of the note of a copy. */
std::string NotePath(const std::string& copy);

struct UpdateNote {
  /** Full path of the mission. */
  std::string Mission;
  /** Checksums of the file as it was and as it is to be. */
  std::string Old, New;
};

/** Writes the note of a copy that is about to be made. It is whole and on disk afterwards. */
void WriteNote(const Services& services, const std::string& copy, const UpdateNote& note);

/** The note of a copy; nothing when there is none, or none that is whole. */
std::optional<UpdateNote> ReadNote(const Services& services, const std::string& copy);

/** Deletes the note of a copy that is gone; a failure is passed over. */
void DropNote(const Services& services, const std::string& copy);

/** Gives a copy and its note other names. The note stands beside the copy at every moment. */
void MoveWithNote(const Services& services, const std::string& copy, const std::string& to);

/** `start` + date and time + `ending`, with a number behind when something has that name. */
std::string FreeStampedName(const Services& services, const std::string& start,
                            std::string_view ending);

/** Makes each backup in a folder that is still one file with the mission, as an Update that did not
    come to its end leaves it, a file of its own: who then writes into the mission does not change
    the backup. A backup for which that fails is deleted, the mission holding the same. */
void PartFromBackups(const Services& services, const std::string& folder,
                     const std::string& mission);
/** The same for "RWS Backup". */
void PartFromBackups(const Services& services, const std::string& mission);

}  // namespace rws
