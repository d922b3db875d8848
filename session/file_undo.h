#pragma once

#include <string>
#include <utility>
#include <vector>

#include "services/services.h"
#include "session/file_changes.h"

namespace rws {

/** Takes the changes of a step back, the last one first: moved files get their old names, deleted
    and replaced ones come out of the store, created ones go into it. First all is looked at: where
    something has changed on disk since, nothing is done. Should it fail on the way, what was done
   is done again. Never over a file that the step does not know. Gives the reason, "" for success;
    `Stored` of a created file tells then where it is. */
std::string UndoFiles(const Services& services, std::vector<FileChange>& changes);

/** Does the changes of a step again, under the same rules. */
std::string RedoFiles(const Services& services, std::vector<FileChange>& changes);

/** The same for changes that have nothing to do with each other: each is done, or left out where
    something has changed on disk since or it fails. Gives the reasons of those that are left out.
 */
std::vector<std::string> UndoEachFile(const Services& services, std::vector<FileChange>& changes);
std::vector<std::string> RedoEachFile(const Services& services, std::vector<FileChange>& changes);

/** Old and new names of the files that a step has renamed within their folder in all, detours left
    out. */
std::vector<std::pair<std::string, std::string>> NetRenames(const std::vector<FileChange>& changes);

}  // namespace rws
