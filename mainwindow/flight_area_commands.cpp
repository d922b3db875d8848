#include "catalogues/aircraft.h"
#include "editors/frmChgAC.h"
#include "editors/frmWP.h"
#include "editors/frmWPEdit.h"
#include "mainwindow/flight_area.h"
#include "mainwindow/logic/change_aircraft.h"
#include "mainwindow/logic/duplicate_flight.h"
#include "mainwindow/logic/flight_commands.h"
#include "platform/qt_text.h"
#include "services/numbers.h"
#include "services/paths.h"
#include "services/trapped.h"
#include "session/doors.h"
#include "session/loading.h"

namespace rws {

void FlightArea::ConnectMenu() {
  const auto command = [this](std::size_t entry, const char* name, void (FlightArea::*run)()) {
    connect(mnuAC[entry], &QAction::triggered, this,
            Trapped(session_.Services, name, [this, run](bool) { (this->*run)(); }));
  };
  command(0, "ChangeAirCraft", &FlightArea::ClickChangeAircraft);
  command(2, "mnuAC_Click", &FlightArea::ClickMarkings);
  command(4, "DuplicateFlight", &FlightArea::ClickDuplicate);
  command(5, "mnuAC_Click", &FlightArea::ClickRemove);
  command(6, "mnuAC_Click", &FlightArea::ClickWaypoints);
  command(8, "mnuAC_Click", &FlightArea::ClickCopy);
  connect(
      mnuSkin, &QMenu::triggered, this,
      Trapped(session_.Services, "mnuSkin_Click", [this](QAction* entry) { ClickSkin(entry); }));
}

std::vector<std::size_t> FlightArea::SelectedFlights() const {
  std::vector<std::size_t> flights;
  for (const int row : lstPlanes->SelectedRows()) flights.push_back(lstPlanes->At(row).Flight);
  return flights;
}

/** Highest number of planes of the selected flights. */
int FlightArea::MostPlanes(const std::vector<std::size_t>& flights) {
  int most = 0;
  for (const std::size_t flight : flights)
    most = std::max(most, static_cast<int>(Val(FlightAt(static_cast<int>(flight)).Planes)));
  return std::min(most, static_cast<int>(planes->fraPlane.size()));
}

void FlightArea::ClickChangeAircraft() {
  TakeSelectedFlight();
  const int index = session_.Doc.CurFlight;
  frmChgAC form(session_, window());
  form.ACName = FlightAt(index).Class;
  form.Mode = FlightAt(index).ArmyWord;
  form.Group = FlightAt(index).Name;
  form.LoadForm();
  ShowDialog(form);
  const std::string loadout = ToBytes(session_.Services.Page, fraFlight->cboWeap->currentText());
  const AircraftChange change = ChangeAirCraft(
      session_.Doc, session_.Tables, session_.Services,
      {form.ACName, form.Squad, form.CodeOut, form.Changed}, SelectedFlights(), loadout);
  if (!change.Done) return;
  PlaneChg(true, index, change.PlayerLost);
  SetModify(session_);
}

void FlightArea::ClickMarkings() {
  // The menu has turned the mark round already.
  const bool on = mnuAC[2]->isChecked();
  const auto flights = SelectedFlights();
  if (!rws::SetMarkings(session_.Doc, session_.Services, flights, on)) {
    mnuAC[2]->setChecked(!on);
    return;
  }
  const Loading loading(session_.Doc);
  for (int i = 0; i < MostPlanes(flights); ++i)
    planes->fraPlane[static_cast<std::size_t>(i)]->chkMark->setChecked(on);
}

void FlightArea::ClickSkin(QAction* entry) {
  const int row = static_cast<int>(mnuSkin->actions().indexOf(entry));
  const auto flights = SelectedFlights();
  const int count = MostPlanes(flights);
  for (int i = 0; i < count; ++i) {
    PlanePanel& panel = *planes->fraPlane[static_cast<std::size_t>(i)];
    {
      const Loading loading(session_.Doc);
      panel.chkMark->setChecked(false);
    }
    // Its handler stores the skin of the flight that is shown.
    panel.cboAPSkin->SelectRow(row);
  }
  const std::string file = GetFileName(ToPath(entry->data().toString()));
  const auto spelled = session_.Services.Page.FromUtf8(file.empty() ? "default" : file);
  if (spelled) SetFlightSkin(session_.Doc, session_.Services, flights, *spelled);
  SetModify(session_);
}

void FlightArea::ClickDuplicate() {
  const Flight& flight = FlightAt(session_.Doc.CurFlight);
  frmWPEdit form(session_, window());
  form.AirCraftType = GetPlaneName(session_.Tables, session_.Services, flight.Class);
  form.LoadForm();
  ShowDialog(form);
  if (form.frmCancel) return;
  // What was added before a failure stays, and is shown.
  DuplicateFlight(session_.Doc, session_.Tables, session_.Services,
                  {form.Distance, form.Altitude, form.Speed}, form.ACNumber);
  PlaneChg(true, -1, false);
  SetModify(session_);
}

void FlightArea::ClickRemove() {
  const Answer answer =
      session_.Services.Ask.MsgBox("Are you sure?", Buttons::YesNo, Icon::Question, kProgramTitle);
  if (answer != Answer::Yes) return;
  if (!RemoveFlights(session_.Doc, session_.Services, SelectedFlights())) return;
  if (Current().Flights.empty())
    ShowNoFlights();
  else
    PlaneChg(true, 1, false);
  SetModify(session_);
}

void FlightArea::ClickWaypoints() {
  frmWP form(session_, window());
  form.LoadForm();
  ShowDialog(form);
  SetModify(session_);
}

void FlightArea::ClickCopy() {
  const std::string text = FlightsText(session_.Doc, session_.Services, SelectedFlights());
  session_.Services.System.SetClipboard(session_.Services.Page.ToUtf8(text));
}

}  // namespace rws
