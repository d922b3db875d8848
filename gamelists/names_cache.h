#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "gamelists/game_lists.h"
#include "services/file_stamp.h"

/** What was read of a pack, kept in a file, so that a start with the same pack reads one file. */
namespace rws {

/** A file or folder that the lists depend on, as it was when they were read. */
struct SeenPath {
  std::string Path;
  FileStamp Stamp;
  bool IsFolder = false;
  bool operator==(const SeenPath&) const = default;
};

/** The lists of one reading, and what tells whether they still hold. */
struct KeptLists {
  GameLists Lists;
  std::string Language;  // in which they were read
  std::string ReadAt;    // "yyyy-mm-dd hh:mm:ss"
  std::vector<SeenPath> Seen;
};

/** The folders of a pack in which its lists may lie, and the files that were read. A list that
   comes or goes changes its folder, one that is edited changes itself. */
std::vector<SeenPath> LookAtLists(const FileSystem& files, const GameLists& lists);

/** True if nothing of `seen` has changed. */
bool IsAsSeen(const FileSystem& files, const std::vector<SeenPath>& seen);

std::string PackLists(const KeptLists& kept);
/** Nothing for bytes that are no whole lists of this version of the program. */
std::optional<KeptLists> UnpackLists(std::string_view bytes);

}  // namespace rws
