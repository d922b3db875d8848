#pragma once

#include <string>
#include <string_view>

namespace rws {

/** What leads from one text to another, as a unified diff that `patch` takes: three lines around
    each change, "\ No newline at end of file" behind a last line without one. Lines end in a line
    feed, and all their other bytes, a carriage return included, count and stand as they are. "" for
    texts that are the same. */
std::string UnifiedDiff(std::string_view oldName, std::string_view newName,
                        std::string_view oldText, std::string_view newText);

}  // namespace rws
