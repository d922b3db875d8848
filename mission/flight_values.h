#pragma once

#include <cstddef>
#include <string_view>

#include "mission/records.h"

/** Single values of a flight. */
namespace rws {

/** Number of plane slots that a flight uses; a count above four stops at the last slot. */
std::size_t PlaneCount(const Flight& flight);

/** For an edit from `from` to `to` that `now` has: planes that fly again, or have skills of their
   own again, get what `now` lacks. A file that was written meanwhile has no place for it. */
void BringSlotsBack(Flight& now, const Flight& from, const Flight& to);

/** A flight's name without its last two digits: the code of its regiment. A name of fewer than two
    characters is an invalid call. */
std::string_view GroupOf(std::string_view flightName);

}  // namespace rws
