#include <windows.h>
// Needs the one above.
#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

#include <cstdio>
#include <cstdlib>

#include "services/arguments.h"
#include "services/paths_windows.h"

namespace rws {

const bool kShellExpands = false;

namespace {

UINT consolePage = 0;

/** A console is shown UTF-8 until the program ends. */
void ShowUtf8() {
  consolePage = ::GetConsoleOutputCP();
  if (consolePage == 0 || !::SetConsoleOutputCP(CP_UTF8)) return;
  std::atexit([] { ::SetConsoleOutputCP(consolePage); });
}

}  // namespace

std::vector<std::string> ProgramArguments(int argc, char** argv) {
  // What `main` is handed lacks every character that the code page of the system lacks.
  int count = 0;
  wchar_t** const wide = ::CommandLineToArgvW(::GetCommandLineW(), &count);
  if (!wide) return {argv, argv + argc};
  std::vector<std::string> arguments;
  for (int i = 0; i < count; ++i) arguments.push_back(Narrow(wide[i]));
  ::LocalFree(wide);
  return arguments;
}

void WriteRawOutput() {
  for (std::FILE* stream : {stdout, stderr}) ::_setmode(::_fileno(stream), _O_BINARY);
  ShowUtf8();
}

}  // namespace rws
