#pragma once

#include <array>
#include <string>

#include "library/mission_checker.h"
#include "mission/records.h"
#include "session/session.h"

namespace rws {

/** What is told of a mission's squadrons, aircraft or map; UTF-8. */
struct Suitability {
  std::string Text;
  std::string Warning;  // a sentence a line; "" for none
};

/** Whether squadrons, aircraft and map of a mission suit the game that the tables describe, by what
    the check of the mission has found. */
std::array<Suitability, 3> SuitabilityOf(const Session& session, const Mission& mission,
                                         const CheckedMission& checked);

}  // namespace rws
