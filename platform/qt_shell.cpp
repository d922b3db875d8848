#include "platform/qt_shell.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QDateTime>
#include <QDesktopServices>
#include <QDir>
#include <QGuiApplication>
#include <QLocale>
#include <QOperatingSystemVersion>
#include <QStandardPaths>
#include <QSysInfo>
#include <QUrl>

#include "platform/desktop_association.h"
#include "platform/event_pump.h"
#include "platform/fetch.h"
#include "platform/instance_channel.h"
#include "platform/instance_lock.h"
#include "platform/qt_text.h"
#include "platform/sound_player.h"
#include "platform/text_editor.h"

#ifdef _WIN32
#include <windows.h>
// The next header needs the one above.
#include <shlobj.h>
#endif

namespace rws {

namespace {

constexpr int kFailedCode = 31, kDoneCode = 33;

QUrl AddressOf(const std::string& path) {
  const bool isPage = path.starts_with("http://") || path.starts_with("https://");
  return isPage ? QUrl(FromPath(path)) : QUrl::fromLocalFile(FromPath(path));
}

int OpenByDesktop(const std::string&, const std::string& path) {
  if (path.empty()) return kFailedCode;
  return QDesktopServices::openUrl(AddressOf(path)) ? kDoneCode : kFailedCode;
}

DateTime LocalNow() {
  const QDateTime now = QDateTime::currentDateTime();
  return {now.date().year(), now.date().month(),  now.date().day(),
          now.time().hour(), now.time().minute(), now.time().second()};
}

OsVersion SystemVersion() {
  OsVersion version;
#ifdef _WIN32
  const auto running = QOperatingSystemVersion::current();
  version.Platform = 2;
  version.Major = running.majorVersion();
  version.Minor = running.minorVersion();
#endif
  version.ProductName = ToPath(QSysInfo::prettyProductName());
  return version;
}

/** The lock lies beside a settings file of its own, else with what the user's session keeps. Not
   under the name ".lock": the settings lock themselves with that. */
QString LockFile() {
  const QString settings = qEnvironmentVariable("RWS_SETTINGS_FILE");
  if (!settings.isEmpty()) return settings + QStringLiteral(".instance");
#ifdef _WIN32
  constexpr auto kPlace = QStandardPaths::TempLocation;
#else
  constexpr auto kPlace = QStandardPaths::RuntimeLocation;
#endif
  return QStandardPaths::writableLocation(kPlace) + QStringLiteral("/rws-edit.instance");
}

}  // namespace

Shell MakeQtShell() {
  const auto pump = std::make_shared<EventPump>();
  const auto fetcher = std::make_shared<Fetcher>();
  const auto sound = std::make_shared<SoundPlayer>();
  const auto lock = std::make_shared<InstanceLock>(LockFile());
  Shell shell;
  shell.TakeInstance = [lock] { return lock->Take(); };
  shell.TellInstance = [](const std::string& path) {
    TellListener(InstanceChannelName(LockFile()), path);
  };
  const auto listener = std::make_shared<std::unique_ptr<InstanceListener>>();
  shell.HearOtherStarts = [listener](std::function<void(const std::string&)> heard) {
    *listener =
        std::make_unique<InstanceListener>(InstanceChannelName(LockFile()), std::move(heard));
  };
  shell.Execute = OpenByDesktop;
  shell.OpenText = OpenInTextEditor;
  shell.StartSound = [sound](const std::string& path) { sound->Start(FromPath(path)); };
  shell.StopSound = [sound] { sound->Stop(); };
  shell.SetClipboard = [](const std::string& text) {
    QGuiApplication::clipboard()->setText(FromPath(text));
  };
  shell.ClipboardText = [] { return ToPath(QGuiApplication::clipboard()->text()); };
  shell.NotifyAssocChanged = [] {
#ifdef _WIN32
    ::SHChangeNotify(SHCNE_ASSOCCHANGED, SHCNF_IDLIST, nullptr, nullptr);
#endif
    // Other desktops watch their folders themselves.
  };
  shell.Fetch = [fetcher](const std::string& url) { return fetcher->Fetch(url); };
  shell.CancelFetch = [fetcher] { fetcher->Cancel(); };
#ifndef _WIN32
  shell.Associate = [](bool on) {
    return AssociateDesktop(FileSystem(), ToPath(QCoreApplication::applicationFilePath()), on);
  };
  shell.IsAssociated = [] { return IsDesktopAssociated(FileSystem()); };
#endif
  shell.PumpEvents = [pump] { pump->Pump(); };
  shell.Now = LocalNow;
  shell.Version = SystemVersion;
  shell.LocaleText = [](int) { return ToPath(QLocale::system().name()); };
  shell.HomeFolder = [] { return ToPath(QDir::homePath()); };
  return shell;
}

}  // namespace rws
