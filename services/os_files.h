#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "services/clock.h"
#include "services/file_stamp.h"

/** The operating system's file calls, in one file for each system. Paths are exact spellings; every
    failure is a fault that names the path and the system's reason. Only `FileSystem` uses these. */
namespace rws::os {

/** Whether names that differ in letter case only are two files. */
extern const bool kMindsCase;

enum class EntryKind { File, Folder, Link, Other };

struct Entry {
  std::string Name;
  EntryKind Kind;
};

/** Kind of what stands at `path`, links followed; false if nothing does or the link dangles. */
bool Stat(const std::string& path, EntryKind& kind);
/** True if the system says that nothing stands at `path`; false also when it cannot tell. */
bool IsGone(const std::string& path);
/** Size and time of what stands at `path`, links followed. */
FileStamp Stamp(const std::string& path);
/** A time in nanoseconds since 1970 as the clock on the wall showed it. */
DateTime LocalTime(std::int64_t nanoseconds);
/** True for a file that nobody may write, or not this user. */
bool IsReadOnly(const std::string& path);
/** True if something stands at `path`, a dangling link included. */
bool Exists(const std::string& path);
/** `path` with its last name as the disk spells it; something must stand there. */
std::string Spelling(const std::string& path);
/** True if both paths lead to the same file on disk. */
bool SameFile(const std::string& a, const std::string& b);
/** The file that a link leads to in the end; any other path as it is. */
std::string FollowLinks(const std::string& path);
bool CanWriteInto(const std::string& folder);

/** A file of more than `most` bytes is a fault. Gives the file's stamp, unless that is null. */
std::string ReadFile(const std::string& path, std::uint64_t most, FileStamp* stamp);
std::vector<Entry> ListFolder(const std::string& path);

/** A file open for writing. The destructor closes it without a word; `Sync` and `Close` report. */
class OutputFile {
 public:
  virtual ~OutputFile() = default;
  virtual void Write(std::string_view bytes) = 0;
  virtual void Sync() = 0;
  virtual void Close() = 0;
};

enum class OpenMode { CreateNew, Append };
/** Faults name `shownAs`, which for a file written beside another is that other one. */
std::unique_ptr<OutputFile> OpenOutput(const std::string& path, OpenMode mode,
                                       const std::string& shownAs);

/** Gives a new file the access rights of the one that it is to replace or copies. */
void CopyMode(const std::string& from, const std::string& to);
/** Gives a copy the time of the last change of the file that it copies, where that can be done. */
void CopyTime(const std::string& from, const std::string& to);
/** Flushes the folder that `path` lies in, so that a name made or removed there survives a power
 * cut. */
void SyncFolderOf(const std::string& path);
/** Renames over whatever stands at `to`, in one step. Some systems refuse to replace a read-only
    file so; with `evenReadOnly` they do not. */
void RenameOver(const std::string& from, const std::string& to, bool evenReadOnly);
/** Renames; a file at `to` is a fault, also where the system's own call would replace it. An
    `OtherDisk` fault, with nothing done, when the two lie on different file systems. */
void RenameNew(const std::string& from, const std::string& to);
/** Gives the file at `from` the second name `to`, in one step; a file at `to` is a fault, and so is
    a file system that knows no second names. */
void Link(const std::string& from, const std::string& to);
/** Some systems refuse to delete a read-only file; with `evenReadOnly` they do not. */
void DeleteFile(const std::string& path, bool evenReadOnly);

/** A file that one holds at a time, in any process. The system lets go of it when the process ends,
    however that comes; who lets go of it deletes it. */
class HeldFile {
 public:
  virtual ~HeldFile() = default;
};
/** Null while another holds it. Where the file system knows no locks nobody is kept out. */
std::unique_ptr<HeldFile> TryHold(const std::string& path);
/** Waits so long before the next try. */
void Pause(int milliseconds);

void CreateFolder(const std::string& path);
/** The folder in which programs keep what belongs to the user; "" where the system does not tell.
 */
std::string UserDataFolder();
/** The running program's own file, links followed; "" where the system does not tell. */
std::string ProgramFile();
/** `path` from the root on, "." and ".." taken out by spelling alone. */
std::string AbsolutePath(const std::string& path);

}  // namespace rws::os
