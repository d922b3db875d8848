#pragma once

#include "services/services.h"

namespace rws {

/** Services over the running desktop: the user's settings, or those of the ini file that the
    environment variable RWS_SETTINGS_FILE names, with the game directory of RWS_GAME_PATH if set;
   the program's directory for what is written, or a per-user directory when it cannot be written
   to. */
Services MakeDesktopServices();

}  // namespace rws
