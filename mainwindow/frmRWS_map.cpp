#include "editors/frmWP.h"
#include "mainwindow/frmRWS.h"
#include "map/forms/frmMap.h"
#include "services/trapped.h"

namespace rws {

void frmRWS::ConnectMap() {
  const Services& services = session_.Services;
  connect(mnuMap, &QAction::triggered, this,
          Trapped(services, "mnuMap_Click", [this](bool) { ClickMap(); }));
  connect(flightArea, &FlightArea::FlightShown, this, [this] {
    if (Map) Map->FollowSoon();
  });
  connect(flightArea, &FlightArea::WaypointEditor, this,
          Trapped(services, "mnuMap_Click", [this](frmWP* form) { FollowWaypointEditor(form); }));
}

void frmRWS::ClickMap() {
  if (!Map) {
    Map = std::make_unique<frmMap>(session_);
    Map->setWindowIcon(windowIcon());
    Map->ShowDialog = [this](QDialog& dialog) { Popups.ShowDialog(dialog); };
    Map->OpenMenu = [this](QMenu& menu, QPoint at) { Popups.OpenMenu(menu, at); };
    Map->ChooseFlight = [this](int flight) {
      flightArea->SelectFlight(flight);
      Map->Follow();
    };
    Map->OpenWaypoints = [this] { flightArea->ClickWaypoints(); };
    Map->RouteChanged = [this] { flightArea->SetWaypointMenuCaption(); };
    // Its edits are steps of the one history.
    auto* first = Map->mnuEdit->actions().value(0);
    Map->mnuEdit->insertActions(first, {mnuSave, mnuUndo, mnuRedo});
    Map->mnuEdit->insertSeparator(first);
    Map->LoadForm();
  }
  Map->show();
  Map->raise();
  Map->activateWindow();
  Map->Follow();
}

/** The map shows its rows and chooses them; a dialog of this window alone leaves it usable. */
void frmRWS::FollowWaypointEditor(frmWP* form) {
  if (form) form->setWindowModality(Qt::WindowModal);
  if (!Map) return;
  if (!form) {
    Map->SetRowChooser(nullptr);
    return Map->FollowSoon();
  }
  Map->SetRowChooser([form](std::size_t waypoint) { form->SelectWaypoint(waypoint); });
  connect(form->grd, &Grid::CurrentCellChanged, Map.get(), [this](int row, int) {
    if (row > 0) Map->SelectWaypoints({static_cast<std::size_t>(row - 1)});
  });
}

}  // namespace rws
