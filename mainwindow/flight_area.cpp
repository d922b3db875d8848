#include "mainwindow/flight_area.h"

#include "catalogues/aircraft.h"
#include "mainwindow/loading.h"
#include "mainwindow/trapped.h"
#include "services/arrays.h"
#include "services/error_log.h"
#include "services/numbers.h"
#include "services/platform/qt_text.h"
#include "tools/frmView.h"

namespace rws {

FlightArea::FlightArea(WindowContext context, QWidget* parent)
    : QWidget(parent), context_(context) {
  Build();
  BuildMenu();
  Connect();
}

void FlightArea::Connect() {
  const Services& services = context_.Services;
  fraFlight->LoadPlanes = [this] { LoadPlanes(); };
  fraFlight->CheckMarkingsEntry = [this](bool on) { mnuAC[2]->setChecked(on); };
  planes->LoadPlanes = fraFlight->LoadPlanes;
  planes->CheckMarkingsEntry = fraFlight->CheckMarkingsEntry;
  planes->ViewImage = [this](const std::string& path, const QString& caption) {
    ViewImage(context_.Services, window(), path, caption);
  };
  connect(
      lstPlanes, &ReportList::MouseReleased, this,
      Trapped(services, "lstPlanes_MouseUp", [this](Qt::MouseButton button, int, QPoint position) {
        ListMouseReleased(button, position);
      }));
  connect(lstPlanes, &ReportList::KeyReleased, this,
          Trapped(services, "lstPlanes_KeyUp", [this] { ListKeyReleased(); }));
  connect(lstPlanes, &ReportList::MenuKeyPressed, this,
          Trapped(services, "lstPlanes_MouseUp", [this](QPoint position) { OpenMenu(position); }));
  PopUpAircraftMenu = [this](QPoint position) { mnuAircraft->exec(position); };
  ShowDialog = [](QDialog& dialog) { dialog.exec(); };
  ConnectMenu();
}

Mission& FlightArea::Current() { return At(context_.Doc.Missions, context_.Doc.CurMission); }

Flight& FlightArea::FlightAt(int index) { return At(Current().Flights, index); }

QString FlightArea::Decoded(const std::string& bytes) const {
  return FromBytes(context_.Services.Page, bytes);
}

void FlightArea::ResetCaptions() {
  fraFlight->setTitle(tr("None"));
  fraGroup->setTitle(tr("None"));
}

void FlightArea::ShowNoFlights() {
  const Loading loading(context_.Doc);
  ClearFlightList();
  ClearFrames(true);
  ResetCaptions();
  fraFlight->ShowNoFlight();
  ShowPlayer(QString());
}

void FlightArea::ClearFlightList() { lstPlanes->SetRows({}); }

void FlightArea::LoadPlaneList(int index) {
  LogAndLeave(context_.Services, "LoadPlaneList", [&] {
    lstPlanes->Tag.clear();
    std::vector<FlightRow> rows;
    const bool whole = MakeFlightRows(Current(), context_.Tables, context_.Services, rows);
    lstPlanes->SetRows(std::move(rows));
    if (!whole) {
      // No row is selected, and the panel still shows another mission's flight.
      context_.Doc.CurFlight = -1;
      return fraFlight->EnableFlightControls(false, false);
    }
    // The first row in sort order and flight 0 need not be the same; the flight shown is the row's.
    const int row = index == -1 ? 0 : lstPlanes->RowOf(index);
    const int flight = index == -1 || row < 0 ? 0 : index;
    lstPlanes->SelectOnly(row < 0 ? lstPlanes->RowOf(0) : row);
    FlightAt(flight).Shown = true;
    fraFlight->WeaponTag = FlightAt(flight).Class;
    if (row < 0) throw SubscriptFault();
  });
}

void FlightArea::TakeSelectedFlight() {
  const int flight = lstPlanes->SelectedFlight();
  if (flight < 0) throw SubscriptFault();
  context_.Doc.CurFlight = flight;
}

void FlightArea::PlaneChg(bool reload, int index, bool playerCleared) {
  if (reload) LoadPlaneList(index);
  if (index == -1 || lstPlanes->RowOf(index) < 0)
    TakeSelectedFlight();
  else
    context_.Doc.CurFlight = index;
  fraFlight->LoadFlight(context_.Doc.CurFlight);
  LoadPlanes();
  SetWaypointMenuCaption();
  if (playerCleared)
    context_.Services.Ask.MsgBox(
        "Player select was clear because of the plane change\ndon't forget to reset it.",
        Buttons::Ok, Icon::Information, kProgramTitle);
}

void FlightArea::SetWaypointMenuCaption() {
  const Mission& mission = Current();
  if (SafeUBound(mission.Flights) < 0) return;
  // The upper bound: one less than the number of waypoints, as designed.
  const auto bound = SafeUBound(FlightAt(context_.Doc.CurFlight).Waypoints);
  mnuAC[6]->setText(tr("&Edit Waypoints (%1)").arg(bound));
}

void FlightArea::LoadPlanes() {
  LogAndLeave(context_.Services, "LoadPlanes", [&] {
    const Mission& mission = Current();
    const Flight& flight = FlightAt(context_.Doc.CurFlight);
    const std::string plane = GetPlaneName(context_.Tables, context_.Services, flight.Class);
    fraGroup->setTitle(Decoded(plane).replace(u'&', QStringLiteral("&&")));
    fraFlight->ShowCaption();
    ClearFrames(false);
    const auto number = NumberText(Val(mission.PlayerNum) + 1);
    ShowPlayer(mission.Player.empty() ? QString()
                                      : Decoded("Group " + mission.Player + " Plane " + number));
    const int count = fraFlight->cboPlanes->currentText().toInt();
    for (int i = 0; i < count; ++i) planes->FillPanel(i);
  });
}

void FlightArea::OpenMenu(QPoint globalPosition) {
  if (lstPlanes->RowCount() == 0) return;
  // Of the flight that is shown by now, not of the one that was left.
  if (lstPlanes->SelectedRows().size() == 1) SetSingleMode();
  PopUpAircraftMenu(globalPosition);
}

void FlightArea::ListMouseReleased(Qt::MouseButton button, QPoint globalPosition) {
  Document& doc = context_.Doc;
  if (lstPlanes->RowCount() == 0) return;
  // A click beside the rows takes the selection away; there is always one.
  if (lstPlanes->SelectedRows().empty()) lstPlanes->SelectOnly(lstPlanes->RowOf(doc.CurFlight));
  const bool multi = lstPlanes->SelectedRows().size() >= 2;
  const bool stays = button == Qt::LeftButton && !multi && lstPlanes->Tag != "multiple" &&
                     lstPlanes->SelectedFlight() == doc.CurFlight;
  if (stays) return;
  TakeSelectedFlight();
  lstPlanes->Tag = multi ? "multiple" : "single";
  multi ? SetMultipleMode() : SetSingleMode();
  const auto show = [&] {
    TakeSelectedFlight();
    fraFlight->WeaponTag = FlightAt(doc.CurFlight).Class;
    PlaneChg(false, -1, false);
  };
  if (button == Qt::RightButton) {
    // The menu's entries are those of the flight that it opens on.
    if (!multi) show();
    OpenMenu(globalPosition);
    if (doc.Closing || lstPlanes->RowCount() == 0) return;
  }
  if (!multi) show();
}

void FlightArea::ListKeyReleased() {
  const int flight = lstPlanes->SelectedFlight();
  if (flight < 0 || flight == context_.Doc.CurFlight) return;
  // Neither the tag nor the modes: the keyboard never enters or leaves a selection of several.
  context_.Doc.CurFlight = flight;
  fraFlight->WeaponTag = FlightAt(flight).Class;
  PlaneChg(false, -1, false);
}

void FlightArea::SetMultipleMode() {
  ResumeNext([&] {
    const auto selected = lstPlanes->SelectedPlanes();
    const bool same = SelectedSameAircraft(selected);
    fraGroup->setTitle(tr("Multiple Select"));
    fraFlight->setTitle(tr("Multiple Select"));
    mnuAC[1]->setEnabled(same);
    mnuAC[4]->setEnabled(false);
    mnuAC[6]->setEnabled(false);
    planes->DisableAll();
    fraFlight->EnableForGroup(same, SelectedAllFlyable(context_.Tables, selected));
    const std::string& shown = FlightAt(context_.Doc.CurFlight).Class;
    planes->LoadSkinList(GetPlaneFolder(context_.Tables, shown), -1);
  });
}

void FlightArea::SetSingleMode() {
  for (const std::size_t i : {1, 2, 4, 6}) mnuAC[i]->setEnabled(fraFlight->CurAircraftOK);
  // Also for an aircraft that the game lacks; the others then stay disabled.
  mnuAC[1]->setEnabled(true);
}

void FlightArea::FillFixedLists() {
  fraFlight->FillFixedLists();
  planes->FillFixedLists();
}

void FlightArea::ClearFrames(bool all) { planes->ClearFrames(all); }

}  // namespace rws
