#pragma once

#include <cstddef>

#include "services/faults.h"
#include "session/session.h"

/** What the window shows; a fault when there is no such mission or flight. */
namespace rws {

inline Mission& CurrentMission(Session& session) {
  return At(session.Doc.Missions, session.Doc.CurMission);
}
inline const Mission& CurrentMission(const Session& session) {
  return At(session.Doc.Missions, session.Doc.CurMission);
}

/** Whether there is a current mission, and its file could be read. */
inline bool IsMissionShown(const Session& session) {
  return !session.Doc.Missions.empty() && CurrentMission(session).Loaded;
}

/** A flight of the current mission. */
inline Flight& FlightAt(Session& session, std::ptrdiff_t index) {
  return At(CurrentMission(session).Flights, index);
}
inline const Flight& FlightAt(const Session& session, std::ptrdiff_t index) {
  return At(CurrentMission(session).Flights, index);
}

inline Flight& CurrentFlight(Session& session) { return FlightAt(session, session.Doc.CurFlight); }
inline const Flight& CurrentFlight(const Session& session) {
  return FlightAt(session, session.Doc.CurFlight);
}

}  // namespace rws
