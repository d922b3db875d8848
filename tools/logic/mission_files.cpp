#include "tools/logic/mission_files.h"

#include "services/notice.h"
#include "services/paths.h"
#include "services/pickers.h"
#include "services/text.h"

namespace rws {

namespace {

template <class Body>
ToolOutcome Outcome(const Services& services, Body&& body) {
  ToolOutcome outcome = ToolOutcome::Nothing;
  NoticeAndLeave(services, [&] { outcome = body(); });
  return outcome;
}

bool Stands(const Services& services, const std::string& path) {
  return !path.empty() && services.Files.FileExists(path) && services.Files.Resolve(path) == path;
}

/** An operation that takes the mission away. */
struct Taking {
  std::string Mission, Briefing;
  /** What becomes of the mission, for the user; "" when it was not there at all. */
  std::string Done;
};

Taking Take(const Services& services, const std::string& mission, const std::string& briefing,
            const std::string& done) {
  return {mission, briefing, Stands(services, mission) ? done : ""};
}

/** The same for such an operation, which notes what it is about to do in the record that it is
    given: a failure tells what was done and what was not. */
template <class Body>
ToolOutcome OutcomeOfTaking(const Services& services, Body&& body) {
  ToolOutcome outcome = ToolOutcome::Nothing;
  Taking taking;
  const auto tell = [&](const Fault& caught) {
    std::string told = caught.Text;
    if (!taking.Mission.empty() && !Stands(services, taking.Mission)) {
      outcome = ToolOutcome::Gone;
      if (!taking.Done.empty()) told += ". The mission " + taking.Done + ".";
      if (Stands(services, taking.Briefing))
        told += " Its briefing is still in \"" + taking.Briefing + "\".";
    }
    if (services.Ask.Notice) services.Ask.Notice(told);
  };
  Trap([&] { outcome = body(taking); }, tell);
  return outcome;
}

/** Where letter case counts, a briefing found under another spelling may be that of another
    mission: "A.properties" is not that of "a.mis" when there is an "A.mis". */
bool IsOfAnotherMission(const Services& services, const std::string& mission,
                        const std::string& properties) {
  const std::string found = services.Files.Resolve(properties);
  if (found == properties) return false;
  const std::string owner = BuildPath(StripFileName(found), GetBaseName(found) + ".mis");
  return services.Files.FileExists(owner) && !services.Files.IsSameFile(owner, mission);
}

/** Refuses a target that the save dialog did not ask about: where letter case counts, it knows the
    name only as spelled. */
void RefuseOtherSpelling(const Services& services, const std::string& target) {
  const std::string found = services.Files.Resolve(target);
  if (FileSystem::MindsCase() && found != target && services.Files.FileExists(found))
    throw FileExistsFault(found);
}

void CopyProperties(const Services& services, const std::string& properties,
                    const std::string& mission) {
  const std::string target = PropertiesPath(mission);
  if (properties.empty() || target.empty()) return;
  RequireFolder(services, GetParentFolderName(target));
  if (services.Files.FileExists(target) && IsOfAnotherMission(services, mission, target))
    throw FileExistsFault(services.Files.Resolve(target));
  services.Files.CopyFile(properties, target);
}

}  // namespace

std::string CurrentMissionPath(const Document& doc) {
  std::string path;
  ResumeNext([&] { path = At(doc.MissionFiles, doc.CurMission); });
  return path;
}

const Mission& CurrentMissionRecord(const Document& doc) {
  static const Mission kNone;
  const Mission* mission = &kNone;
  ResumeNext([&] { mission = &At(doc.Missions, doc.CurMission); });
  return *mission;
}

std::string PropertiesPath(std::string_view missionPath) {
  // Else the path would be that of the mission itself, or of one in another folder.
  if (!Contains(GetFileName(missionPath), ".mis")) return "";
  return Replace(missionPath, ".mis", ".properties");
}

std::string ExistingProperties(const Services& services, const std::string& mission) {
  const std::string path = PropertiesPath(mission);
  if (path.empty() || !services.Files.FileExists(path)) return "";
  return IsOfAnotherMission(services, mission, path) ? "" : path;
}

void RequireFolder(const Services& services, const std::string& folder) {
  if (!services.Files.FolderExists(folder)) throw PathNotFoundFault(folder);
}

ToolOutcome SaveMissionAs(const Document& doc, const Services& services) {
  return Outcome(services, [&] {
    const std::string path = CurrentMissionPath(doc);
    const Mission& mission = CurrentMissionRecord(doc);
    const std::string start =
        ReadSetting(services.Settings, setting::LastSavAsPath, mission.DirPath);
    const std::string target =
        GetSaveFile(services, "SaveAs", mission.FileName, "Mission Files |*.mis", start);
    if (target.empty()) return ToolOutcome::Cancelled;
    RequireFolder(services, GetParentFolderName(target));
    RefuseOtherSpelling(services, target);
    services.Files.CopyFile(path, target);
    CopyProperties(services, ExistingProperties(services, path), target);
    WriteSetting(services.Settings, setting::LastSavAsPath, StripFileName(target));
    return ToolOutcome::Reread;
  });
}

ToolOutcome DeleteMission(const Document& doc, const Services& services) {
  return OutcomeOfTaking(services, [&](Taking& taking) {
    const std::string path = CurrentMissionPath(doc);
    const Answer answer =
        services.Ask.MsgBox("Are you sure you want to delete\n" + GetBaseName(path) + "?",
                            Buttons::YesNo, Icon::Exclamation, "Confirm Delete");
    if (answer != Answer::Yes) return ToolOutcome::Cancelled;
    const std::string properties = ExistingProperties(services, path);
    taking = Take(services, path, properties, "is deleted");
    services.Files.DeleteFile(path);
    if (!properties.empty()) services.Files.DeleteFile(properties);
    return ToolOutcome::Reread;
  });
}

ToolOutcome MoveMission(const Document& doc, const Services& services) {
  return OutcomeOfTaking(services, [&](Taking& taking) {
    const std::string path = CurrentMissionPath(doc);
    const std::string start =
        ReadSetting(services.Settings, setting::LastMovePath, CurrentMissionRecord(doc).DirPath);
    const std::string target =
        GetFolder(services, "Select a directory to move the mission to", true, start);
    if (target.empty()) return ToolOutcome::Cancelled;
    RequireFolder(services, target);
    const std::string properties = ExistingProperties(services, path);
    const std::string name = GetFileName(path);
    taking = Take(services, path, properties, "is now in \"" + target + "\"");
    services.Files.MoveFile(path, BuildPath(target, name));
    if (!properties.empty())
      services.Files.MoveFile(properties, BuildPath(target, PropertiesPath(name)));
    WriteSetting(services.Settings, setting::LastMovePath, target);
    return ToolOutcome::Reread;
  });
}

}  // namespace rws
