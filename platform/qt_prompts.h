#pragma once

#include "services/prompts.h"

namespace rws {

/** Questions by the toolkit's own boxes, over the active window. The status bar notice is left to
   the main window. */
Prompts MakeQtPrompts();

}  // namespace rws
