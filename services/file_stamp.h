#pragma once

#include <cstdint>

namespace rws {

/** What tells whether a file has been written since: its size in bytes and the time of its last
    change, in nanoseconds since 1970. */
struct FileStamp {
  /** False if nothing stands there, or nothing that may be looked at. */
  bool Exists = false;
  std::uint64_t Size = 0;
  std::int64_t Modified = 0;

  bool operator==(const FileStamp&) const = default;
};

}  // namespace rws
