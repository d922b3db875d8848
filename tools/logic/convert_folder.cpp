#include <set>

#include "mission/line_array.h"
#include "mission/line_ends.h"
#include "services/list_files.h"
#include "services/notice.h"
#include "services/numbers.h"
#include "services/paths.h"
#include "services/pickers.h"
#include "services/text.h"
#include "tools/logic/folder_tools.h"
#include "tools/logic/mission_files.h"

namespace rws {

namespace {

/** One run; a fault ends it. */
class Conversion {
 public:
  Conversion(const Services& services, std::string source, std::string destination,
             std::string name)
      : services_(services),
        source_(std::move(source)),
        destination_(std::move(destination)),
        name_(std::move(name)) {}

  /** False if the program is to close or the user has cancelled. */
  bool Run(const Document& doc, const ToolSeam& seam, ToolResult& result) {
    std::vector<std::string> missions, briefings;
    ListFiles(services_, missions, source_, "*.mis", true, "");
    ListFiles(services_, briefings, source_, "*.properties", true, "");
    result.Of = missions.size();
    for (std::size_t i = 0; i < missions.size(); ++i) {
      if (doc.Closing) return false;
      // The two lists are paired by position, whatever the names are.
      Convert(i, missions[i], i < briefings.size() ? briefings[i] : "");
      result.Done = i + 1;
      const std::string name = GetFileName(missions[i]);
      if (FileDone(services_, seam, {i + 1, missions.size(), name})) continue;
      TellCancelled(services_, "Missions converted: " + std::to_string(i + 1));
      return false;
    }
    return !doc.Closing;
  }

 private:
  void Convert(std::size_t index, const std::string& mission, const std::string& briefing) {
    const std::string number = FormatNumber(1.0 + static_cast<double>(index), "0#");
    const std::string target = name_.empty() ? GetFileName(mission) : name_ + "-" + number + ".mis";
    NewPath(target);
    StripPlayerLines(services_, mission, destination_, target);
    if (briefing.empty()) return;
    const std::string copy = name_.empty() ? GetFileName(briefing) : PropertiesPath(target);
    services_.Files.CopyFile(briefing, NewPath(copy));
  }

  /** Path of a name in the destination. One that leads back into the source, or to a file that
      this run wrote for another mission, is a fault: it would cost that file. */
  std::string NewPath(const std::string& name) {
    std::string path = services_.Files.FollowLinks(BuildPath(destination_, name));
    if (services_.Files.IsSameFile(GetParentFolderName(path), source_))
      throw FileFault(fault::Permission, "write", path, "it lies in the folder that is converted");
    if (!written_.insert(path).second) throw FileExistsFault(path);
    return path;
  }

  const Services& services_;
  std::string source_, destination_, name_;
  std::set<std::string> written_;
};

std::string PickSource(const Document& doc, const Services& services) {
  const std::string start = ReadSetting(services.Settings, setting::CampaignPath, doc.GamePath);
  const std::string source =
      GetFolder(services, "Please select the campaign directory", true, start);
  if (!source.empty()) WriteSetting(services.Settings, setting::CampaignPath, source);
  return source;
}

void RequireDestination(const Services& services, const std::string& source,
                        const std::string& destination) {
  RequireFolder(services, destination);
  if (services.Files.IsSameFile(source, destination))
    throw FileFault(fault::Permission, "convert", source,
                    "source and destination are the same folder");
}

}  // namespace

void StripPlayerLines(const Services& services, const std::string& source,
                      const std::string& destination, const std::string& target) {
  const std::string path = BuildPath(destination, GetFileName(target.empty() ? source : target));
  if (services.Files.IsSameFile(source, path))
    throw FileFault(fault::Permission, "convert", source, "source and target are the same file");
  std::string bytes = services.Files.ReadFile(source, LineArray::kLargest);
  // Without line ends that the reader knows the whole mission would be one line, to be dropped.
  if (auto repaired = RepairedLineEnds(bytes)) bytes = std::move(*repaired);
  const LineArray lines = LineArray::FromFile(std::move(bytes));
  LineArray kept;
  kept.Reserve(lines.FileText().size(), lines.size());
  std::string lower;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    services.Page.LCaseInto(lower, lines[i]);
    if (!Like(lower, "  player*") && !Like(lower, " *playernum*")) kept.Add(lines[i]);
  }
  services.Files.ReplaceFile(path, kept.FileText());
}

ToolResult ConvertMissionFolder(const Document& doc, const Services& services,
                                const ToolSeam& seam) {
  ToolResult result;
  NoticeAndLeave(services, [&] {
    const std::string source = PickSource(doc, services);
    if (source.empty()) return;
    const std::string destination = GetFolder(services, "Please select the destination directory",
                                              true, GetParentFolderName(source));
    if (destination.empty()) return;
    RequireDestination(services, source, destination);
    // An empty name keeps the names; only Cancel, which the user means as a stop, stops.
    const auto name = services.Ask.InputBox(
        "You may enter a new mission name for the converted mission(s).", kProgramTitle, "");
    if (!name) return;
    RequireFileName(*name);
    if (!MayBegin(seam)) return;
    if (!Conversion(services, source, destination, *name).Run(doc, seam, result)) return;
    result.Outcome = ToolOutcome::GoToFolder;
    result.Text = destination;
  });
  return result;
}

}  // namespace rws
