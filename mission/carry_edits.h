#pragma once

#include <string>

#include "mission/document.h"
#include "services/services.h"

/** A mission with unsaved edits can change between the two ways of reading. */
namespace rws {

/** Gives `onto` what is different between `read` and `edited`, two states of another reading of the
    same mission; its flights are known by the names that they have in `read`, lines by their words.
    "" when all of it is there; else what is not, such as "flight r0100", and `onto` is then of no
    use. */
std::string CarryEdits(const Mission& read, const Mission& edited, Mission& onto);

/** Reads a mission the other way, from the file's bytes, and carries its edits over. `saved` is the
    mission as it was read, with what showing it has changed since. "" when it is read so; else the
    reason, for the user, and the mission is as it was: no edit is ever left behind. */
std::string SetKeepsLines(const Document& doc, const Services& services, Mission& mission,
                          bool keeps, const Mission& saved);

/** A copy of the mission as it would be read that way, with its edits. A fault tells why that
   cannot be. */
Mission ReadAs(const Document& doc, const Services& services, const Mission& mission, bool keeps,
               const Mission& saved);

/** The mission as its file was when it was read last, read the same way. */
Mission FreshlyRead(const Document& doc, const Services& services, const Mission& mission);

/** A document of one mission, for rules that work on a document. */
Document DocumentOf(const Document& doc, Mission mission);

}  // namespace rws
