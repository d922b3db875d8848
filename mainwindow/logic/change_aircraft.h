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
  /** A renamed flight was the player's, who now flies nowhere. An aircraft that nobody may fly
     takes the player away as well, but is not told here. */
  bool PlayerLost = false;
};

/** Gives flights of the current mission another aircraft, if that was changed, and always a new
   name in the group chosen, in the order given; each gets the companion of the aircraft.
    `weaponText` is the loadout shown: one that the new aircraft lacks becomes the default. */
AircraftChange ChangeAirCraft(Document& doc, const Catalogues& tables, const Services& services,
                              const AircraftChoice& choice, const std::vector<std::size_t>& flights,
                              std::string_view weaponText);

}  // namespace rws
