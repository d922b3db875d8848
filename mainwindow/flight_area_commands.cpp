#include "catalogues/aircraft.h"
#include "editors/frmChgAC.h"
#include "editors/frmWP.h"
#include "editors/frmWPEdit.h"
#include "mainwindow/flight_area.h"
#include "mainwindow/logic/change_aircraft.h"
#include "mainwindow/logic/duplicate_flight.h"
#include "mainwindow/logic/flight_commands.h"
#include "mission/flight_values.h"
#include "platform/qt_text.h"
#include "services/paths.h"
#include "services/text.h"
#include "services/trapped.h"
#include "session/current.h"
#include "session/doors.h"
#include "session/loading.h"

namespace rws {

namespace {

/** Compared by its command: not when it failed, though some flights may be changed by then. */
constexpr EditKind kChange{"ChangeAirCraft", "Change Aircraft", Lighting::None};
/** Changes the shadow as well, so that there is nothing to compare. */
constexpr EditKind kMarks{"mnuAC_Click", "Markings", Lighting::None};
constexpr EditKind kSkin{"mnuSkin_Click", "Change Flight Skin"};
constexpr EditKind kCopies{"DuplicateFlight", "Create Duplicate Groups"};
/** Compared by its command: not when it failed. */
constexpr EditKind kRemoval{"mnuAC_Click", "Remove Selected Flight", Lighting::None};

}  // namespace

void FlightArea::ConnectMenu() {
  const auto command = [this](Entry entry, const char* name, void (FlightArea::*run)()) {
    connect(mnuAC[entry], &QAction::triggered, this,
            Trapped(session_.Services, name, [this, run](bool) { (this->*run)(); }));
  };
  command(kChangeAircraft, "ChangeAirCraft", &FlightArea::ClickChangeAircraft);
  command(kMarkings, "mnuAC_Click", &FlightArea::ClickMarkings);
  command(kDuplicate, "DuplicateFlight", &FlightArea::ClickDuplicate);
  command(kRemove, "mnuAC_Click", &FlightArea::ClickRemove);
  command(kWaypoints, "mnuAC_Click", &FlightArea::ClickWaypoints);
  command(kCopy, "mnuAC_Click", &FlightArea::ClickCopy);
  connect(
      mnuSkin, &QMenu::triggered, this,
      Trapped(session_.Services, "mnuSkin_Click", [this](QAction* entry) { ClickSkin(entry); }));
}

/** Highest number of planes of the selected flights. */
std::size_t FlightArea::MostPlanes(const std::vector<std::size_t>& flights) {
  std::size_t most = 0;
  for (const std::size_t flight : flights)
    most = std::max(most, PlaneCount(FlightAt(session_, static_cast<std::ptrdiff_t>(flight))));
  return most;
}

void FlightArea::ClickChangeAircraft() {
  TakeSelectedFlight();
  const int index = session_.Doc.CurFlight;
  frmChgAC form(session_, window());
  form.ACName = FlightAt(session_, index).Class;
  form.Mode = FlightAt(session_, index).ArmyWord;
  form.Group = FlightAt(session_, index).Name;
  form.LoadForm();
  popups_.ShowDialog(form);
  const std::string loadout = ToBytes(session_.Services.Page, fraFlight->cboWeap->currentText());
  if (Trim(form.ACName).empty() || form.ACName == "Cancel") return;
  Edit(session_, kChange, [&] {
    const AircraftChange change =
        ChangeAirCraft(session_.Doc, session_.Tables, session_.Services,
                       {form.ACName, form.Squad, form.CodeOut, form.Changed},
                       lstPlanes->Selection().Flights, loadout);
    if (!change.Done) return;
    PlaneChg(true, index, change.PlayerLost);
    SetModify(session_);
    if (!change.LoadoutsLost.empty())
      session_.Services.Ask.Notice(session_.Services.Page.ToUtf8(change.LoadoutsLost));
  });
}

void FlightArea::ClickMarkings() {
  // The menu has turned the mark round already.
  const bool on = mnuAC[kMarkings]->isChecked();
  const auto flights = lstPlanes->Selection().Flights;
  bool done = false;
  Edit(session_, kMarks, [&] { done = SetMarkings(session_.Doc, session_.Services, flights, on); });
  if (!done) return mnuAC[kMarkings]->setChecked(!on);
  Show(session_, [&] {
    const Loading loading(session_.Doc);
    for (std::size_t i = 0; i < MostPlanes(flights); ++i)
      planes->fraPlane[i]->chkMark->setChecked(on);
  });
}

void FlightArea::ClickSkin(QAction* entry) {
  const int row = static_cast<int>(mnuSkin->actions().indexOf(entry));
  const auto flights = lstPlanes->Selection().Flights;
  Edit(session_, kSkin, [&] {
    const std::size_t count = MostPlanes(flights);
    for (std::size_t i = 0; i < count; ++i) {
      PlanePanel& panel = *planes->fraPlane[i];
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
  });
}

void FlightArea::ClickDuplicate() {
  const Flight& flight = CurrentFlight(session_);
  frmWPEdit form(session_, window());
  form.AirCraftType = GetPlaneName(session_.Tables, session_.Services, flight.Class);
  form.LoadForm();
  popups_.ShowDialog(form);
  if (form.frmCancel) return;
  Edit(session_, kCopies, [&] {
    // What was added before a failure stays, and is shown.
    DuplicateFlight(session_.Doc, session_.Tables, session_.Services,
                    {form.Distance, form.Altitude, form.Speed}, form.ACNumber);
    PlaneChg(true, -1, false);
  });
}

void FlightArea::ClickRemove() {
  const Answer answer =
      session_.Services.Ask.MsgBox("Are you sure?", Buttons::YesNo, Icon::Question, kProgramTitle);
  if (answer != Answer::Yes) return;
  Edit(session_, kRemoval, [&] {
    if (!RemoveFlights(session_.Doc, session_.Services, lstPlanes->Selection().Flights)) return;
    if (CurrentMission(session_).Flights.empty())
      ShowNoFlights();
    else
      PlaneChg(true, 1, false);
    SetModify(session_);
  });
}

void FlightArea::ClickWaypoints() {
  frmWP form(session_, window());
  form.LoadForm();
  popups_.ShowDialog(form);
  SetModify(session_);
}

void FlightArea::ClickCopy() {
  const std::string text =
      FlightsText(session_.Doc, session_.Services, lstPlanes->Selection().Flights);
  session_.Services.System.SetClipboard(session_.Services.Page.ToUtf8(text));
}

}  // namespace rws
