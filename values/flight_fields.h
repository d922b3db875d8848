#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "mission/records.h"
#include "values/edit_rules.h"

/** Values of a flight and of its planes by the names that a script has for them. */
namespace rws {

std::string ReadFlightValue(const Flight& flight, std::string_view field);

/** Another class takes the paint of the old one off, as paint fits no other aircraft. */
void WriteFlightValue(Flight& flight, std::string_view field, std::string_view value,
                      const EditRules& rules);

std::string ReadPlaneValue(const Flight& flight, std::size_t plane, std::string_view field);

/** A plane of a skill of its own gives all planes of the flight one: the others that which they
    have had. */
void WritePlaneValue(Flight& flight, std::size_t plane, std::string_view field,
                     std::string_view value, const EditRules& rules);

}  // namespace rws
