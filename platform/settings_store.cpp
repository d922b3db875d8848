#include "platform/settings_store.h"

#include <QDir>
#include <QSettings>
#include <QStandardPaths>
#include <QStringDecoder>
#include <memory>

#include "platform/qt_text.h"
#include "services/faults.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace rws {

namespace {

QString RootName(SettingsRoot root) {
  return root == SettingsRoot::CurrentUser ? QStringLiteral("HKEY_CURRENT_USER")
                                           : QStringLiteral("HKEY_CLASSES_ROOT");
}

#ifdef _WIN32
/** The classes of this user alone: those of the machine need an administrator to write them. */
QString RegistryRoot(SettingsRoot root) {
  return root == SettingsRoot::CurrentUser ? RootName(root)
                                           : QStringLiteral("HKEY_CURRENT_USER\\Software\\Classes");
}
#endif

/** False for a key of the registry that is not there: to read it would make it. */
bool CanRead(const QString& iniFile, SettingsRoot root, const std::string& key) {
#ifdef _WIN32
  if (!iniFile.isEmpty()) return true;
  const QString path = RegistryRoot(root) + QLatin1Char('\\') + FromPath(key);
  const std::wstring below = path.mid(path.indexOf(QLatin1Char('\\')) + 1).toStdWString();
  HKEY found = nullptr;
  if (::RegOpenKeyExW(HKEY_CURRENT_USER, below.c_str(), 0, KEY_READ, &found) != ERROR_SUCCESS)
    return false;
  ::RegCloseKey(found);
#else
  Q_UNUSED(iniFile)
  Q_UNUSED(root)
  Q_UNUSED(key)
#endif
  return true;
}

/** A settings object that stands at the key; made anew for each call, as the store itself is. */
std::unique_ptr<QSettings> OpenKey(const QString& iniFile, SettingsRoot root,
                                   const std::string& key) {
  const QString path = FromPath(key);
#ifdef _WIN32
  if (iniFile.isEmpty())
    return std::make_unique<QSettings>(
        RegistryRoot(root) + (path.isEmpty() ? path : QLatin1Char('\\') + path),
        QSettings::NativeFormat);
#endif
  auto settings = std::make_unique<QSettings>(iniFile.isEmpty() ? DefaultSettingsFile() : iniFile,
                                              QSettings::IniFormat);
  settings->beginGroup(RootName(root));
  if (!path.isEmpty())
    settings->beginGroup(QString(path).replace(QLatin1Char('\\'), QLatin1Char('/')));
  return settings;
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
  // An unquoted comma makes a list of a text that another program wrote.
  if (value.typeId() == QMetaType::QStringList)
    return ToPath(value.toStringList().join(QStringLiteral(", ")));
  return ToPath(value.toString());
}

/** What was changed is on disk, or a fault says where it is not. */
void Keep(QSettings& settings) {
  settings.sync();
  // What else stands in the file, and is none of it, keeps nothing from being written.
  if (settings.status() == QSettings::AccessError)
    throw FileFault(fault::Permission, "write",
                    ToPath(QDir::toNativeSeparators(settings.fileName())),
                    "the settings are not kept");
}

}  // namespace

QString DefaultSettingsFile() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
         QStringLiteral("/Hollowbyte/RWS Edit.ini");
}

SettingsBackend MakeSettingsStore(const QString& iniFile) {
  SettingsBackend backend;
  backend.Read = [iniFile](SettingsRoot root, const std::string& key,
                           const std::string& name) -> std::optional<SettingData> {
    if (!CanRead(iniFile, root, key)) return {};
    const auto settings = OpenKey(iniFile, root, key);
    const QString stored = StoredName(*settings, name);
    if (!settings->contains(stored)) return {};
    return FromVariant(settings->value(stored));
  };
  backend.Write = [iniFile](SettingsRoot root, const std::string& key, const std::string& name,
                            const SettingData& data) {
    const auto settings = OpenKey(iniFile, root, key);
    const auto* text = std::get_if<std::string>(&data);
    settings->setValue(StoredName(*settings, name),
                       text ? ToVariant(*text) : QVariant(std::get<std::int32_t>(data)));
    Keep(*settings);
  };
  backend.Delete = [iniFile](SettingsRoot root, const std::string& key) {
    // From its parent: emptied, a key of the registry would stay.
    const auto last = key.rfind('\\');
    const std::string parent = last == key.npos ? "" : key.substr(0, last);
    const auto settings = OpenKey(iniFile, root, parent);
    settings->remove(FromPath(key.substr(last + 1)));
    Keep(*settings);
  };
  return backend;
}

}  // namespace rws
