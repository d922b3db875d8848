#pragma once

#include <cstddef>
#include <string>

#include "mission/document.h"
#include "mission/line_diff.h"
#include "mission/writer.h"
#include "services/services.h"

/** What an Update of a mission would make of its file, before it is done. */
namespace rws {

/** A mission's file and what it would become in both ways. */
struct PendingLines {
  LineArray File;  // as it was read
  LineArray Kept;  // with the edits alone
  LineArray Anew;  // made anew from the records
  /** Why one of the two cannot be written; "" if it can. */
  std::string KeptFault, AnewFault;
};

/** The parts of it that cost something. */
enum class PendingPart { Kept, Anew, Both };

/** `saved` is the mission as it was read, with what showing it has changed since. */
PendingLines LookAhead(const Document& doc, const Services& services, const Mission& mission,
                       const ShownValues& shown, const Mission& saved, PendingPart part);

/** Lines of the file that differ from what would be written. */
std::size_t ChangedLines(const LineArray& file, const LineArray& written);

/** True if two texts are the same mission to the game: no line, section, word or value is lost,
    added or altered. Blanks, the order of sections and keys, the letter case of keys and the format
    of numbers mean nothing. */
bool SameMeaning(const LineArray& a, const LineArray& b);

/** What an Update without an edit, which makes the file anew from the records, would do to it. */
struct MadeAnewCheck {
  /** It would be the same mission to the game. */
  bool KeepsMeaning = true;
  /** How many lines would differ, also in what means nothing. */
  std::size_t Lines = 0;
};

MadeAnewCheck CheckMadeAnew(const Document& doc, const Services& services, const Mission& mission,
                            const ShownValues& shown);

/** "3 lines changed, 46 more rewritten"; "No line changes". */
std::string PendingText(std::size_t edited, std::size_t rewritten);

}  // namespace rws
