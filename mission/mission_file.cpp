#include "mission/mission_file.h"

#include <string>
#include <string_view>

#include "mission/flight_values.h"
#include "mission/line_values.h"
#include "services/error_log.h"
#include "services/paths.h"
#include "services/pickers.h"
#include "services/text.h"

namespace rws {

namespace {

std::string Stamp(const Services& services) { return StampText(services.System.Now()); }

/** A copy that an earlier failure left may be the only one of its mission: it steps aside. */
void KeepEarlierCopy(const Services& services, const std::string& temporary) {
  if (services.Files.FileExists(temporary))
    services.Files.MoveFile(temporary, temporary + Stamp(services));
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

/** Moves the copy back. A file that stands at the mission's path is not replaced; where it is still
    the mission as it was, the copy has done its work. */
void Restore(const Services& services, const std::string& temporary, const std::string& path,
             const Fault& cause) {
  if (HoldSame(services, temporary, path)) {
    ResumeNext([&] { services.Files.DeleteFile(temporary); });
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

}  // namespace

std::string BackupPath(const Services& services, const std::string& fileName) {
  const std::string folder = BuildPath(services.AppPath, "RWS Backup");
  if (!services.Files.FolderExists(folder)) services.Files.CreateFolder(folder);
  const std::string plain = BuildPath(folder, fileName + ".bak");
  if (!services.Files.FileExists(plain)) return plain;
  return BuildPath(folder, fileName + "." + Stamp(services) + ".bak");
}

bool WriteMissionFile(const Services& services, const Mission& mission, const LineArray& lines,
                      bool backup, std::string* reason) {
  // A link stays where it is; the file behind it is saved and written.
  const std::string path = services.Files.FollowLinks(BuildPath(mission.DirPath, mission.FileName));
  const std::string temporary = BuildPath(services.AppPath, "$$$TEMP");
  bool copied = false;
  const auto write = [&] {
    KeepEarlierCopy(services, temporary);
    services.Files.CopyFile(path, temporary);
    copied = true;
    if (backup)
      services.Files.MoveFile(path, BackupPath(services, mission.FileName));
    else
      services.Files.RequireWritable(path);
    // By now the copy may be the only file that has the mission's access rights.
    services.Files.ReplaceFile(path, lines.FileText(), temporary);
    services.Files.DeleteFile(temporary);
  };
  return Trap(write, [&](const Fault& caught) {
    LogError(services, caught.Text, "WriteMissionFile");
    if (reason) *reason = caught.Text;
    if (copied) return Restore(services, temporary, path, caught);
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
