#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "mission/records.h"
#include "values/edit_rules.h"
#include "values/mission_values.h"
#include "values/value_path.h"

/** Edits of a mission's records that are given as paths and values. */
namespace rws {

/** A flight to be removed. */
struct Removal {
  FlightChoice Flights;
  std::string Text;  // as it was given, for messages
};

/** Everything that is to be changed: the values first, in their order, then the removals. Flights
    are chosen by what the mission is like before. */
struct EditOrder {
  std::vector<Assignment> Sets;
  std::vector<Removal> Removals;
};

/** A value that cannot be what it is to be. */
struct RefusedValue {
  ValuePlace Place;
  std::string Reason;
};

struct EditOutcome {
  /** What cannot be done, once for each entry of the order, with its text; the mission is of no use
      then. */
  std::vector<std::string> Faults;
  /** The same for each value. */
  std::vector<RefusedValue> Refused;
  /** What the user should know. */
  std::vector<std::string> Warnings;
  /** How many values or flights each entry of the order names: the sets, then the removals. */
  std::vector<std::size_t> Named;
  /** Where values were set. */
  std::vector<ValuePlace> Places;
};

/** What is `without` stays as it is, whatever the order says of it. */
EditOutcome EditMission(Mission& mission, const EditOrder& order, const EditRules& rules,
                        const std::vector<ValuePlace>& without = {});

/** True if the order can only be understood with the tables of aircraft and squadrons. */
bool NeedsTables(const EditOrder& order);

/** The paths whose values are not in `read`, what an edited mission's new file was read as. */
std::vector<std::string> LostValues(const Mission& edited, const Mission& read,
                                    const std::vector<ValuePlace>& places);

}  // namespace rws
