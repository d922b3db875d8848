#include "platform/text_editor.h"

#include "platform/qt_text.h"

#ifdef _WIN32
#include <windows.h>
// The next header needs the one above.
#include <shellapi.h>
#else
#include <QDesktopServices>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>
#endif

namespace rws {

#ifdef _WIN32

int OpenInTextEditor(const std::string& path) {
  // Unquoted: Notepad takes all that follows its name for one path.
  const std::wstring file = FromPath(path).toStdWString();
  const auto code = reinterpret_cast<INT_PTR>(
      ::ShellExecuteW(nullptr, L"open", L"notepad.exe", file.c_str(), nullptr, SW_SHOWNORMAL));
  return static_cast<int>(code);
}

#else

namespace {

constexpr int kFailedCode = 31, kDoneCode = 33, kPatienceMs = 3000;

/** Runs one of the desktop's tools to its end; true if it says that it worked. A program that it
    has started runs on. */
bool RunTool(QProcess& tool, const char* name, const QStringList& arguments) {
  const QString program = QStandardPaths::findExecutable(QLatin1String(name));
  if (program.isEmpty()) return false;
  tool.setStandardErrorFile(QProcess::nullDevice());
  tool.start(program, arguments, QIODevice::ReadOnly);
  return tool.waitForFinished(kPatienceMs) && tool.exitStatus() == QProcess::NormalExit &&
         tool.exitCode() == 0;
}

bool Launches(const char* launcher, const QStringList& arguments) {
  QProcess tool;
  // The editor keeps this output; a pipe would end with us and take the editor along.
  tool.setStandardOutputFile(QProcess::nullDevice());
  return RunTool(tool, launcher, arguments);
}

/** By the desktop's program for plain text. A mission has no type of its own there, so that the
    program for the file itself may be none, or any. */
bool OpenByDesktopEntry(const QString& file) {
  QProcess query;
  const QStringList question{QStringLiteral("query"), QStringLiteral("default"),
                             QStringLiteral("text/plain")};
  if (!RunTool(query, "xdg-mime", question)) return false;
  const QString entry = QString::fromLocal8Bit(query.readAllStandardOutput()).trimmed();
  if (entry.isEmpty()) return false;
  if (Launches("gtk-launch", {entry, file})) return true;
  const QString path = QStandardPaths::locate(QStandardPaths::ApplicationsLocation, entry);
  return !path.isEmpty() && Launches("gio", {QStringLiteral("launch"), path, file});
}

/** By the editor of the environment, if it is one that needs no terminal. */
bool OpenByEnvironment(const QString& file) {
  static const QStringList kGraphical = QStringLiteral(
                                            "code featherpad geany gedit gnome-text-editor gvim "
                                            "kate kwrite leafpad mousepad pluma xed")
                                            .split(u' ');
  for (const char* variable : {"VISUAL", "EDITOR"}) {
    QStringList command = QProcess::splitCommand(qEnvironmentVariable(variable));
    if (command.isEmpty()) continue;
    const QString program = command.takeFirst();
    if (kGraphical.contains(QFileInfo(program).fileName()) &&
        QProcess::startDetached(program, command << file))
      return true;
  }
  return false;
}

}  // namespace

int OpenInTextEditor(const std::string& path) {
  if (path.empty()) return kFailedCode;
  const QString file = FromPath(path);
  const bool open = OpenByDesktopEntry(file) || OpenByEnvironment(file) ||
                    QDesktopServices::openUrl(QUrl::fromLocalFile(file));
  return open ? kDoneCode : kFailedCode;
}

#endif

}  // namespace rws
