#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "services/services.h"
#include "services/setting_values.h"

/** File, folder and colour pickers. Cancel gives an empty result; a failure is logged under the
    picker's name and gives one too. An empty title becomes "Please select a file" or "Please select
    a folder". */
namespace rws {

/** Lets several files be chosen: their full paths go to `result`, which is erased first. Returns
    their folder, which is also stored in `setting` when one is given, or "". */
std::string GetFiles(const Services& services, std::vector<std::string>& result,
                     std::string_view title, std::string_view filter, const SettingValue* setting);

/** One file by its full path; its folder is stored in `setting` when one is given. */
std::string GetFile(const Services& services, std::string_view title, std::string_view filter,
                    const SettingValue* setting);

/** A file to write, by its full path. A name that is taken is asked about, unless the file is only
    named and never written. */
enum class SaveFor { Writing, Naming };
std::string GetSaveFile(const Services& services, std::string_view title,
                        std::string_view defaultName, std::string_view filter,
                        std::string_view initialFolder, SaveFor use = SaveFor::Writing);

std::string GetFolder(const Services& services, std::string_view title, bool allowNewFolder,
                      std::string_view initialFolder);

/** The chosen colour, a blue-green-red number; cancel keeps the initial one. */
std::int32_t GetColor(const Services& services, std::int32_t initial);

/** `folder`, or the nearest parent of it that exists; the place where pickers start when there is
    none: "C:\" on Windows, the user's home elsewhere. */
std::string ExistingFolder(const Services& services, std::string folder);

}  // namespace rws
