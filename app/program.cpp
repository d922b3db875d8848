#include "app/program.h"

#include <string_view>

#include "platform/desktop.h"
#include "services/version.h"

namespace rws {

namespace {

Session NewSession() {
  Session session;
  session.Services = MakeDesktopServices();
  return session;
}

}  // namespace

Program::Program() : Session(NewSession()), Window(Session) {}

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
