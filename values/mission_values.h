#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "mission/records.h"
#include "values/edit_rules.h"
#include "values/value_path.h"

/** Single values of a mission's records, as a script reads and writes them. */
namespace rws {

/** Where one value is. Indexes count from 0. */
struct ValuePlace {
  ValueOf Of = ValueOf::Mission;
  std::size_t Flight = 0;
  std::size_t Index = 0;  // of the plane, waypoint or home base
  std::string_view Field;
  /** Name of the flight, which finds it again in another reading; "" for no flight. */
  std::string FlightName;
  std::string Text;  // as the path was given, for messages
  /** Number of the order's entry that names it. */
  std::size_t Set = 0;

  bool operator==(const ValuePlace&) const = default;
};

/** The value as a file would spell it; one that a file need not tell is told. A place that is not
    there is a subscript fault. */
std::string ReadValue(const Mission& mission, const ValuePlace& place);

/** Checks a value and puts it there. One that means what stands there already changes nothing. */
void WriteValue(Mission& mission, const ValuePlace& place, std::string_view value,
                const EditRules& rules);

/** True if two values mean the same: numbers by their value, words without regard to case. */
bool SameValue(std::string_view a, std::string_view b);

/** Looks at what a value must agree with once all are set: the flight's loadout with its aircraft,
    the player with his flight. */
void CheckAgreement(const Mission& mission, const ValuePlace& place, const EditRules& rules);

}  // namespace rws
