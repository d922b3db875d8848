#pragma once

#include <string>
#include <vector>

namespace rws {

/** One thing that a command did to a file of the user's. Paths are full and in the spelling of the
    disk. */
struct FileChange {
  enum Kind { Created, Replaced, Deleted, Moved };
  Kind What;
  std::string Path;
  /** Where a moved file stands now. */
  std::string To;
  /** Where the bytes lie that were replaced or deleted; "" when they could not be kept. */
  std::string Stored;
  /** Likewise those that the command wrote, once they have been taken away again. */
  std::string StoredNew;
  /** SHA-1 of both. */
  std::string OldSum, NewSum;
};

/** Collects what is done to files while it is open. */
struct FileJournal {
  int Open = 0;
  bool Paused = false;
  std::vector<FileChange> Changes;
};

}  // namespace rws
