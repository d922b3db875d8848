#include "app/program.h"

#include <string_view>

#include "platform/desktop.h"
#include "platform/qt_text.h"
#include "services/version.h"
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

std::string CommandLine(int argc, char** argv) {
#ifdef _WIN32
  (void)argc;
  (void)argv;
  // The raw text: the arguments would have lost their quotes.
  QString text = QString::fromWCharArray(::GetCommandLineW());
  const QChar end = text.startsWith(QLatin1Char('"')) ? QLatin1Char('"') : QLatin1Char(' ');
  const auto behind = text.indexOf(end, 1);
  return behind < 0 ? "" : ToPath(text.mid(behind + 1).trimmed());
#else
  // The bytes as they came: a path need not be text in any encoding.
  std::string text;
  for (int i = 1; i < argc; ++i) text.append(i > 1 ? " " : "").append(argv[i]);
  return text;
#endif
}

std::string AnswerTo(int argc, char** argv) {
  const std::string_view option = argc == 2 ? argv[1] : "";
  if (option == "--version") return std::string(kProgramTitle) + " " + VersionText() + "\n";
  if (option != "--help") return "";
  return "Usage: rws-edit [DIRECTORY | MISSION]\n"
         "       rws-edit -restore\n"
         "Shows and edits the missions of a directory; without an argument, of the one used last.\n"
         "\n"
         "  -restore    forget all settings\n"
         "  --help      print this and end\n"
         "  --version   print the version and end\n";
}

}  // namespace rws
