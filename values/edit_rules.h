#pragma once

#include <string>
#include <string_view>

#include "catalogues/catalogues.h"
#include "mission/records.h"
#include "services/faults.h"
#include "services/services.h"

/** What values of a mission may be: the same as the window's boxes and lists take. A value that may
    not be is a fault whose text says what it is to be. */
namespace rws {

/** A path or value that cannot be taken, for the reason given. */
Fault ValueFault(const std::string& reason);

/** Tables that values are checked against, and whether what they lack is taken all the same. */
struct EditRules {
  const Catalogues& Tables;
  const rws::Services& Services;
  bool Force = false;
};

/** For every value: no line end or other control character, no blank at its ends, nothing that the
    game takes for a comment. */
void CheckText(std::string_view value);

/** A whole number from `least` to `most`. */
void CheckWhole(std::string_view value, int least, int most);

/** A whole number, as a waypoint has them. */
void CheckWaypointNumber(std::string_view value);

/** Decimal hours of a day. */
void CheckHours(std::string_view value);

/** Name of a picture; "" for the usual one. */
void CheckPicture(std::string_view value);

/** One of the four skills. */
void CheckSkill(std::string_view value);

/** The class as the table spells it. */
std::string ClassOf(const EditRules& rules, std::string_view value);

/** A loadout as the table spells it for an aircraft; as it is given where that lacks it. */
std::string LoadoutOf(const EditRules& rules, std::string_view aircraftClass,
                      std::string_view value);

/** One that the table lacks is none. */
void CheckLoadout(const EditRules& rules, const Flight& flight);

/** The nose art box is open to some aircraft of one country only. */
void CheckHasNoseArt(const EditRules& rules, const Flight& flight);

/** Where a plane is the player's, it must be there and he able to fly it: as far as that hangs on
    the field that was edited. */
void CheckPlayer(const EditRules& rules, const Mission& mission, std::string_view edited);

/** Aircraft that nobody can fly are left to the computer. */
void CheckOnlyAI(const EditRules& rules, const Flight& flight);

}  // namespace rws
