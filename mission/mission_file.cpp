#include "mission/mission_file.h"

#include <memory>
#include <string>
#include <string_view>

#include "mission/backup_index.h"
#include "mission/flight_values.h"
#include "mission/line_values.h"
#include "mission/update_note.h"
#include "services/checksum.h"
#include "services/error_log.h"
#include "services/paths.h"
#include "services/pickers.h"
#include "services/text.h"

namespace rws {

namespace {

/** A copy that an earlier failure left may be the only one of its mission: it steps aside. */
void KeepEarlierCopy(const Services& services, const std::string& temporary) {
  if (services.Files.FileExists(temporary))
    MoveWithNote(services, temporary, FreeStampedName(services, temporary, ""));
}

/** Sees to it that no note outlives its copy, whatever becomes of an Update. */
class NoteGoesWithCopy {
 public:
  NoteGoesWithCopy(const Services& services, const std::string& copy)
      : services_(services), copy_(copy) {}
  ~NoteGoesWithCopy() { DropNote(services_, copy_); }
  NoteGoesWithCopy(const NoteGoesWithCopy&) = delete;
  NoteGoesWithCopy& operator=(const NoteGoesWithCopy&) = delete;

 private:
  const Services& services_;
  const std::string& copy_;
};

Fault ChangedFault(const std::string& path) {
  return FileFault(fault::Permission, "write", path,
                   "another program has changed it since it was read");
}

/** In a folder the first backup keeps the plain name for good; later ones carry their time. */
std::string NextBackup(const Services& services, const std::string& folder,
                       const std::string& fileName) {
  const std::string plain = BuildPath(folder, fileName + ".bak");
  if (!services.Files.FileExists(plain)) return plain;
  return BuildPath(folder, fileName + "." + StampText(services.System.Now()) + ".bak");
}

void TellNotRestored(const Services& services, const std::string& path, const Fault& cause,
                     const std::string& whatStands) {
  services.Ask.MsgBox(
      "\"" + path + "\" could not be restored after the failed update.\n" + cause.Text + whatStands,
      Buttons::Ok, Icon::Critical, kProgramTitle);
}

bool HoldSame(const Services& services, const std::string& a, const std::string& b) {
  bool same = false;
  ResumeNext([&] { same = services.Files.ReadFile(a) == services.Files.ReadFile(b); });
  return same;
}

std::string FolderOf(const Services& services, const WriteRules& rules) {
  return rules.BackupFolder.empty() ? BackupFolder(services) : rules.BackupFolder;
}

/** Moves the copy back. A file that stands at the mission's path is not replaced; where it is still
    the mission as it was, the copy has done its work. */
void Restore(const Services& services, const std::string& temporary, const std::string& path,
             const WriteRules& rules, const Fault& cause) {
  if (HoldSame(services, temporary, path)) {
    ResumeNext([&] { PartFromBackups(services, FolderOf(services, rules), path); });
    ResumeNext([&] { services.Files.DeleteFile(temporary, IfReadOnly::AllTheSame); });
    return;
  }
  const bool stood = services.Files.FileExists(path);
  const auto tell = [&](const Fault& caught) {
    std::string stands = stood ? "\nThe updated mission is in its place."
                               : "\nThe mission as it was before is in its place.";
    if (services.Files.FileExists(temporary))
      stands = "\nThe mission as it was before is in \"" + temporary + "\".";
    TellNotRestored(services, path, cause, "\n" + caught.Text + stands);
    throw Fault(caught);
  };
  Trap([&] { services.Files.MoveFile(temporary, path); }, tell);
}

void KeepBackup(const Services& services, const std::string& path, const std::string& fileName,
                const WriteRules& rules) {
  const std::string folder = FolderOf(services, rules);
  std::string backup = NextBackup(services, folder, fileName);
  // The second one of a second; who else writes into the folder may be quicker, too.
  constexpr int kMostTries = 1000;
  for (int tries = 0;; ++tries) {
    const auto isTaken = [&](const Fault& caught) {
      if (caught.Number != fault::FileExists || tries == kMostTries) throw Fault(caught);
    };
    if (services.Files.FileExists(backup))
      backup = FreeStampedName(services, BuildPath(folder, fileName + "."), ".bak");
    if (Trap([&] { services.Files.LinkOrCopy(path, backup); }, isTaken)) break;
  }
  if (rules.BackupFolder.empty()) NoteBackup(services, backup, path);
}

}  // namespace

std::string BackupFolder(const Services& services) {
  const std::string folder = BuildPath(services.AppPath, "RWS Backup");
  if (!services.Files.FolderExists(folder)) services.Files.CreateFolder(folder);
  return folder;
}

std::string BackupPath(const Services& services, const std::string& fileName) {
  return NextBackup(services, BackupFolder(services), fileName);
}

bool WriteMissionFile(const Services& services, const Mission& mission, const LineArray& lines,
                      const WriteRules& rules, std::string* reason) {
  const auto tell = [&](const Fault& caught) {
    LogError(services, caught.Text, "WriteMissionFile");
    if (reason) *reason = caught.Text;
  };
  std::shared_ptr<void> held;
  if (!Trap([&] { held = HoldCopy(services); }, tell)) return false;
  // A link stays where it is; the file behind it is saved and written.
  const std::string path = services.Files.FollowLinks(BuildPath(mission.DirPath, mission.FileName));
  const std::string temporary = CopyPath(services);
  bool begun = false, copied = false;
  const NoteGoesWithCopy noteGoes(services, temporary);
  const auto write = [&] {
    KeepEarlierCopy(services, temporary);
    const std::string old = services.Files.ReadFile(path);
    if (rules.Expected && old != *rules.Expected) throw ChangedFault(path);
    const std::string fullPath = services.Files.GetAbsolutePathName(path);
    WriteNote(services, temporary, {fullPath, Sha1(old), Sha1(lines.FileText())});
    begun = true;
    services.Files.ReplaceFile(temporary, old, path);
    copied = true;
    if (rules.Backup)
      KeepBackup(services, path, mission.FileName, rules);
    else
      services.Files.RequireWritable(path);
    services.Files.ReplaceFile(path, lines.FileText(), path,
                               rules.Backup ? IfReadOnly::AllTheSame : IfReadOnly::AsTheSystemDoes);
    services.Files.DeleteFile(temporary, IfReadOnly::AllTheSame);
  };
  return Trap(write, [&](const Fault& caught) {
    tell(caught);
    if (copied) return Restore(services, temporary, path, rules, caught);
    // The mission has not been touched yet.
    if (begun && services.Files.FileExists(temporary))
      ResumeNext([&] { services.Files.DeleteFile(temporary, IfReadOnly::AllTheSame); });
    if (services.Files.FileExists(path)) return;
    TellNotRestored(services, path, caught, "");
    throw Fault(caught);
  });
}

void GetSqFile(Document& doc, const Services& services) {
  LogAndLeave(services, "GetSqFile", [&] {
    const std::string path =
        GetFile(services, "Choose Squadron file", "mis(*.mis)|*mis", &setting::SqFile);
    if (path.empty()) return;
    const auto lines = LineArray::FromFile(services.Files.ReadFile(path));
    LineArray stems;
    bool inWing = false;
    for (std::size_t i = 0; i < lines.size(); ++i) {
      const auto line = Trim(lines[i]);
      if (IsSectionHeader(line)) {
        inWing = EqualNoCase(line, "[Wing]");
      } else if (inWing && line.size() > 2) {
        stems.Add(GroupOf(line));
      }
    }
    services.Files.ReplaceFile(BuildPath(services.AppPath, "sq.txt"), stems.FileText());
    doc.Closing = true;
    services.Window.Close();
  });
}

}  // namespace rws
