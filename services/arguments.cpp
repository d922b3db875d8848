#include "services/arguments.h"

#ifdef _WIN32
#include <windows.h>
// Needs the one above.
#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

#include <cstdio>
#include <filesystem>
#endif

namespace rws {

std::vector<std::string> ProgramArguments(int argc, char** argv) {
#ifdef _WIN32
  // What `main` is handed lacks every character that the code page of the system lacks.
  (void)argv;
  wchar_t** const wide = ::CommandLineToArgvW(::GetCommandLineW(), &argc);
  std::vector<std::string> arguments;
  for (int i = 0; i < argc; ++i) {
    const std::u8string text = std::filesystem::path(wide[i]).u8string();
    arguments.emplace_back(text.begin(), text.end());
  }
  ::LocalFree(wide);
  return arguments;
#else
  return {argv, argv + argc};
#endif
}

void WriteRawOutput() {
#ifdef _WIN32
  ::_setmode(::_fileno(stdout), _O_BINARY);
#endif
}

}  // namespace rws
