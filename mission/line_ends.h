#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "mission/line_array.h"
#include "services/services.h"

namespace rws {

/** The text of a file that is one single line by the rule of the reader, rebuilt with a carriage
    return and line feed behind each of its line-feed parts, blank ones dropped. Nothing when the
   file needs no repair. */
std::optional<std::string> RepairedLineEnds(std::string_view bytes);

/** The lines of a mission's file as the reader takes them, its line ends repaired. */
LineArray LinesOfFile(std::string bytes);

/** Repairs a file with bare line feeds on disk, without which it could not be read. The new text
    takes the file's name when it is whole and on disk. A failure, which a read-only file is too,
    leaves the old file, silently; its reason comes back, "" when there was none. */
std::string NormaliseLineEnds(const Services& services, const std::string& path);

}  // namespace rws
