#include "mainwindow/logic/start_up.h"

#include <algorithm>

#include "services/association.h"
#include "services/error_log.h"
#include "services/list_files.h"
#include "services/paths.h"
#include "services/pickers.h"
#include "services/setting_values.h"
#include "services/system_facts.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr char kHeading[] = "Start Up";
constexpr int kLocaleCountryName = 0x1002;
constexpr std::int32_t kWhite = 0xFFFFFF;

bool Exists(const Services& services, const std::string& path) {
  return services.Files.FileExists(path) || services.Files.FolderExists(path);
}

std::string WithoutQuotes(std::string_view text) {
  text = Trim(text);
  if (text.size() > 1 && text.front() == '"' && text.back() == '"')
    text = text.substr(1, text.size() - 2);
  return std::string(text);
}

std::string Absolute(const Services& services, const std::string& path) {
  return path.empty() ? path : services.Files.GetAbsolutePathName(path);
}

/** Wipes the settings and puts back what was read from them already, or closing would write it
    again. The game directory stays in memory for this run. */
void RestoreDefaults(Document& doc, Preferences& prefs, const Services& services) {
  DeleteRegKey(services.Settings, SettingsRoot::CurrentUser, kSettingsBaseKey);
  ReadStartSettings(doc, prefs, services);
  prefs.bBackup = ReadFlag(services.Settings, setting::Backup);
}

void TakePath(StartArguments& arguments, const Services& services, const std::string& part) {
  arguments.ComLinePath = Absolute(services, part);
  arguments.ComLineProperties = ContainsNoCase(part, "properties");
  if (services.Files.FileExists(arguments.ComLinePath)) {
    arguments.IsBriefing = FoldName(arguments.ComLinePath).ends_with(".properties");
    arguments.ComLineMission = GetFileName(arguments.ComLinePath);
    arguments.ComLinePath = GetParentFolderName(arguments.ComLinePath);
  }
  if (services.Files.FolderExists(arguments.ComLinePath)) return;
  arguments.ComLinePath.clear();
  arguments.Unfound = part;
}

/** A folder of a Steam library that looks like the game's, else the library itself. */
std::string GameInLibrary(const Services& services, const std::string& library) {
  std::string found;
  ResumeNext([&] {
    for (const auto& entry : services.Files.ListFolder(library))
      if (found.empty() && entry.IsFolder && Like(FoldName(entry.Name), "il[- ]2*"))
        found = BuildPath(library, entry.Name);
  });
  return found.empty() ? library : found;
}

}  // namespace

void ReadStartSettings(Document& doc, Preferences& prefs, const Services& services) {
  const Settings& settings = services.Settings;
  doc.Untouched = static_cast<UntouchedLines>(ReadNumber(settings, setting::LaterVersions, 0, 2));
  prefs.SavePromptMode = ReadNumber(settings, setting::SaveWarn, kSaveAsk, kSaveNever);
  prefs.BackupsKept = ReadNumber(settings, setting::BackupsKept, 0, kMostBackupsKept);
  prefs.StoreDays = ReadNumber(settings, setting::StoreDays, 1, kMostStoreDays);
  prefs.StoreMegabytes = ReadNumber(settings, setting::StoreMegabytes, 1, kMostStoreMegabytes);
  prefs.ForeColor = ReadNumber(settings, setting::ForeColor, 0, kWhite);
  prefs.BackColor = ReadNumber(settings, setting::BackColor, 0, kWhite);
  prefs.bDesktopColors = ReadFlag(settings, setting::DesktopColors);
  prefs.bLockWT = ReadFlag(settings, setting::LockWT);
  prefs.bAssociate = IsAssociated(services);
  prefs.bSndPlayer = ReadFlag(settings, setting::SndPlayer);
}

void LogStartUp(const Services& services) {
  LogError(services, SystemVersionText(services), kHeading);
  LogError(services, services.ProgramPath, kHeading);
  LogError(services, GetLocaleText(services, kLocaleCountryName), kHeading);
}

bool IsGamePath(const Services& services, const std::string& directory) {
  if (directory.empty()) return false;
  std::vector<std::string> found;
  ResumeNext([&] { ListFiles(services, found, directory, "il2*.*", false, ""); });
  return !found.empty();
}

void LocateGamePath(Document& doc, const Services& services, const std::string& directory) {
  LogAndLeave(services, "LocateGamePath", [&] {
    const std::string conf = directory.empty() ? "" : BuildPath(directory, "conf.ini");
    if (!conf.empty() && services.Files.FileExists(conf)) {
      // The test is made on the file and so never holds; the question that follows takes over.
      doc.GamePath = IsGamePath(services, conf) ? directory : "";
      return;
    }
    const std::string start = directory.empty() ? LikelyGameFolder(services) : directory;
    const std::string chosen =
        GetFolder(services, "Please locate the install directory for IL2", false, start);
    doc.GamePath = IsGamePath(services, chosen) ? chosen : "";
  });
}

bool FindGamePath(Document& doc, const Services& services) {
  while (true) {
    if (!IsGamePath(services, doc.GamePath)) LocateGamePath(doc, services, doc.GamePath);
    if (IsGamePath(services, doc.GamePath)) break;
    const Answer answer =
        services.Ask.MsgBox("Game path error.\nDo you want to locate the game path?",
                            Buttons::YesNo, Icon::Critical, "RWS V2");
    if (answer != Answer::Yes) return false;
  }
  WriteSetting(services.Settings, setting::GamePath, doc.GamePath);
  return true;
}

std::string LikelyGameFolder(const Services& services) {
  const std::string home = services.System.HomeFolder();
  for (const char* library :
       {".local/share/Steam/steamapps/common", ".steam/steam/steamapps/common",
        ".var/app/com.valvesoftware.Steam/.local/share/Steam/steamapps/common"}) {
    const std::string path = BuildPath(home, library);
    if (!services.Files.FolderExists(path)) continue;
    const std::string game = GameInLibrary(services, path);
    if (game != path) return game;
  }
  const std::string prefix = BuildPath(home, ".wine/drive_c");
  if (services.Files.FolderExists(prefix)) return prefix;
  const std::string library = BuildPath(home, ".local/share/Steam/steamapps/common");
  return services.Files.FolderExists(library) ? library : "";
}

void ChkComLine(Document& doc, Preferences& prefs, StartArguments& arguments,
                const Services& services, std::string_view commandLine) {
  LogAndLeave(services, "ChkComLine", [&] {
    const std::string text = WithoutQuotes(commandLine);
    if (text.empty()) return;
    if (Exists(services, Absolute(services, text))) return TakePath(arguments, services, text);
    const auto parts = SplitAt(text, ',');
    if (EqualNoCase(Trim(parts[0]), "-restore")) return RestoreDefaults(doc, prefs, services);
    TakePath(arguments, services, WithoutQuotes(parts[0]));
    if (parts.size() > 1) doc.ExcludedNames = parts[1];
    if (parts.size() > 2) arguments.ThirdPartEmpty = parts[2].empty();
    if (parts.size() > 3) arguments.FourthPart = parts[3];
  });
}

StartArguments ArgumentsFor(const Services& services, const std::string& path) {
  StartArguments arguments;
  TakePath(arguments, services, path);
  return arguments;
}

std::string PathAskedFor(const Services& services, std::string_view commandLine) {
  std::string text = WithoutQuotes(commandLine);
  if (!text.empty() && !Exists(services, Absolute(services, text))) {
    text = WithoutQuotes(SplitAt(text, ',').front());
    if (EqualNoCase(text, "-restore")) return "";
  }
  return Absolute(services, text);
}

int FindComLineMission(const Document& doc, const StartArguments& arguments) {
  const std::string base = GetBaseName(arguments.ComLineMission), folded = FoldName(base);
  if (base.empty()) return -1;
  const auto find = [&](auto isWanted) {
    const auto found = std::find_if(doc.Missions.begin(), doc.Missions.end(), isWanted);
    return found == doc.Missions.end() ? -1 : static_cast<int>(found - doc.Missions.begin());
  };
  int found = find([&](const Mission& m) { return m.FileName == arguments.ComLineMission; });
  if (found < 0) found = find([&](const Mission& m) { return m.BaseName == base; });
  if (found < 0) found = find([&](const Mission& m) { return FoldName(m.BaseName) == folded; });
  return found;
}

}  // namespace rws
