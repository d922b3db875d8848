#pragma once

#include <cstddef>

#include "mission/update.h"
#include "session/session.h"

/** What becomes of the lines of missions that the user does not edit. */
namespace rws {

/** Makes a choice for one mission, until the run ends, and reads it that way with its edits carried
    over: one step of the history. Where it cannot be read that way without loss the user is told,
    and the choice is open again. */
void ChooseLines(Session& session, std::size_t mission, UntouchedLines choice);

/** Gives up what was chosen for one mission: the choice for all missions, which Undo does not
    change, holds for it. No step. */
void ChooseAsForAll(Session& session, std::size_t mission);

/** Reads a mission the way that its rule asks for, where it is in memory in the other one. No step:
    it has the same edits. */
void FollowLinesRule(Session& session, std::size_t mission);
/** Reads it the way that is told, or tells the user why that cannot be. */
void ReadLines(Session& session, std::size_t mission, bool keeps);

/** The mission as it was read, with what showing it has changed since. */
Mission SavedMission(const Session& session, std::size_t mission);

/** What a writing of missions of this session asks and tells. */
UpdateHooks HooksOf(Session& session);

}  // namespace rws
