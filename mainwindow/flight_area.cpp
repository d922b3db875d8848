#include "mainwindow/flight_area.h"

#include "catalogues/aircraft.h"
#include "catalogues/own_names.h"
#include "platform/qt_text.h"
#include "services/arrays.h"
#include "services/error_log.h"
#include "services/numbers.h"
#include "services/trapped.h"
#include "session/current.h"
#include "session/doors.h"
#include "session/loading.h"
#include "tools/frmView.h"

namespace rws {

FlightArea::FlightArea(Session& session, Popups& popups, QWidget* parent)
    : QWidget(parent), session_(session), popups_(popups) {
  Build();
  BuildMenu();
  Connect();
}

void FlightArea::Connect() {
  const Services& services = session_.Services;
  connect(fraFlight, &FlightPanel::PlanesChanged, this, &FlightArea::LoadPlanes);
  connect(fraFlight, &FlightPanel::MarkingsShown, mnuAC[kMarkings], &QAction::setChecked);
  connect(planes, &PlanePanels::PlanesChanged, this, &FlightArea::LoadPlanes);
  connect(planes, &PlanePanels::MarkingsShown, mnuAC[kMarkings], &QAction::setChecked);
  connect(planes, &PlanePanels::ImageWanted, this,
          [this](const std::string& path, const QString& caption) {
            ViewImage(session_.Services, window(), path, caption);
          });
  connect(
      lstPlanes, &ReportList::MouseReleased, this,
      Trapped(services, "lstPlanes_MouseUp", [this](Qt::MouseButton button, int, QPoint position) {
        ListMouseReleased(button, position);
      }));
  connect(lstPlanes, &ReportList::KeyReleased, this,
          Trapped(services, "lstPlanes_KeyUp", [this] { ListKeyReleased(); }));
  connect(lstPlanes, &ReportList::MenuKeyPressed, this,
          Trapped(services, "lstPlanes_MouseUp", [this](QPoint position) { OpenMenu(position); }));
  ConnectMenu();
}

QString FlightArea::Decoded(const std::string& bytes) const {
  return FromBytes(session_.Services.Page, bytes);
}

void FlightArea::ResetCaptions() {
  fraFlight->setTitle(tr("None"));
  fraGroup->setTitle(tr("None"));
}

void FlightArea::ShowNoFlights() {
  const Showing showing(session_);
  const Loading loading(session_.Doc);
  ClearFlightList();
  ClearFrames(true);
  ResetCaptions();
  fraFlight->ShowNoFlight();
  Q_EMIT PlayerShown(QString());
  Q_EMIT FlightShown();
}

void FlightArea::ClearFlightList() { lstPlanes->SetRows({}); }

void FlightArea::LoadPlaneList(int index) {
  LogAndLeave(session_.Services, "LoadPlaneList", [&] {
    lstPlanes->Tag.clear();
    std::vector<FlightRow> rows;
    const bool whole =
        MakeFlightRows(CurrentMission(session_), session_.Tables, session_.Services, rows);
    lstPlanes->SetRows(std::move(rows));
    if (!whole) {
      // No row is selected, and the panel still shows another mission's flight.
      session_.Doc.CurFlight = -1;
      return fraFlight->EnableFlightControls(false, false);
    }
    // The first row in sort order and flight 0 need not be the same; the flight shown is the row's.
    const int row = index == -1 ? 0 : lstPlanes->RowOf(index);
    const int flight = index == -1 || row < 0 ? 0 : index;
    lstPlanes->SelectOnly(row < 0 ? lstPlanes->RowOf(0) : row);
    FlightAt(session_, flight).Shown = true;
    fraFlight->WeaponTag = FlightAt(session_, flight).Class;
    if (row < 0) throw SubscriptFault();
  });
}

void FlightArea::TakeSelectedFlight() {
  const int flight = lstPlanes->Selection().Focused;
  if (flight < 0) throw SubscriptFault();
  session_.Doc.CurFlight = flight;
}

void FlightArea::PlaneChg(bool reload, int index, bool playerCleared) {
  Show(session_, [&] {
    if (reload) LoadPlaneList(index);
    if (index == -1 || lstPlanes->RowOf(index) < 0)
      TakeSelectedFlight();
    else
      session_.Doc.CurFlight = index;
    fraFlight->LoadFlight(session_.Doc.CurFlight);
    LoadPlanes();
    SetWaypointMenuCaption();
  });
  if (playerCleared)
    session_.Services.Ask.MsgBox(
        "Player select was clear because of the plane change\ndon't forget to reset it.",
        Buttons::Ok, Icon::Information, kProgramTitle);
}

void FlightArea::SetWaypointMenuCaption() {
  const Mission& mission = CurrentMission(session_);
  if (SafeUBound(mission.Flights) < 0) return;
  // The upper bound: one less than the number of waypoints, as designed.
  const auto bound = SafeUBound(CurrentFlight(session_).Waypoints);
  mnuAC[kWaypoints]->setText(tr("&Edit Waypoints (%1)").arg(bound));
}

void FlightArea::LoadPlanes() {
  const Showing showing(session_);
  LogAndLeave(session_.Services, "LoadPlanes", [&] {
    const Mission& mission = CurrentMission(session_);
    const Flight& flight = CurrentFlight(session_);
    const std::string plane = GetPlaneName(session_.Tables, session_.Services, flight.Class);
    fraGroup->setTitle(Decoded(plane).replace(u'&', QStringLiteral("&&")));
    fraFlight->ShowCaption();
    ClearFrames(false);
    const auto number = NumberText(Val(mission.PlayerNum) + 1);
    Q_EMIT PlayerShown(mission.Player.empty()
                           ? QString()
                           : Decoded("Group " + mission.Player + " Plane " + number));
    const int count = fraFlight->cboPlanes->currentText().toInt();
    for (int i = 0; i < count; ++i) planes->FillPanel(i);
  });
  Q_EMIT FlightShown();
}

void FlightArea::PrepareMenu() {
  // What is selected by now, also by the keyboard, not what was left.
  const FlightSelection selection = lstPlanes->Selection();
  const std::size_t selected = selection.Flights.size();
  mnuAddAircraft->setEnabled(selected == 1 &&
                             CanAddAircraft(session_.Tables, session_.Services,
                                            FlightAt(session_, selection.Focused).Class));
  if (selected == 1) SetSingleMode();
  if (selected >= 2) SetGroupEntries();
}

void FlightArea::OpenMenu(QPoint globalPosition) {
  if (lstPlanes->RowCount() == 0) return;
  PrepareMenu();
  popups_.OpenMenu(*mnuAircraft, globalPosition);
}

void FlightArea::ListMouseReleased(Qt::MouseButton button, QPoint globalPosition) {
  Document& doc = session_.Doc;
  if (lstPlanes->RowCount() == 0) return;
  // A click beside the rows takes the selection away; there is always one.
  if (lstPlanes->Selection().Flights.empty())
    lstPlanes->SelectOnly(lstPlanes->RowOf(doc.CurFlight));
  const FlightSelection selection = lstPlanes->Selection();
  const bool multi = selection.Flights.size() >= 2;
  const bool stays = button == Qt::LeftButton && !multi && !selection.Several &&
                     selection.Focused == doc.CurFlight;
  if (stays) return;
  TakeSelectedFlight();
  lstPlanes->Tag = multi ? "multiple" : "single";
  multi ? SetMultipleMode() : SetSingleMode();
  if (button == Qt::RightButton) {
    // The menu's entries are those of the flight that it opens on.
    if (!multi) ShowSelectedFlight();
    OpenMenu(globalPosition);
    if (doc.Closing || lstPlanes->RowCount() == 0) return;
  }
  if (!multi) ShowSelectedFlight();
}

void FlightArea::ShowSelectedFlight() {
  TakeSelectedFlight();
  fraFlight->WeaponTag = CurrentFlight(session_).Class;
  PlaneChg(false, -1, false);
}

void FlightArea::SelectFlight(int flight) {
  const int row = lstPlanes->RowOf(flight);
  if (row < 0 || flight == session_.Doc.CurFlight) return;
  lstPlanes->SelectOnly(row);
  TakeSelectedFlight();
  lstPlanes->Tag = "single";
  SetSingleMode();
  ShowSelectedFlight();
}

void FlightArea::ListKeyReleased() {
  // A key can take the selection away as well.
  if (lstPlanes->RowCount() > 0 && lstPlanes->SelectedRows().empty())
    lstPlanes->SelectOnly(lstPlanes->RowOf(session_.Doc.CurFlight));
  const int flight = lstPlanes->Selection().Focused;
  if (flight < 0 || flight == session_.Doc.CurFlight) return;
  // Neither the tag nor the modes: the keyboard never enters or leaves a selection of several.
  ShowSelectedFlight();
}

void FlightArea::SetMultipleMode() {
  const Showing showing(session_);
  ResumeNext([&] {
    fraGroup->setTitle(tr("Multiple Select"));
    fraFlight->setTitle(tr("Multiple Select"));
    planes->DisableAll();
    const auto selected = lstPlanes->Selection().Planes;
    fraFlight->EnableForGroup(SelectedSameAircraft(selected),
                              SelectedAllFlyable(session_.Tables, selected));
    SetGroupEntries();
  });
}

/** The menu's entries and skins for several flights that are selected. */
void FlightArea::SetGroupEntries() {
  const Showing showing(session_);
  mnuAC[kFlightSkin]->setEnabled(SelectedSameAircraft(lstPlanes->Selection().Planes));
  mnuAC[kDuplicate]->setEnabled(false);
  mnuAC[kWaypoints]->setEnabled(false);
  const std::string& current = CurrentFlight(session_).Class;
  planes->LoadSkinList(GetPlaneFolder(session_.Tables, current), -1);
}

void FlightArea::MissionTimeChanged() {
  if (CurrentMission(session_).Flights.empty()) return;
  const int flight = session_.Doc.CurFlight;
  const FlightSelection selection = lstPlanes->Selection();
  if (!selection.Several || selection.Flights.size() < 2) return fraFlight->LoadFlight(flight);
  const bool markings = mnuAC[kMarkings]->isChecked();
  fraFlight->LoadFlightOfGroup(flight);
  mnuAC[kMarkings]->setChecked(markings);
}

void FlightArea::SetSingleMode() {
  for (const Entry i : {kFlightSkin, kMarkings, kDuplicate, kWaypoints})
    mnuAC[i]->setEnabled(fraFlight->CurAircraftOK);
  // Also for an aircraft that the game lacks; the others then stay disabled.
  mnuAC[kFlightSkin]->setEnabled(true);
}

void FlightArea::FillFixedLists() {
  const Showing showing(session_);
  fraFlight->FillFixedLists();
  planes->FillFixedLists();
}

void FlightArea::ClearFrames(bool all) { planes->ClearFrames(all); }

}  // namespace rws
