#include "tools/logic/backups.h"

#include "mission/mission_file.h"
#include "services/clock.h"
#include "services/error_log.h"
#include "services/paths.h"
#include "session/reading.h"
#include "session/recording.h"

namespace rws {

namespace {

/** True if a failure came only when the text had its place. */
bool Holds(const Services& services, const std::string& path, const LineArray& lines) {
  bool holds = false;
  ResumeNext([&] { holds = ReadMissionBytes(services, path) == lines.FileText(); });
  return holds;
}

void TellNotRestored(const Services& services, const std::string& reason, bool holds = false) {
  services.Ask.MsgBox((holds ? "The backup is in its place, but that may not last.\n\n"
                             : "The backup was not restored.\n\n") +
                          reason,
                      Buttons::Ok, Icon::Critical, kProgramTitle);
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
    TellNotRestored(services, caught.Text, gone && Holds(services, path, lines));
  });
  if (!begun) return gone && Holds(services, path, lines);
  if (!gone && !Replace(services, mission, lines)) return Holds(services, path, lines);
  TellRestored(services, path, time);
  LimitBackups(services, path, prefs.BackupsKept);
  return true;
}

bool RestoreAsStep(Session& session, const std::string& path, const std::string& backupPath) {
  bool restored = false;
  RecordWhole(session, {path}, "Restored backup of " + GetBaseName(path), [&] {
    const std::ptrdiff_t mission = MissionAt(session.Doc, path);
    const Services& services = session.Services;
    if (!RestoreBackup(services, session.Prefs, At(session.Doc.Missions, mission), backupPath))
      return;
    restored = Reread(session, static_cast<std::size_t>(mission));
    if (!restored && services.Ask.Notice)
      services.Ask.Notice("\"" + path + "\" cannot be read; it is shown as it was before.");
  });
  return restored;
}

}  // namespace rws
