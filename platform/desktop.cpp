#include "platform/desktop.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include "platform/qt_prompts.h"
#include "platform/qt_shell.h"
#include "platform/qt_text.h"
#include "platform/settings_store.h"
#include "services/checksum.h"
#include "services/setting_values.h"
#include "services/system_code_page.h"
#include "services/text.h"
#include "services/update_check.h"

namespace rws {

namespace {

/** The per-user directory that takes what a read-only program directory cannot. */
std::string UserFolder() {
  const QString base = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
  const QString folder = base + QStringLiteral("/rws-edit");
  QDir().mkpath(folder);
  return ToPath(QDir::toNativeSeparators(folder));
}

CodePage ChosenCodePage(const Settings& settings) {
  const int chosen = ReadNumber(settings, setting::CodePage, 0, 9999);
  return CodePage(chosen != 0 ? chosen : SystemCodePage());
}

/** A value of the environment stands for the one of the settings, for this run only. */
void UseVariable(SettingsBackend& backend, const char* variable, const SettingValue& value) {
  const std::string text = ToPath(qEnvironmentVariable(variable));
  if (text.empty()) return;
  const auto isMeant = [&value](const std::string& name) { return EqualNoCase(name, value.Name); };
  backend.Read = [read = backend.Read, text, isMeant](
                     SettingsRoot root, const std::string& key,
                     const std::string& name) -> std::optional<SettingData> {
    if (isMeant(name)) return text;
    return read(root, key, name);
  };
  backend.Write = [write = backend.Write, isMeant](SettingsRoot root, const std::string& key,
                                                   const std::string& name,
                                                   const SettingData& data) {
    if (!isMeant(name)) write(root, key, name, data);
  };
}

/** That of the build; a host in the environment, without encryption, takes its place. */
std::string UpdateSite() {
  const std::string host = ToPath(qEnvironmentVariable("RWS_UPDATE_HOST"));
  return host.empty() ? BuiltInUpdateSite() : "http://" + host;
}

}  // namespace

Services MakeDesktopServices() {
  Services services;
  services.Settings.BaseKey = kSettingsBaseKey;
  const QString settingsFile = qEnvironmentVariable("RWS_SETTINGS_FILE");
  services.Settings.Backend = MakeSettingsStore(settingsFile);
  if (!settingsFile.isEmpty()) services.Instance = Sha1(ToPath(settingsFile)).substr(0, 8);
  UseVariable(services.Settings.Backend, "RWS_GAME_PATH", setting::GamePath);
  services.Ask = MakeQtPrompts();
  services.System = MakeQtShell();
  services.ProgramPath = ToPath(QDir::toNativeSeparators(QCoreApplication::applicationDirPath()));
  services.ProgramName = ToPath(QFileInfo(QCoreApplication::applicationFilePath()).fileName());
  // Installed, it writes nothing beside itself, not even for a user who could.
  const bool isInstalled = services.Files.FolderExists(SharedFolder(services.ProgramPath));
  const bool writesHere = !isInstalled && services.Files.CanWriteInto(services.ProgramPath);
  services.AppPath = writesHere ? services.ProgramPath : UserFolder();
  services.Page = ChosenCodePage(services.Settings);
  services.UpdateSite = UpdateSite();
  return services;
}

}  // namespace rws
