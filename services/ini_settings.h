#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "services/file_system.h"
#include "services/settings.h"

namespace rws {

/** The settings in a file of their own. A change touches its own line alone, and is on disk when
    the call returns; a file that cannot be read or written is a fault and stays as it is. Two
    programs that change settings of one file wait for each other. */
SettingsBackend IniSettings(FileSystem files, const std::string& file);

/** A value in such a file's content; nothing if it is not there. */
std::optional<std::string> StoredSetting(std::string_view bytes, SettingsRoot root,
                                         std::string_view key, std::string_view name);
/** The content with a value changed, or added. */
std::string WithSetting(std::string_view bytes, SettingsRoot root, std::string_view key,
                        std::string_view name, std::string_view text);
/** The content without a key and all below it. */
std::string WithoutSettings(std::string_view bytes, SettingsRoot root, std::string_view key);

}  // namespace rws
