#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "services/clock.h"
#include "services/file_stamp.h"

namespace rws {

/** A single action on the disk, about to be taken. */
struct FileStep {
  std::string_view Action;
  const std::string& Path;
  /** What is about to be written, and the file that gets it: one beside the path until it is
      whole. For a move or a link, the new name. */
  std::string_view Bytes = {}, Into = {};
};

/** Something that is about to be done to a file. */
struct FileDeed {
  enum Kind { Write, Move, Delete };
  Kind What;
  const std::string& Path;
  /** Where a moved file will stand; else the path itself. */
  const std::string& To;
};

/** An entry of a folder. */
struct FolderEntry {
  std::string Name;
  bool IsFolder;
  /** False for a folder, and for a device or a pipe. */
  bool IsFile = true;
};

/** What becomes of a read-only file that is to be replaced or deleted. */
enum class IfReadOnly {
  /** On Windows that is refused, elsewhere it is done. */
  AsTheSystemDoes,
  AllTheSame
};

class NameIndex;

/** The only code that touches the disk. Takes "\" and "/"; finds a name in any letter case on
    systems that mind it, the exact spelling first, else the first match in sorted order. What it
    writes is flushed, file and folder, before the call returns. Every failure is a fault that names
    the file and the reason; a name that the system refuses is one before anything is touched.
    Several threads may read, list and look at once through one object that nobody changes
    meanwhile; its hooks are called in all of them. */
class FileSystem {
 public:
  /** Called before each action that changes the disk or reads a file; a test makes it throw. */
  std::function<void(const FileStep&)> BeforeStep;
  /** Called before a file is written, moved or deleted as a whole; what it gives, if anything, is
      called when that is done. */
  std::function<std::function<void()>(const FileDeed&)> OnDeed;

  /** One for other threads, which shares nothing that this one changes. */
  FileSystem ForThreads() const;

  /** Whether names that differ in letter case only are two files on this system. */
  static bool MindsCase();
  bool FileExists(const std::string& path) const;
  bool FolderExists(const std::string& path) const;
  /** The spelling on disk of the file, or folder, at `path`; "" if none stands there. */
  std::string FindFile(const std::string& path) const;
  std::string FindFolder(const std::string& path) const;
  /** True if the system says that nothing stands at `path`. What cannot be looked at may stand
   * there.
   */
  bool IsGone(const std::string& path) const;
  /** Size and time of a file, links followed; looks at it only, and never fails. */
  FileStamp Stamp(const std::string& path) const;
  /** When the file of a stamp was last changed, by the clock on the wall. */
  static DateTime LocalTime(const FileStamp& stamp);
  /** A fault, with the reason, for a file that may not be written. */
  void RequireWritable(const std::string& path) const;
  /** The spelling on disk of `path`; of parts that do not exist, the one given. */
  std::string Resolve(const std::string& path) const;
  /** The file that `path` leads to when it is a link; else its spelling on disk. */
  std::string FollowLinks(const std::string& path) const;
  /** `path` without links in any of its parts, so that one file or folder has one. */
  std::string RealPath(const std::string& path) const;
  /** The running program's own file, also when it was called through the search path or a link; ""
      where the system does not tell. */
  std::string ProgramFile() const;
  /** The folder in which programs keep what belongs to the user, "~/.local/share" or its like; ""
      where the system does not tell. */
  std::string UserDataFolder() const;
  /** `path` from the root of the file system on. */
  std::string GetAbsolutePathName(const std::string& path) const;
  /** True if both paths lead to one file, also through a link. */
  bool IsSameFile(const std::string& a, const std::string& b) const;
  /** True if files can be made in the folder. */
  bool CanWriteInto(const std::string& folder) const;

  /** Content of a file; one of more than `most` bytes is refused before it fills the memory. The
      stamp, where it is wanted, is that of the moment before. */
  std::string ReadFile(const std::string& path, std::uint64_t most = UINT64_MAX,
                       FileStamp* stamp = nullptr) const;
  /** Gives `path` the content `bytes`. They go to a file beside it, which takes the name when it is
      whole and on disk; until then the old content stands, also after a failure. Should only the
      flush of the folder fail, that is a fault although the new content stands. Access rights come
      from the old file, or from the one named. */
  void ReplaceFile(const std::string& path, std::string_view bytes,
                   const std::string& rightsFrom = "",
                   IfReadOnly readOnly = IfReadOnly::AsTheSystemDoes) const;
  /** Adds `bytes` at the end of the file, making it when there is none. Not flushed to disk. */
  void AppendToFile(const std::string& path, std::string_view bytes) const;
  /** Copies over whatever file stands at `to`, which is whole or as it was. Onto itself is refused.
   */
  void CopyFile(const std::string& from, const std::string& to) const;
  /** Gives the file the second name `to`, never over an existing file, or makes a whole copy with
      its rights and time of change where the file system refuses that. While both names lead to one
      file, who writes into it by one name changes it under the other too; `ReplaceFile` and
      `DeleteFile` part them. */
  void LinkOrCopy(const std::string& from, const std::string& to) const;
  /** Moves or renames; never over an existing file. Between file systems the source is deleted only
      when the copy is on disk. */
  void MoveFile(const std::string& from, const std::string& to) const;
  void DeleteFile(const std::string& path, IfReadOnly readOnly = IfReadOnly::AsTheSystemDoes) const;
  /** Keeps out all who ask for the same path, in other processes too, until what it gives is
      dropped or the process ends, however that comes. The path is that of a file made for this
      alone, which is deleted then. Waits so many milliseconds for another to let go; one that does
      not is a `FileOpen` fault. */
  std::shared_ptr<void> Hold(const std::string& path, int mostWait) const;
  /** Makes one folder; its parent must exist. */
  void CreateFolder(const std::string& path) const;
  /** Makes a folder, if it is not there, and those that it lies in. */
  void CreateFolders(const std::string& path) const;

  /** Files and folders of a folder, links followed, dangling ones left out; sorted without regard
      to case, ties by bytes. */
  std::vector<FolderEntry> ListFolder(const std::string& path) const;
  /** As above, but only the regular files whose name passes `wanted`; looks at nothing else. */
  std::vector<std::string> ListFileNames(
      const std::string& path, const std::function<bool(const std::string&)>& wanted) const;

 private:
  friend class KnownFolder;
  std::optional<std::string> FindEntry(const std::string& folder, std::string_view name) const;
  void Step(std::string_view action, const std::string& path, std::string_view bytes = {},
            std::string_view into = {}) const;
  std::function<void()> Announce(FileDeed::Kind what, const std::string& path,
                                 const std::string& to) const;
  void WriteBeside(const std::string& path, const std::string& beside, std::string_view bytes,
                   const std::string& rightsFrom) const;
  void WriteWhole(const std::string& target, std::string_view bytes, const std::string& rightsFrom,
                  IfReadOnly readOnly) const;
  void CopyNew(const std::string& source, const std::string& target) const;
  void SyncFolderOf(const std::string& path) const;

  /** Names of the folder that is known by heart, if one is. */
  mutable std::shared_ptr<NameIndex> known_;
};

/** While it lives, names that are not in a folder are looked for in a list that was made once and
    follows the moves of this file system, instead of in the whole folder each time: for work on
    thousands of files of one folder. Names that others make there in another letter case meanwhile
    are not found. One at a time; a folder that cannot be read is not known. */
class KnownFolder {
 public:
  KnownFolder(const FileSystem& files, const std::string& folder);
  ~KnownFolder();
  KnownFolder(const KnownFolder&) = delete;
  KnownFolder& operator=(const KnownFolder&) = delete;

 private:
  const FileSystem& files_;
};

}  // namespace rws
