#include "platform/desktop_association.h"

#include <QProcess>
#include <QStandardPaths>
#include <algorithm>

#include "platform/qt_text.h"
#include "services/faults.h"
#include "services/paths.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr char kEntryName[] = "rws-edit.desktop", kPackageName[] = "rws-edit.xml";
constexpr char kMissionType[] = "application/x-rws-edit-mission";
/** A line in each file that this code writes; one without it belongs to the user or to a package.
 */
constexpr char kOurs[] = "Written by RWS Edit when file association was switched on.";

constexpr char kPackage[] = R"(<?xml version="1.0" encoding="UTF-8"?>
<!-- %1 -->
<mime-info xmlns="http://www.freedesktop.org/standards/shared-mime-info">
  <mime-type type="application/x-rws-edit-mission">
    <comment>IL-2 mission</comment>
    <sub-class-of type="text/plain"/>
    <icon name="rws-edit"/>
    <glob pattern="*.mis"/>
  </mime-type>
  <mime-type type="application/x-rws-edit-briefing">
    <comment>IL-2 mission briefing</comment>
    <sub-class-of type="text/plain"/>
    <icon name="rws-edit"/>
    <glob pattern="*.properties" weight="10"/>
  </mime-type>
</mime-info>
)";

constexpr char kEntry[] = R"([Desktop Entry]
# %1
Type=Application
Name=RWS Edit
Comment=Tune missions of IL-2 Sturmovik: 1946
Exec=%2 %f
Icon=rws-edit
Terminal=false
Categories=Game;Simulation;
MimeType=application/x-rws-edit-mission;application/x-rws-edit-briefing;
)";

/** Where the files of one user lie. */
struct UserPlaces {
  std::string Applications, Mime, Entry, Package;
};

std::string Location(QStandardPaths::StandardLocation location) {
  return ToPath(QStandardPaths::writableLocation(location));
}

UserPlaces MakePlaces() {
  const std::string data = Location(QStandardPaths::GenericDataLocation);
  UserPlaces places;
  places.Applications = BuildPath(data, "applications");
  places.Mime = BuildPath(data, "mime");
  places.Entry = BuildPath(places.Applications, kEntryName);
  places.Package = BuildPath(BuildPath(places.Mime, "packages"), kPackageName);
  return places;
}

/** The program as the first word of an Exec line: quoted, and escaped a second time as every text
    of such a file is. */
std::string ExecWord(const std::string& program) {
  std::string word = "\"";
  for (const char c : program) {
    if (c == '\\')
      word += "\\\\\\\\";
    else if (c == '"' || c == '`' || c == '$')
      word.append("\\\\").push_back(c);
    else if (c == '%')
      word += "%%";
    else if (c == '\n')
      word += "\\n";
    else
      word += c;
  }
  return word + '"';
}

bool IsOurs(const FileSystem& files, const std::string& path) {
  constexpr std::uint64_t kMost = 1 << 20;
  return files.FileExists(path) && Contains(files.ReadFile(path, kMost), kOurs);
}

void MakeFolders(const FileSystem& files, const std::string& folder) {
  if (folder.empty() || files.FolderExists(folder)) return;
  MakeFolders(files, GetParentFolderName(folder));
  files.CreateFolder(folder);
}

void RefuseForeign(const FileSystem& files, const std::string& path) {
  if (files.FileExists(path) && !IsOurs(files, path))
    throw FileFault(fault::FileExists, "replace", path, "It was not written by this program");
}

void Write(const FileSystem& files, const std::string& path, const std::string& text) {
  MakeFolders(files, GetParentFolderName(path));
  files.ReplaceFile(path, text);
}

/** Runs one of the desktop's tools to its end; the reason when it failed. */
std::string RunTool(const char* name, const QStringList& arguments) {
  constexpr int kPatienceMs = 15000;
  const QString program = QStandardPaths::findExecutable(QLatin1String(name));
  if (program.isEmpty()) return "";
  QProcess tool;
  tool.setStandardOutputFile(QProcess::nullDevice());
  tool.start(program, arguments, QIODevice::ReadOnly);
  if (!tool.waitForFinished(kPatienceMs)) {
    const std::string reason = ToPath(tool.errorString());
    tool.kill();
    return reason;
  }
  if (tool.exitStatus() == QProcess::NormalExit && tool.exitCode() == 0) return "";
  const QString told = QString::fromLocal8Bit(tool.readAllStandardError()).trimmed();
  return told.isEmpty() ? "It failed without a reason" : ToPath(told);
}

/** Lets the desktop read its folders again; throws at the first tool that fails. */
void TellDesktop(const UserPlaces& places, bool on) {
  const auto run = [](const char* name, const QStringList& arguments) {
    const std::string reason = RunTool(name, arguments);
    if (!reason.empty()) throw FileFault(fault::FileIo, "run", name, reason);
  };
  run("update-mime-database", {FromPath(places.Mime)});
  run("update-desktop-database", {FromPath(places.Applications)});
  if (on)
    run("xdg-mime",
        {QStringLiteral("default"), QLatin1String(kEntryName), QLatin1String(kMissionType)});
}

/** The programs of a default's line but for this one; "" when none is left. */
std::string WithoutProgram(std::string_view line) {
  const std::string start = std::string(kMissionType) + "=";
  std::string rest;
  for (const auto name : SplitAt(line.substr(start.size()), ';'))
    if (!Trim(name).empty() && Trim(name) != kEntryName) rest.append(name).append(";");
  return rest.empty() ? "" : start + rest;
}

std::string_view WithoutLineEnd(std::string_view line) {
  while (line.ends_with('\n') || line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

/** Takes the program out of the defaults for missions; all other bytes of the list stay. */
void ForgetDefault(const FileSystem& files, const std::string& list) {
  constexpr std::uint64_t kMost = 16 << 20;
  if (!files.FileExists(list)) return;
  const std::string before = files.ReadFile(list, kMost);
  std::string after;
  bool inDefaults = false;
  for (std::size_t from = 0; from < before.size();) {
    const std::size_t end = std::min(before.find('\n', from), before.size() - 1) + 1;
    const std::string_view whole = std::string_view(before).substr(from, end - from);
    const std::string_view line = WithoutLineEnd(whole);
    from = end;
    if (line.starts_with('[')) inDefaults = line == "[Default Applications]";
    const bool ours = inDefaults && line.starts_with(std::string(kMissionType) + "=") &&
                      Contains(line, kEntryName);
    if (!ours) {
      after += whole;
      continue;
    }
    const std::string rest = WithoutProgram(line);
    if (!rest.empty()) after += rest + "\n";
  }
  if (after != before) files.ReplaceFile(list, after);
}

void SwitchOn(const FileSystem& files, const UserPlaces& places, const std::string& program) {
  Write(files, places.Package, Replace(kPackage, "%1", kOurs));
  Write(files, places.Entry, Replace(Replace(kEntry, "%1", kOurs), "%2", ExecWord(program)));
  TellDesktop(places, true);
}

void SwitchOff(const FileSystem& files, const UserPlaces& places) {
  const std::string lists[] = {
      BuildPath(Location(QStandardPaths::GenericConfigLocation), "mimeapps.list"),
      BuildPath(places.Applications, "mimeapps.list")};
  for (const auto& list : lists) ForgetDefault(files, list);
  for (const auto& path : {places.Entry, places.Package})
    if (IsOurs(files, path)) files.DeleteFile(path);
  // The files are gone; a tool that fails now only makes the desktop notice later.
  ResumeNext([&] { TellDesktop(places, false); });
}

}  // namespace

std::string AssociateDesktop(const FileSystem& files, const std::string& program, bool on) {
  std::string reason;
  const auto keepReason = [&](const Fault& caught) { reason = caught.Text; };
  const UserPlaces places = MakePlaces();
  if (!on) {
    Trap([&] { SwitchOff(files, places); }, keepReason);
    return reason;
  }
  const bool free = Trap(
      [&] {
        RefuseForeign(files, places.Entry);
        RefuseForeign(files, places.Package);
      },
      keepReason);
  if (free && !Trap([&] { SwitchOn(files, places, program); }, keepReason))
    ResumeNext([&] { SwitchOff(files, places); });
  return reason;
}

}  // namespace rws
