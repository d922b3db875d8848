#pragma once

#include <map>
#include <mutex>
#include <set>
#include <string>
#include <string_view>

#include "services/file_system.h"

namespace rws {

/** The folder of the game that a mission lies in: the nearest above it with a file "il2*.*"; "" for
    none. */
std::string GameAbove(const FileSystem& files, const std::string& missionPath);

/** What lies in the folders of the game. Each is listed once, when it is first asked for; several
    threads may ask at once. */
class GameFiles {
 public:
  /** `game` is the game of all missions; with "" each mission's own is looked for. */
  GameFiles(const FileSystem& files, std::string game);

  /** The game of the missions of a folder; "" for none. */
  std::string GameOf(const std::string& missionPath);

  enum class Has { Yes, No, Unknown };
  /** A picture in "PaintSchemes/Skins", in the folder that goes by that name without "_" and "-".
      `Unknown` where the game has no folder of skins at all. */
  Has HasSkin(const std::string& game, const std::string& folder, const std::string& file);
  /** A picture in "PaintSchemes/Pilots" or another of its folders. */
  Has HasPicture(const std::string& game, const std::string& folder, const std::string& file);
  /** A file by its path below the game's folder, in any letter case. */
  bool HasFile(const std::string& game, const std::string& path);

 private:
  struct Folder {
    bool IsThere = false;
    std::set<std::string> Files;                 // as they are compared
    std::map<std::string, std::string> Folders;  // by names as skins have them
  };

  // With the lock.
  const Folder& List(const std::string& path);
  const std::string& GameFrom(const std::string& folder);

  FileSystem files_;
  std::string game_;
  std::mutex mutex_;
  std::map<std::string, Folder> listed_;
  std::map<std::string, std::string> games_;  // by the folders above missions
  std::map<std::string, bool> known_;
};

}  // namespace rws
