#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "mission/records.h"

/** Missions as they were at some moment. What two moments have in common they share, so that many
    of them cost little more than what has changed between them. */
namespace rws {

struct Frozen {
  /** The record without its flights and home bases. */
  Mission Head;
  std::vector<std::shared_ptr<const Flight>> Flights;
  std::vector<std::shared_ptr<const BornPlace>> BornPlaces;
};
using FrozenMission = std::shared_ptr<const Frozen>;

/** The mission as it is now. `like`, which may be null, is an earlier moment of it: parts that are
    the same are taken from there, and if all are, `like` itself is given. */
FrozenMission Freeze(const Mission& mission, const FrozenMission& like);

Mission Thaw(const Frozen& frozen);

/** True if no content differs, whatever the state of the records is. */
bool SameContent(const Frozen& a, const Frozen& b);

/** The names of the flights whose content differs, as far as both have them. */
std::vector<std::string> ChangedFlights(const Frozen& a, const Frozen& b);

/** The name of a flight that `to` has and `from` has not, where others have given it to one of
    `now`; "" for none. */
std::string FlightInTheWay(const Mission& now, const Frozen& from, const Frozen& to);

/** `now` with what is different between `from` and `to`: fields that are the same in both stay as
    they are in `now`, also those that came later. State is not touched. */
Mission Patched(const Mission& now, const Frozen& from, const Frozen& to);

/** `kept` with the content that has changed from `from` to `to`, but only where it was the same as
    in `from`. */
FrozenMission Rebased(const FrozenMission& kept, const Frozen& from, const Frozen& to);

/** Roughly the bytes of `frozen` that it does not share with `like`, which may be null. */
std::size_t OwnBytes(const Frozen& frozen, const Frozen* like);

}  // namespace rws
