#include "platform/desktop_association.h"

#include <QProcess>
#include <QStandardPaths>
#include <algorithm>
#include <vector>

#include "platform/desktop_defaults.h"
#include "platform/packaged_files.h"
#include "platform/qt_text.h"
#include "services/faults.h"
#include "services/paths.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr char kEntryName[] = "rws-edit.desktop", kPackageName[] = "rws-edit.xml";
constexpr char kMissionType[] = "application/x-rws-edit-mission";
constexpr char kBriefingType[] = "application/x-rws-edit-briefing";
constexpr char kDefaults[] = "Default Applications", kRemoved[] = "Removed Associations";
/** In each file that this code writes; one without it belongs to the user or to a package. */
constexpr char kOurs[] = "Written by RWS Edit when file association was switched on.";

/** Where the files of one user lie. */
struct UserPlaces {
  std::string Applications, Mime, Entry, Package;
};

UserPlaces MakePlaces(const DesktopFolders& folders) {
  const std::string& data = folders.Data.front();
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

void RefuseForeign(const FileSystem& files, const std::string& path) {
  if (files.FileExists(path) && !IsOurs(files, path))
    throw FileFault(fault::FileExists, "replace", path, "It was not written by this program");
}

void Write(const FileSystem& files, const std::string& path, const std::string& text) {
  files.CreateFolders(GetParentFolderName(path));
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
void TellDesktop(const UserPlaces& places) {
  const auto run = [](const char* name, const std::string& folder) {
    const std::string reason = RunTool(name, {FromPath(folder)});
    if (!reason.empty()) throw FileFault(fault::FileIo, "run", name, reason);
  };
  run("update-mime-database", places.Mime);
  run("update-desktop-database", places.Applications);
}

/** The packaged files as this user's own. */
std::string OwnTypes() {
  return Replace(kPackagedTypes, "<mime-info ", "<!-- " + std::string(kOurs) + " -->\n<mime-info ");
}

std::string OwnEntry(const std::string& program) {
  const std::string entry =
      Replace(kPackagedEntry, "Exec=rws-edit ", "Exec=" + ExecWord(program) + " ");
  return Replace(entry, "[Desktop Entry]\n", "[Desktop Entry]\n# " + std::string(kOurs) + "\n");
}

/** True if a package brought the files and they start this very program. */
bool IsPackaged(const FileSystem& files, const DesktopFolders& folders,
                const std::string& program) {
  const QString called = QStandardPaths::findExecutable(QStringLiteral("rws-edit"));
  if (called.isEmpty() || !files.IsSameFile(ToPath(called), program)) return false;
  return std::any_of(folders.Data.begin() + 1, folders.Data.end(), [&](const auto& data) {
    return files.FileExists(BuildPath(BuildPath(data, "applications"), kEntryName)) &&
           files.FileExists(
               BuildPath(BuildPath(BuildPath(data, "mime"), "packages"), kPackageName));
  });
}

bool IsDefault(const FileSystem& files, const DesktopFolders& folders) {
  return TypeOfGlob(files, folders, "*.mis") == kMissionType &&
         DefaultProgram(files, folders, kMissionType) == kEntryName;
}

std::vector<std::string> Without(std::vector<std::string> programs) {
  std::erase(programs, kEntryName);
  return programs;
}

std::vector<std::string> WithFirst(std::vector<std::string> programs) {
  programs = Without(std::move(programs));
  programs.insert(programs.begin(), kEntryName);
  return programs;
}

/** Changes the programs of both types in one group of a user's list. */
void ChangeList(const FileSystem& files, const std::string& list, const char* group,
                std::vector<std::string> (*change)(std::vector<std::string>)) {
  constexpr std::uint64_t kMost = 16 << 20;
  const std::string before = files.FileExists(list) ? files.ReadFile(list, kMost) : "";
  std::string after = before;
  for (const char* type : {kMissionType, kBriefingType})
    after = WithPrograms(after, group, type, change(ProgramsOf(after, group, type)));
  if (after != before) Write(files, files.FollowLinks(list), after);
}

std::string UserList(const DesktopFolders& folders) {
  return BuildPath(folders.Config.front(), "mimeapps.list");
}

/** Takes this program out of one group of both lists of a user; the second is an old place. */
void Forget(const FileSystem& files, const DesktopFolders& folders, const char* group) {
  ChangeList(files, UserList(folders), group, Without);
  ChangeList(files, BuildPath(MakePlaces(folders).Applications, "mimeapps.list"), group, Without);
}

bool DeleteOwnFiles(const FileSystem& files, const UserPlaces& places) {
  bool any = false;
  for (const auto& path : {places.Entry, places.Package}) {
    if (!IsOurs(files, path)) continue;
    files.DeleteFile(path);
    any = true;
  }
  return any;
}

void SwitchOff(const FileSystem& files, const DesktopFolders& folders) {
  const UserPlaces places = MakePlaces(folders);
  Forget(files, folders, kDefaults);
  // The files are gone; a tool that fails now only makes the desktop notice later.
  if (DeleteOwnFiles(files, places)) ResumeNext([&] { TellDesktop(places); });
  if (!IsDefault(files, folders)) return;
  // By the package, for all users: this one declines.
  ChangeList(files, UserList(folders), kRemoved, WithFirst);
  if (IsDefault(files, folders))
    throw Fault(fault::FileIo, "The desktop's settings for all users name RWS Edit for missions.");
}

void SwitchOn(const FileSystem& files, const DesktopFolders& folders, const std::string& program) {
  const UserPlaces places = MakePlaces(folders);
  if (IsPackaged(files, folders, program)) {
    if (DeleteOwnFiles(files, places)) TellDesktop(places);
  } else {
    RefuseForeign(files, places.Entry);
    RefuseForeign(files, places.Package);
    Write(files, places.Package, OwnTypes());
    Write(files, places.Entry, OwnEntry(program));
    TellDesktop(places);
  }
  Forget(files, folders, kRemoved);
  ChangeList(files, UserList(folders), kDefaults, WithFirst);
  const std::string type = TypeOfGlob(files, folders, "*.mis");
  if (type.empty())
    throw Fault(
        fault::FileIo,
        "The desktop did not take the file types over. Is \"update-mime-database\" installed?");
  if (!IsDefault(files, folders))
    throw Fault(fault::FileIo, "The desktop's own settings come first: a mission is \"" + type +
                                   "\" there, opened with \"" +
                                   DefaultProgram(files, folders, type) + "\".");
}

}  // namespace

bool IsDesktopAssociated(const FileSystem& files) {
  bool is = false;
  ResumeNext([&] { is = IsDefault(files, FindDesktopFolders()); });
  return is;
}

std::string AssociateDesktop(const FileSystem& files, const std::string& program, bool on) {
  std::string reason;
  const auto keepReason = [&](const Fault& caught) { reason = caught.Text; };
  const DesktopFolders folders = FindDesktopFolders();
  if (!on) {
    Trap([&] { SwitchOff(files, folders); }, keepReason);
  } else if (!Trap([&] { SwitchOn(files, folders, program); }, keepReason)) {
    ResumeNext([&] {
      Forget(files, folders, kDefaults);
      if (DeleteOwnFiles(files, MakePlaces(folders))) TellDesktop(MakePlaces(folders));
    });
  }
  return reason;
}

}  // namespace rws
