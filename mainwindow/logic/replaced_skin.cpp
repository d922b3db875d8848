#include "mainwindow/logic/replaced_skin.h"

#include "services/clock.h"
#include "services/paths.h"

namespace rws {

std::string KeepReplacedSkin(const Services& services, const std::string& skin) {
  const FileSystem& files = services.Files;
  if (!files.FileExists(skin)) return "";
  std::string folder = services.AppPath;
  for (const std::string& name :
       {std::string("Replaced Skins"), GetFileName(GetParentFolderName(skin))}) {
    folder = BuildPath(folder, name);
    if (!files.FolderExists(folder)) files.CreateFolder(folder);
  }
  const std::string file = GetFileName(files.Resolve(skin)), stem = GetBaseName(file);
  const std::string kept = BuildPath(folder, stem + " " + StampText(services.System.Now())),
                    ending = file.substr(stem.size());
  std::string path = kept + ending;
  for (int copy = 2; files.FileExists(path); ++copy)
    path = kept + " " + std::to_string(copy) + ending;
  files.CopyFile(skin, path);
  return path;
}

}  // namespace rws
