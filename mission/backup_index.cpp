#include "mission/backup_index.h"

#include <algorithm>
#include <map>
#include <unordered_map>
#include <utility>

#include "mission/line_diff.h"
#include "services/checksum.h"
#include "services/error_log.h"
#include "services/paths.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr char kOrigins[] = "Origins.txt";
constexpr char kEnding[] = ".bak";
constexpr std::size_t kChecksumSize = 8;

std::string FolderPath(const Services& services) {
  return BuildPath(services.AppPath, "RWS Backup");
}

/** A name or path as it is compared. */
std::string Key(std::string path) {
  if (FileSystem::MindsCase()) return path;
  std::replace(path.begin(), path.end(), '/', '\\');
  return FoldName(path);
}

/** The file behind a mission's path, from the root on. */
std::string WholePath(const Services& services, const std::string& missionPath) {
  return services.Files.GetAbsolutePathName(services.Files.FollowLinks(missionPath));
}

std::string Checksum(std::string_view line) { return Sha1(line).substr(0, kChecksumSize); }

struct Note {
  std::string BackupName, MissionPath;
};

/** One line of the list: checksum, name of the backup, path of the mission, tabs between them. */
bool ParseNote(std::string_view line, Note& note) {
  if (line.size() <= kChecksumSize || line[kChecksumSize] != '\t') return false;
  const std::string_view text = line.substr(kChecksumSize + 1);
  const std::size_t tab = text.find('\t');
  if (tab == text.npos || line.substr(0, kChecksumSize) != Checksum(text)) return false;
  note = {std::string(text.substr(0, tab)), std::string(text.substr(tab + 1))};
  return true;
}

/** In the order in which they were made. */
std::vector<Note> ReadNotes(const Services& services) {
  std::vector<Note> notes;
  const std::string path = BackupOriginsPath(services);
  if (!services.Files.FileExists(path)) return notes;
  LogAndLeave(services, "ReadNotes", [&] {
    const std::string text = services.Files.ReadFile(path);
    Note note;
    for (const auto line : SplitLines(text))
      if (ParseNote(line, note)) notes.push_back(note);
  });
  return notes;
}

enum class Naming { Other, Plain, Dated };

/** How the name of a backup fits that of a mission. Both are keys. */
Naming NamingOf(std::string_view backup, std::string_view mission) {
  if (!backup.starts_with(mission) || !backup.ends_with(kEnding)) return Naming::Other;
  const std::string_view rest = backup.substr(mission.size());
  if (rest == kEnding) return Naming::Plain;
  // A second one of the same second has a number behind its time.
  for (const char* dated : {".##-##-## ##-##-##.bak", ".##-##-## ##-##-## #.bak"})
    if (Like(rest, dated)) return Naming::Dated;
  return Naming::Other;
}

std::vector<std::string> FittingNames(const Services& services, const std::string& missionPath) {
  const std::string mission = Key(GetFileName(missionPath));
  if (!services.Files.FolderExists(FolderPath(services))) return {};
  return services.Files.ListFileNames(FolderPath(services), [&](const std::string& name) {
    return NamingOf(Key(name), mission) != Naming::Other;
  });
}

/** Tells of each origin whether it is the mission; looks at the disk once for each. */
class OriginTest {
 public:
  OriginTest(const Services& services, const std::string& missionPath)
      : files_(services.Files), mission_(WholePath(services, missionPath)) {}

  bool IsMission(const std::string& origin) {
    const auto [known, isNew] = answers_.try_emplace(origin, false);
    if (isNew) known->second = Key(origin) == Key(mission_) || files_.IsSameFile(origin, mission_);
    return known->second;
  }

 private:
  const FileSystem& files_;
  std::string mission_;
  std::map<std::string, bool> answers_;
};

/** Newest first; at one time the first backup is the oldest. */
bool IsListedBefore(const Backup& a, const Backup& b) {
  const bool otherA = a.Origin == BackupOrigin::OtherFolder;
  const bool otherB = b.Origin == BackupOrigin::OtherFolder;
  if (otherA != otherB) return otherB;
  if (a.Stamp.Modified != b.Stamp.Modified) return a.Stamp.Modified > b.Stamp.Modified;
  return a.Path.size() != b.Path.size() ? a.Path.size() > b.Path.size() : a.Path > b.Path;
}

/** Paths of the dated backups that are noted as of this very path, oldest first. */
std::vector<std::string> OwnDatedBackups(const Services& services, const std::string& missionPath) {
  const std::string name = Key(GetFileName(missionPath));
  const std::string mission = Key(WholePath(services, missionPath));
  const auto notes = ReadNotes(services);
  std::unordered_map<std::string, std::size_t> lastNote;
  for (std::size_t i = 0; i < notes.size(); ++i) lastNote[Key(notes[i].BackupName)] = i;
  std::map<std::size_t, std::string> byNote;
  for (const auto& backup : FittingNames(services, missionPath)) {
    const auto note = lastNote.find(Key(backup));
    if (note == lastNote.end() || Key(notes[note->second].MissionPath) != mission) continue;
    if (NamingOf(Key(backup), name) == Naming::Dated)
      byNote[note->second] = BuildPath(FolderPath(services), backup);
  }
  std::vector<std::string> paths;
  for (auto& [place, path] : byNote) paths.push_back(std::move(path));
  return paths;
}

}  // namespace

std::string BackupOriginsPath(const Services& services) {
  return BuildPath(FolderPath(services), kOrigins);
}

void NoteBackup(const Services& services, const std::string& backupPath,
                const std::string& missionPath) {
  LogAndLeave(services, "NoteBackup", [&] {
    const std::string note = GetFileName(backupPath) + "\t" + WholePath(services, missionPath);
    // The line end goes first: so a line that was cut off spoils no other.
    services.Files.AppendToFile(BackupOriginsPath(services), "\n" + Checksum(note) + "\t" + note);
  });
}

std::vector<Backup> ListBackups(const Services& services, const std::string& missionPath) {
  std::unordered_map<std::string, std::string> origins;
  for (const Note& note : ReadNotes(services)) origins[Key(note.BackupName)] = note.MissionPath;
  OriginTest origin(services, missionPath);
  std::vector<Backup> backups;
  for (const auto& name : FittingNames(services, missionPath)) {
    Backup backup;
    backup.Path = BuildPath(FolderPath(services), name);
    backup.Stamp = services.Files.Stamp(backup.Path);
    if (!backup.Stamp.Exists) continue;
    if (const auto noted = origins.find(Key(name)); noted != origins.end()) {
      backup.OriginPath = noted->second;
      backup.Origin =
          origin.IsMission(noted->second) ? BackupOrigin::ThisMission : BackupOrigin::OtherFolder;
    }
    backups.push_back(std::move(backup));
  }
  std::sort(backups.begin(), backups.end(), IsListedBefore);
  return backups;
}

void LimitBackups(const Services& services, const std::string& missionPath, int most) {
  if (most <= 0) return;
  LogAndLeave(services, "LimitBackups", [&] {
    auto paths = OwnDatedBackups(services, missionPath);
    const auto kept = std::min(paths.size(), static_cast<std::size_t>(most));
    paths.resize(paths.size() - kept);
    for (const auto& path : paths)
      LogAndLeave(services, "LimitBackups", [&] { services.Files.DeleteFile(path); });
  });
}

std::uint64_t BackupSpaceUsed(const Services& services) {
  std::uint64_t bytes = 0;
  const std::string folder = FolderPath(services);
  ResumeNext([&] {
    for (const auto& name : services.Files.ListFileNames(folder, [](auto&) { return true; }))
      bytes += services.Files.Stamp(BuildPath(folder, name)).Size;
  });
  return bytes;
}

}  // namespace rws
