#pragma once

namespace rws {

/** What the package installs, for an association without it: the file types and the desktop entry.
 */
extern const char kPackagedTypes[], kPackagedEntry[];

}  // namespace rws
