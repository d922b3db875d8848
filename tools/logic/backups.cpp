#include "tools/logic/backups.h"

#include "mission/mission_file.h"
#include "services/clock.h"
#include "services/error_log.h"
#include "services/paths.h"

namespace rws {

namespace {

void TellNotRestored(const Services& services, const std::string& reason) {
  services.Ask.MsgBox("The backup was not restored.\n\n" + reason, Buttons::Ok, Icon::Critical,
                      kProgramTitle);
}

/** Replaces the mission's file. What goes up as a fault has been told by then. */
bool Replace(const Services& services, const Mission& mission, const LineArray& lines) {
  bool written = false;
  std::string reason;
  const bool told = !LogAndLeave(services, "RestoreBackup", [&] {
    written = WriteMissionFile(services, mission, lines, true, &reason);
  });
  if (!written && !told) TellNotRestored(services, reason);
  return written;
}

void TellRestored(const Services& services, const std::string& path, const std::string& time) {
  if (services.Ask.Notice)
    services.Ask.Notice("\"" + path + "\" is again as it was on " + time + ".");
}

}  // namespace

std::string ReadMissionBytes(const Services& services, const std::string& path) {
  return services.Files.ReadFile(path, LineArray::kLargest);
}

std::optional<std::string> ReadMissionNow(const Services& services,
                                          const std::string& missionPath) {
  if (services.Files.IsGone(missionPath)) return {};
  return ReadMissionBytes(services, missionPath);
}

std::string OriginText(const Backup& backup) {
  if (backup.Origin == BackupOrigin::ThisMission) return "this mission";
  if (backup.Origin == BackupOrigin::Unknown) return "some folder";
  return GetParentFolderName(backup.OriginPath);
}

std::string TimeText(const FileStamp& stamp) { return TimeText(FileSystem::LocalTime(stamp)); }

bool RestoreBackup(const Services& services, const Preferences& prefs, const Mission& mission,
                   const std::string& backupPath) {
  const std::string path = BuildPath(mission.DirPath, mission.FileName);
  std::string time;
  LineArray lines;
  bool gone = false;
  const auto begin = [&] {
    time = TimeText(services.Files.Stamp(backupPath));
    lines = LineArray::FromFileAsIs(ReadMissionBytes(services, backupPath));
    gone = services.Files.IsGone(path);
    if (gone) services.Files.ReplaceFile(path, lines.FileText());
  };
  const bool begun = Trap(begin, [&](const Fault& caught) {
    LogError(services, caught.Text, "RestoreBackup");
    TellNotRestored(services, caught.Text);
  });
  if (!begun || (!gone && !Replace(services, mission, lines))) return false;
  TellRestored(services, path, time);
  LimitBackups(services, path, prefs.BackupsKept);
  return true;
}

}  // namespace rws
