#pragma once

#include <string>

#include "mission/writer.h"
#include "session/session.h"

namespace rws {

/** Writes a mission, by its full path, as an Update does, also one whose file has gone or that an
    Update would pass over, and reads it anew. A failure is told and leaves its edits unsaved; false
    then. */
bool SaveOne(Session& session, const std::string& path, const ShownValues& shown);

/** Gives a mission its file's own state, as a step of the history. False when the file has gone or
    cannot be read; nothing has changed then. */
bool RevertOne(Session& session, std::size_t mission, const std::string& title);

}  // namespace rws
