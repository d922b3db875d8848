#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "mission/document.h"
#include "services/services.h"

namespace rws {

/** A line that differs between a mission's file and what would be written with the edits alone:
    its indexes among the lines of both texts as `SplitLines` gives them, from 0. */
struct ChangedLine {
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  std::size_t Old = kNone, New = kNone;  // `kNone` on the side that has no such line

  bool operator==(const ChangedLine&) const = default;
};

struct TakenBack {
  /** The mission without the change; nothing if that cannot be. */
  std::optional<Mission> Record;
  /** How many lines beside the one that was meant are the file's own again: those that belong to
      it, such as all others of a flight that had been removed. */
  std::size_t Others = 0;
};

/** Takes one of the user's edits back, so that its line is written as the file has it. Every other
    edit stays, or goes with it as a whole; nothing is given that would write a line that neither
   the file nor the edited mission has. `saved` is the mission as it was read, with what showing it
   has changed since. Touches no file and not the mission. */
TakenBack TakeBack(const Document& doc, const Services& services, const Mission& mission,
                   const Mission& saved, const ChangedLine& line);

}  // namespace rws
