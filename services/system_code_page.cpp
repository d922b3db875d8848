#include "services/system_code_page.h"

#include "services/code_page.h"

#ifdef _WIN32
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#else
#include <cstdlib>
#endif

namespace rws {

int SystemCodePage() {
#ifdef _WIN32
  return static_cast<int>(::GetACP());
#else
  for (const char* variable : {"LC_ALL", "LC_CTYPE", "LANG"}) {
    const char* value = std::getenv(variable);
    if (value && *value) return CodePageOfLocale(value);
  }
  return CodePageOfLocale("");
#endif
}

}  // namespace rws
