#include "services/platform/desktop.h"

#include <QCoreApplication>
#include <QDir>
#include <QLocale>
#include <QStandardPaths>

#include "services/numbers.h"
#include "services/platform/qt_prompts.h"
#include "services/platform/qt_shell.h"
#include "services/platform/qt_text.h"
#include "services/platform/settings_store.h"
#include "services/setting_values.h"

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
  const std::string chosen = ReadSetting(settings, setting::CodePage);
  if (!chosen.empty()) return CodePage(static_cast<int>(Val(chosen)));
  return CodePage(CodePageOfLocale(ToPath(QLocale::system().name())));
}

}  // namespace

Services MakeDesktopServices() {
  Services services;
  services.Settings.BaseKey = kSettingsBaseKey;
  services.Settings.Backend = MakeSettingsStore(qEnvironmentVariable("RWS_SETTINGS_FILE"));
  services.Ask = MakeQtPrompts();
  services.System = MakeQtShell();
  services.ProgramPath = ToPath(QDir::toNativeSeparators(QCoreApplication::applicationDirPath()));
  services.AppPath =
      services.Files.CanWriteInto(services.ProgramPath) ? services.ProgramPath : UserFolder();
  services.Page = ChosenCodePage(services.Settings);
  return services;
}

}  // namespace rws
