#include "mainwindow/logic/flight_commands.h"

#include <algorithm>

#include "mission/writer.h"
#include "services/error_log.h"
#include "services/numbers.h"

namespace rws {

namespace {

constexpr const char kMarked[] = "delete";

/** Runs `edit` for each plane that a flight has, by number; slots above are not touched. */
template <class Edit>
void ForPlanes(const Flight& flight, Edit edit) {
  for (std::size_t plane = 0; plane < PlaneCount(flight); ++plane) edit(plane);
}

}  // namespace

std::size_t PlaneCount(const Flight& flight) {
  const double slots = static_cast<double>(flight.PlaneSlots.size());
  return static_cast<std::size_t>(std::clamp(Val(flight.Planes), 0.0, slots));
}

void CheckFlights(const Mission& mission, const std::vector<std::size_t>& flights) {
  for (const std::size_t flight : flights)
    if (flight >= mission.Flights.size()) throw SubscriptFault();
}

void RemoveMarkedFlights(Document& doc, const Services& services) {
  LogAndLeave(services, "RemoveMarkedFlights", [&] {
    std::erase_if(At(doc.Missions, doc.CurMission).Flights,
                  [](const Flight& flight) { return flight.Status == kMarked; });
  });
}

bool RemoveFlights(Document& doc, const Services& services,
                   const std::vector<std::size_t>& flights) {
  return LogAndLeave(services, "RemoveFlights", [&] {
    Mission& mission = At(doc.Missions, doc.CurMission);
    CheckFlights(mission, flights);
    for (const std::size_t flight : flights) mission.Flights[flight].Status = kMarked;
    RemoveMarkedFlights(doc, services);
  });
}

bool SetMarkings(Document& doc, const Services& services, const std::vector<std::size_t>& flights,
                 bool on) {
  return LogAndLeave(services, "SetMarkings", [&] {
    Mission& mission = At(doc.Missions, doc.CurMission);
    auto& shadow = At(doc.MissionShadow, doc.CurMission).Flights;
    CheckFlights(mission, flights);
    const std::string value = on ? "" : "0";
    for (const std::size_t flight : flights)
      ForPlanes(mission.Flights[flight], [&](std::size_t plane) {
        mission.Flights[flight].PlaneSlots[plane].NumberOn = value;
        if (flight < shadow.size()) shadow[flight].PlaneSlots[plane].NumberOn = value;
      });
  });
}

bool SetFlightSkin(Document& doc, const Services& services, const std::vector<std::size_t>& flights,
                   std::string_view fileName) {
  return LogAndLeave(services, "SetFlightSkin", [&] {
    Mission& mission = At(doc.Missions, doc.CurMission);
    CheckFlights(mission, flights);
    for (const std::size_t flight : flights)
      ForPlanes(mission.Flights[flight], [&](std::size_t plane) {
        PlaneSlot& slot = mission.Flights[flight].PlaneSlots[plane];
        slot.NumberOn = "0";
        slot.Skin = fileName == "default" ? "" : fileName;
      });
  });
}

std::string FlightsText(const Document& doc, const Services& services,
                        const std::vector<std::size_t>& flights) {
  LineArray lines;
  const bool made = LogAndLeave(services, "FlightsText", [&] {
    const Mission& mission = At(doc.Missions, doc.CurMission);
    CheckFlights(mission, flights);
    for (const std::size_t flight : flights) {
      FlightArray(services, lines, mission.Flights[flight]);
      WaypointArray(services, lines, mission.Flights[flight]);
    }
  });
  return made ? lines.FileText() : "";
}

}  // namespace rws
