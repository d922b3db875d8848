#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "services/services.h"

namespace rws {

/** Appends every file of `directory` whose name matches `pattern` ("*.mis", in any letter case) and
    whose lower-cased name holds none of the comma-separated `fragments`: full paths when `fullPath`
    is set, bare names otherwise, sorted without regard to case. Waiting events run on the way.
    Returns the upper bound of `result`, -1 when it is empty. */
std::ptrdiff_t ListFiles(const Services& services, std::vector<std::string>& result,
                         const std::string& directory, std::string_view pattern, bool fullPath,
                         std::string_view fragments);

}  // namespace rws
