#include "cli/cli_services.h"

#include <chrono>
#include <iostream>

#include "catalogues/maps.h"
#include "library/check_files.h"
#include "library/edited_mission.h"
#include "services/arguments.h"
#include "services/error_log.h"
#include "services/faults.h"
#include "services/list_files.h"
#include "services/paths.h"
#include "services/text.h"

namespace rws {

namespace {

/** Where the program keeps backups and copies: beside itself, or among the user's own files. */
std::string OwnFolder(const Services& services) {
  const FileSystem& files = services.Files;
  const bool isInstalled = files.FolderExists(SharedFolder(services.ProgramPath));
  if (!isInstalled && files.CanWriteInto(services.ProgramPath)) return services.ProgramPath;
  const std::string data = files.UserDataFolder();
  return data.empty() ? services.ProgramPath : BuildPath(data, "rws-edit");
}

DateTime Now() {
  const auto since = std::chrono::system_clock::now().time_since_epoch();
  FileStamp stamp;
  stamp.Modified = std::chrono::duration_cast<std::chrono::nanoseconds>(since).count();
  return FileSystem::LocalTime(stamp);
}

}  // namespace

void Complain(const std::string& text) { std::cerr << "rws-cli: " << text << "\n"; }

Services NewServices(const CliOptions& options, const std::string& called) {
  Services services;
  const std::string program = services.Files.ProgramFile();
  services.ProgramPath =
      GetParentFolderName(program.empty() ? services.Files.GetAbsolutePathName(called) : program);
  services.AppPath = options.Tables.empty() ? OwnFolder(services) : options.Tables;
  services.Page = CodePage(options.CodePage);
  services.LogSink = [](const std::string& line) { Complain(line); };
  services.Ask.MsgBox = [](const std::string& text, Buttons, Icon, const std::string&) {
    Complain(text);
    return Answer::Ok;
  };
  services.System.Now = Now;
  services.Window.Close = [] {};
  return services;
}

Services WritingServices(const Services& services) {
  Services writing = services;
  writing.AppPath = OwnFolder(services);
  writing.LogSink = [](const std::string&) {};
  writing.Files.CreateFolders(writing.AppPath);
  return writing;
}

std::vector<std::string> NamedFiles(const Services& services,
                                    const std::vector<std::string>& given) {
  if (kShellExpands) return given;
  std::vector<std::string> named;
  for (const auto& path : given) {
    const std::string folder = StripFileName(path), name = path.substr(folder.size());
    std::vector<std::string> found;
    if (name.find_first_of("*?") != name.npos) {
      // Those two are all that a pattern here has of the others.
      const std::string pattern = Replace(Replace(name, "[", "[[]"), "#", "[#]");
      ResumeNext(
          [&] { ListFiles(services, found, folder.empty() ? "." : folder, pattern, false, ""); });
    }
    for (const auto& file : found) named.push_back(folder + file);
    if (found.empty()) named.push_back(path);
  }
  return named;
}

Document BaseFor(const Services& services, const CliOptions& options, const std::string& path,
                 ReadAs as) {
  Document base;
  LoadMaps(base, services);
  base.GamePath = options.Game.empty() ? GameAbove(services.Files, path) : options.Game;
  base.Untouched = as == ReadAs::Kept ? UntouchedLines::Keep : UntouchedLines::Anew;
  return base;
}

Document ReadMission(const Services& services, const CliOptions& options, const std::string& path,
                     std::string bytes, ReadAs as) {
  return ReadOneMission(BaseFor(services, options, path, as), services, path, std::move(bytes),
                        as == ReadAs::Kept);
}

}  // namespace rws
