#include "app/program.h"

#include <QtGlobal>

#include "catalogues/maps.h"
#include "services/faults.h"
#include "services/numbers.h"
#include "services/paths.h"
#include "services/platform/desktop.h"
#include "services/platform/qt_text.h"
#include "services/setting_values.h"

namespace rws {

namespace {

void ReadSettings(Document& doc, const Services& services) {
  const Settings& settings = services.Settings;
  doc.SavePromptMode = static_cast<int>(Val(ReadSetting(settings, setting::SaveWarn)));
  doc.bBackup = ReadFlag(settings, setting::Backup);
  doc.GamePath = ToPath(qEnvironmentVariable("RWS_GAME_PATH"));
  if (doc.GamePath.empty()) doc.GamePath = ReadSetting(settings, setting::GamePath);
  doc.ImagesPath = BuildPath(services.AppPath, "Aircraft Images");
}

}  // namespace

Program::Program() : Services(MakeDesktopServices()), Window(Doc, Services) {
  const std::string log = BuildPath(Services.AppPath, "Error.txt");
  if (Services.Files.FileExists(log)) ResumeNext([&] { Services.Files.DeleteFile(log); });
  ReadSettings(Doc, Services);
  Window.InitForm();
  LoadMaps(Doc, Services);
}

void Program::Open(const std::string& path) {
  const FileSystem& files = Services.Files;
  std::string folder = path.empty() ? "" : files.GetAbsolutePathName(path);
  if (files.FileExists(folder)) {
    Window.ComLineMission = GetFileName(folder);
    folder = GetParentFolderName(folder);
  }
  if (!files.FolderExists(folder)) folder.clear();
  Window.ComLinePath = folder;
  Doc.MissionDir =
      folder.empty() ? ReadSetting(Services.Settings, setting::LastDirPath, Doc.GamePath) : folder;
  Window.Start();
}

}  // namespace rws
