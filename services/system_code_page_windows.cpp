#include <windows.h>

#include "services/system_code_page.h"

namespace rws {

int SystemCodePage() { return static_cast<int>(::GetACP()); }

}  // namespace rws
