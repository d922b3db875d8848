#pragma once

#include <string>

#include "mission/document.h"
#include "services/services.h"

/** A mission with unsaved edits can change between the two ways of reading. */
namespace rws {

/** `onto` with what is different between `read` and `edited`, two states of another reading of the
    same file. Flights are known by the names that they were read by, waypoints by their places. */
void CarryEdits(const Mission& read, const Mission& edited, Mission& onto);

/** Reads a mission the other way, from the file's bytes, and carries its edits over. `saved` is the
    mission as it was read, with what showing it has changed since. */
void SetKeepsLines(Document& doc, const Services& services, std::size_t mission, bool keeps,
                   const Mission& saved);

/** A copy of the mission as it would be read that way, with its edits. */
Mission ReadAs(const Document& doc, const Services& services, const Mission& mission, bool keeps,
               const Mission& saved);

/** The mission as its file was when it was read last, read the same way. */
Mission FreshlyRead(const Document& doc, const Services& services, const Mission& mission);

}  // namespace rws
