#include <windows.h>

#include "services/system_code_page.h"

namespace rws {

int SystemCodePage() {
  const UINT page = ::GetACP();
  if (page != CP_UTF8) return static_cast<int>(page);
  // A user may switch all programs to UTF-8; missions were written before, in the page of the
  // language.
  DWORD ofLanguage = 0;
  ::GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, LOCALE_IDEFAULTANSICODEPAGE | LOCALE_RETURN_NUMBER,
                    reinterpret_cast<wchar_t*>(&ofLanguage), sizeof(ofLanguage) / sizeof(wchar_t));
  return static_cast<int>(ofLanguage);
}

}  // namespace rws
