#include "tools/logic/folder_tools.h"

#include <algorithm>

#include "services/notice.h"
#include "services/paths.h"
#include "services/pickers.h"
#include "tools/logic/mission_files.h"

namespace rws {

namespace {

/** The briefing of a chosen mission, sought in lower case as well: "A.MIS" has one here. */
std::string BriefingToCopy(const Services& services, const std::string& mission) {
  const std::string own = ExistingProperties(services, mission);
  if (!own.empty()) return own;
  const std::string lower = StripFileName(mission) + FoldName(GetFileName(mission));
  // Where letter case counts that one may belong to another mission.
  return services.Files.IsSameFile(lower, mission) ? ExistingProperties(services, lower) : "";
}

void CopyNew(const Services& services, const std::string& file, const std::string& folder) {
  const std::string target = BuildPath(folder, GetFileName(services.Files.Resolve(file)));
  if (services.Files.FileExists(target)) throw FileExistsFault(services.Files.Resolve(target));
  services.Files.CopyFile(file, target);
}

void CopyMission(const Services& services, const std::string& mission, const std::string& folder) {
  const std::string briefing = BriefingToCopy(services, mission);
  CopyNew(services, mission, folder);
  if (!briefing.empty()) CopyNew(services, briefing, folder);
}

}  // namespace

bool FileDone(const Services& services, const ToolSeam& seam, const WorkStep& step) {
  const bool goOn = !seam.Told || seam.Told(step);
  if (services.System.PumpEvents) services.System.PumpEvents();
  return goOn;
}

bool MayBegin(const ToolSeam& seam) { return !seam.Settle || seam.Settle(); }

void TellCancelled(const Services& services, const std::string& whatStands) {
  if (services.Ask.Notice) services.Ask.Notice("Cancelled. " + whatStands);
}

void RequireFileName(const std::string& name) {
  if (std::any_of(name.begin(), name.end(), IsRefusedInName))
    throw FileFault(fault::InvalidCall, "use the name", name,
                    "it holds a character that a file name cannot have");
}

ToolResult CopyFrom(const Document& doc, const Services& services, const ToolSeam& seam) {
  ToolResult result;
  NoticeAndLeave(services, [&] {
    std::vector<std::string> files;
    GetFiles(services, files, "Select files to copy", "Mission Files(*.mis)|*.mis",
             &setting::CopyToDir);
    if (files.empty()) return;
    RequireFolder(services, doc.MissionDir);
    if (!MayBegin(seam)) return;
    result.Of = files.size();
    for (std::size_t i = 0; i < files.size(); ++i) {
      CopyMission(services, files[i], doc.MissionDir);
      result.Done = i + 1;
      const bool goOn = FileDone(services, seam, {i + 1, files.size(), GetFileName(files[i])});
      if (doc.Closing) return;
      if (goOn) continue;
      TellCancelled(services, "Missions copied: " + std::to_string(i + 1));
      break;
    }
    result.Outcome = ToolOutcome::Reread;
  });
  return result;
}

}  // namespace rws
