#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "catalogues/catalogues.h"
#include "mission/document.h"
#include "services/services.h"

namespace rws {

/** What the change-aircraft dialog hands back. */
struct AircraftChoice {
  std::string AircraftText;  // of the aircraft's row; blank or "Cancel" for no change
  std::string Squad;         // regiment code for the new names, may be empty
  std::string CodeOut;
  bool Changed = false;  // the aircraft itself, not only the squadron
};

struct AircraftChange {
  /** False when nothing was chosen, or, logged, when it failed. */
  bool Done = false;
  /** The player flies nowhere now: a renamed flight was his, or nobody may fly the aircraft,
      whoever's flight it was. */
  bool PlayerLost = false;
  /** A sentence for the user, in the encoding of mission text, about loadouts that the new aircraft
      does not know; "" when it knows them all. */
  std::string LoadoutsLost;
};

/** Gives flights of the current mission another aircraft, if that was changed, and always a new
   name in the group chosen, in the order given; each gets the companion of the aircraft.
    `weaponText` is the loadout shown: one that the new aircraft lacks becomes the default. */
AircraftChange ChangeAirCraft(Document& doc, const Catalogues& tables, const Services& services,
                              const AircraftChoice& choice, const std::vector<std::size_t>& flights,
                              std::string_view weaponText);

}  // namespace rws
