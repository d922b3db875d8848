#include "tests/support/desk.h"

#include <algorithm>

#include "mission/reader.h"
#include "services/text.h"

namespace rws::test {

Desk::Desk(const std::string& files, const std::string& folder) {
  Box.MakeFolder(folder);
  Box.MakeFolder("out");
  for (const auto file : SplitAt(files, '|'))
    if (!file.empty()) Box.Write(file.substr(0, file.find('=')), file.substr(file.find('=') + 1));
  World.Doc.MissionDir = Box.Path(folder);
  GetMissionFiles(World.Doc, World.Services);
  LoadMissionArray(World.Doc, World.Services);
  World.Doc.MissionShadow = World.Doc.Missions;
}

std::string Desk::Disk(const std::string& folder) const {
  std::vector<std::string> files;
  for (const auto& entry : FileSystem().ListFolder(Box.Path(folder)))
    files.push_back(entry.Name + "=" + Box.Read(folder + "/" + entry.Name));
  std::sort(files.begin(), files.end());
  return Joined(files);
}

}  // namespace rws::test
