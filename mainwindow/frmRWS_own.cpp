#include <algorithm>
#include <optional>

#include "catalogues/own_names.h"
#include "catalogues/squadrons.h"
#include "controls/work_progress.h"
#include "mainwindow/frmRWS.h"
#include "mission/untouched.h"
#include "services/paths.h"
#include "services/text.h"
#include "services/trapped.h"
#include "session/current.h"
#include "tools/frmAddAircraft.h"
#include "tools/frmAddMap.h"

namespace rws {

void frmRWS::ConnectOwnEntries() {
  connect(flightArea, &FlightArea::AddAircraftWanted, this, [this] { ClickAddAircraft(); });
  connect(mnuAddMap, &QAction::triggered, this,
          Trapped(session_.Services, "mnuAddMap_Click", [this](bool) { ClickAddMap(); }));
}

void frmRWS::EnableAddMap() {
  mnuAddMap->setEnabled(IsMissionShown(session_) && CanAddMap(session_.Doc, session_.Services,
                                                              CurrentMission(session_).MapPath));
}

/** Those that are in memory, and of the others all but those that are known not to fly it. */
std::vector<SeenIn> frmRWS::MissionsThatMayFly(const std::string& aircraftClass) const {
  const MissionIndex& index = Library->Index();
  const auto mayFly = [&](std::size_t mission) {
    const std::size_t row = Library->RowOf(mission);
    if (row == MissionIndex::npos || !index[row].IsRead) return true;
    const IndexedFlight* flights = index.Flights(row);
    return std::any_of(flights, flights + index[row].Flights, [&](const IndexedFlight& flight) {
      return index.Aircraft[flight.Class].Word == aircraftClass;
    });
  };
  std::vector<SeenIn> missions;
  for (std::size_t i = 0; i < session_.Doc.Missions.size(); ++i) {
    const Mission& mission = session_.Doc.Missions[i];
    if (mission.Loaded || mayFly(i))
      missions.push_back({PathOf(mission), mission.Loaded ? &mission : nullptr});
  }
  return missions;
}

SeenAircraft frmRWS::LookForClass(const std::string& aircraftClass) {
  std::optional<WorkProgress> progress;
  const auto told = [&](const WorkStep& step) {
    if (!progress) progress.emplace(*this, staBar, Popups.ToolStep);
    return progress->Told(step);
  };
  SeenAircraft seen =
      LookForAircraft(session_.Services, aircraftClass, MissionsThatMayFly(aircraftClass), told);
  if (seen.IsStopped) staBar->clearMessage();
  return seen;
}

void frmRWS::ClickAddAircraft() {
  const Flight& flight = CurrentFlight(session_);
  frmAddAircraft form(session_, this);
  form.Class = flight.Class;
  form.IsBlue = GetColorByGroup(session_.Tables, session_.Services, flight.Name) == "blue";
  form.Seen = LookForClass(form.Class);
  form.LoadForm();
  Popups.ShowDialog(form);
  if (form.IsAdded && ReloadNames(ReadLists::IfChanged)) ShowNamesAgain();
}

void frmRWS::ClickAddMap() {
  const Mission& mission = CurrentMission(session_);
  frmAddMap form(session_, this);
  form.MapPath = Trim(mission.MapPath);
  form.From = GetFileName(PathOf(mission));
  form.LoadForm();
  Popups.ShowDialog(form);
  if (form.IsAdded && ReloadNames(ReadLists::IfChanged)) ShowNamesAgain();
}

}  // namespace rws
