#include <QStandardPaths>

#include "platform/qt_text.h"
#include "platform/settings_store.h"
#include "services/ini_settings.h"

namespace rws {

namespace {

QString DefaultFile() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
         QStringLiteral("/Hollowbyte/RWS Edit.ini");
}

}  // namespace

SettingsBackend MakeSettingsStore(const QString& iniFile) {
  const FileSystem files;
  const std::string file = ToPath(iniFile.isEmpty() ? DefaultFile() : iniFile);
  return IniSettings(files, files.GetAbsolutePathName(file));
}

}  // namespace rws
