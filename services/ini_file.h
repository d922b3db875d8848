#pragma once

#include <string>
#include <string_view>

#include "services/services.h"

/** Plain files of sections and `key=value` lines. Sections and keys are found without regard to
    case. */
namespace rws {

/** The value, at most 256 bytes of it, or `fallback` when file, section or key is not there. */
std::string ReadIniValue(const Services& services, const std::string& file,
                         std::string_view section, std::string_view key, std::string_view fallback);

/** Stores a value; one that is empty after trimming is stored as the word "Empty". All other lines
    of the file are kept as they are. A file that cannot be read or written is a fault. */
void WriteIniValue(const Services& services, const std::string& file, std::string_view section,
                   std::string_view key, std::string_view value);

/** The same for the content of such a file: what `ReadIniValue` gives, and the content after
    `WriteIniValue`. */
std::string IniValue(std::string_view bytes, std::string_view section, std::string_view key,
                     std::string_view fallback);
std::string WithIniValue(std::string_view bytes, std::string_view section, std::string_view key,
                         std::string_view value);

}  // namespace rws
