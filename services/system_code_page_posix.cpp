#include <cstdlib>

#include "services/code_page.h"
#include "services/system_code_page.h"

namespace rws {

int SystemCodePage() {
  for (const char* variable : {"LC_ALL", "LC_CTYPE", "LANG"}) {
    const char* value = std::getenv(variable);
    if (value && *value) return CodePageOfLocale(value);
  }
  return CodePageOfLocale("");
}

}  // namespace rws
