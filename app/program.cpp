#include "app/program.h"

#include <QCoreApplication>

#include "platform/desktop.h"
#include "platform/qt_text.h"
#ifdef _WIN32
#include <windows.h>
#endif

namespace rws {

namespace {

Session NewSession() {
  Session session;
  session.Services = MakeDesktopServices();
  return session;
}

}  // namespace

Program::Program() : Session(NewSession()), Window(Session) {}

std::string CommandLine() {
#ifdef _WIN32
  // The raw text: the arguments would have lost their quotes.
  QString text = QString::fromWCharArray(::GetCommandLineW());
  const QChar end = text.startsWith(QLatin1Char('"')) ? QLatin1Char('"') : QLatin1Char(' ');
  const auto behind = text.indexOf(end, 1);
  return behind < 0 ? "" : ToPath(text.mid(behind + 1).trimmed());
#else
  return ToPath(QCoreApplication::arguments().mid(1).join(QLatin1Char(' ')));
#endif
}

}  // namespace rws
