#pragma once

#include <string>
#include <vector>

#include "mission/document.h"
#include "services/services.h"

/** Writes missions so that the file keeps all that was not edited: every line, word and blank, the
    order of sections and keys, the line ends. */
namespace rws {

/** The lines of the mission's file with the edits of its records: each enters the words where its
    value stands. */
LineArray MergedLines(const Document& doc, const Services& services, const Mission& mission);

/** What is wrong with merged lines; nothing when they are right. They are when they read back as
    the edited records, and hold every line that no edit is about just as it was. */
struct MergeFault {
  std::string Reason;              // "" if all is right
  std::vector<std::string> Lines;  // the lines in question, as the file has them

  bool None() const { return Reason.empty(); }
};

MergeFault CheckMerged(const Document& doc, const Services& services, const Mission& mission,
                       const LineArray& merged);

/** Both in one: false, and nothing in `output` to be used, when the lines are not right; `reason`
    then tells why, with the lines. */
bool BuildKeptFile(const Document& doc, const Services& services, const Mission& mission,
                   LineArray& output, std::string* reason = nullptr);

}  // namespace rws
