#pragma once

#include <string>
#include <vector>

#include "services/clock.h"
#include "services/services.h"

/** Updates that a crash or a power cut ended half way, looked for at the start of the program. */
namespace rws {

enum class InterruptedState {
  /** Nothing stands at the mission's path. */
  Missing,
  /** What stands there is neither the file from before the Update nor the new one: half written, or
      changed since by another program. */
  Torn,
  /** The copy tells no mission. */
  Unknown
};

/** A mission as it was before an Update that did not come to its end. */
struct Interrupted {
  /** Full path; "" when unknown. */
  std::string Mission;
  /** Full path of the copy that was made of it. */
  std::string Copy;
  InterruptedState State = InterruptedState::Unknown;
  /** When the copy was made. */
  DateTime Time;
};

/** Looks for copies that Updates have left in `AppPath`, and gives those that may be needed. A copy
    of a mission that stands whole, old or new, has done its work and is deleted with its note, as
   is a note without a copy. A copy whose note is missing or broken is given as of an unknown
   mission. One whose mission cannot be read at the moment stays and is not given; neither is any
   while another program is writing missions. Never fails. */
std::vector<Interrupted> FindInterrupted(const Services& services);

/** Puts a copy back to its mission's path; copy and note are gone then. A torn file is kept among
    the backups. Nothing is replaced where the mission was missing. A failure is a fault that names
    file and reason; the copy still stands then, or already at the mission's path. */
void GiveBack(const Services& services, const Interrupted& interrupted);

/** Keeps the copy, and its note, under a name with date and time that is not looked for again.
   Gives that name; a failure is a fault and leaves all as it was. */
std::string Dismiss(const Services& services, const Interrupted& interrupted);

}  // namespace rws
