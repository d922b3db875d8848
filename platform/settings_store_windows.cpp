#include <windows.h>

#include <QDir>
#include <QSettings>
#include <QStringDecoder>

#include "platform/qt_text.h"
#include "platform/settings_store.h"
#include "services/faults.h"
#include "services/ini_settings.h"

namespace rws {

namespace {

QString PathOf(SettingsRoot root, const std::string& key) {
  // The classes of this user alone: those of the machine need an administrator to write them.
  QString path = QStringLiteral("HKEY_CURRENT_USER");
  if (root == SettingsRoot::ClassesRoot) path += QStringLiteral("\\Software\\Classes");
  return key.empty() ? path : path + QLatin1Char('\\') + FromPath(key);
}

/** False for a key that is not there: to read it would make it. */
bool IsThere(const QString& path) {
  const std::wstring below = path.mid(path.indexOf(QLatin1Char('\\')) + 1).toStdWString();
  HKEY found = nullptr;
  if (::RegOpenKeyExW(HKEY_CURRENT_USER, below.c_str(), 0, KEY_READ, &found) != ERROR_SUCCESS)
    return false;
  ::RegCloseKey(found);
  return true;
}

/** The spelling under which a value is stored already. */
QString StoredName(const QSettings& settings, const std::string& name) {
  // The value of a key itself has no name.
  const QString wanted = name.empty() ? QStringLiteral(".") : FromPath(name);
  for (const auto& stored : settings.childKeys())
    if (stored.compare(wanted, Qt::CaseInsensitive) == 0) return stored;
  return wanted;
}

/** A path need not be UTF-8; such a text is kept as raw bytes. */
QVariant ToVariant(const std::string& text) {
  QStringDecoder decode(QStringDecoder::Utf8);
  const QString decoded = decode(QByteArrayView(text.data(), static_cast<qsizetype>(text.size())));
  if (decode.hasError()) return QByteArray::fromStdString(text);
  return decoded;
}

SettingData FromVariant(const QVariant& value) {
  if (value.typeId() == QMetaType::Int) return value.toInt();
  if (value.typeId() == QMetaType::QByteArray) return value.toByteArray().toStdString();
  return ToPath(value.toString());
}

/** What was changed is kept, or a fault says where it is not. */
void Keep(QSettings& settings) {
  settings.sync();
  if (settings.status() == QSettings::AccessError)
    throw FileFault(fault::Permission, "write",
                    ToPath(QDir::toNativeSeparators(settings.fileName())),
                    "the settings are not kept");
}

SettingsBackend RegistrySettings() {
  SettingsBackend backend;
  backend.Read = [](SettingsRoot root, const std::string& key,
                    const std::string& name) -> std::optional<SettingData> {
    const QString path = PathOf(root, key);
    if (!IsThere(path)) return {};
    const QSettings settings(path, QSettings::NativeFormat);
    const QString stored = StoredName(settings, name);
    if (!settings.contains(stored)) return {};
    return FromVariant(settings.value(stored));
  };
  backend.Write = [](SettingsRoot root, const std::string& key, const std::string& name,
                     const SettingData& data) {
    QSettings settings(PathOf(root, key), QSettings::NativeFormat);
    const auto* text = std::get_if<std::string>(&data);
    settings.setValue(StoredName(settings, name),
                      text ? ToVariant(*text) : QVariant(std::get<std::int32_t>(data)));
    Keep(settings);
  };
  backend.Delete = [](SettingsRoot root, const std::string& key) {
    // From its parent: emptied, a key of the registry would stay.
    const auto last = key.rfind('\\');
    QSettings settings(PathOf(root, last == key.npos ? "" : key.substr(0, last)),
                       QSettings::NativeFormat);
    settings.remove(FromPath(key.substr(last + 1)));
    Keep(settings);
  };
  return backend;
}

}  // namespace

SettingsBackend MakeSettingsStore(const QString& iniFile) {
  if (iniFile.isEmpty()) return RegistrySettings();
  const FileSystem files;
  return IniSettings(files, files.GetAbsolutePathName(ToPath(iniFile)));
}

}  // namespace rws
