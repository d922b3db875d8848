#pragma once

#include <QString>

#include "services/settings.h"

namespace rws {

/** The settings store of the running system: the registry on Windows, else an ini file under the
    user's configuration directory. A path names another ini file, on every system. What cannot be
    kept is a fault. */
SettingsBackend MakeSettingsStore(const QString& iniFile);

}  // namespace rws
