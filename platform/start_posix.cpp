#include <cstdio>

#include "platform/start.h"

namespace rws {

void PrepareStart() {}
void ChooseLook() {}

std::string CommandLine(int argc, char** argv) {
  // The bytes as they came: a path need not be text in any encoding.
  std::string text;
  for (int i = 1; i < argc; ++i) text.append(i > 1 ? " " : "").append(argv[i]);
  return text;
}

bool Print(const std::string& text) { return std::fputs(text.c_str(), stdout) >= 0; }

}  // namespace rws
