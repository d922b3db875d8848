#include "catalogues/aircraft.h"
#include "editors/frmChgAC.h"
#include "editors/frmWP.h"
#include "editors/frmWPEdit.h"
#include "mainwindow/flight_area.h"
#include "mainwindow/logic/change_aircraft.h"
#include "mainwindow/logic/duplicate_flight.h"
#include "mainwindow/logic/flight_commands.h"
#include "mainwindow/logic/paste_flights.h"
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
/** Compared by its command: not when there was nothing to paste. */
constexpr EditKind kPasted{"PasteFlights", "Paste Flights", Lighting::None};
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
  connect(mnuAddAircraft, &QAction::triggered, this,
          Trapped(session_.Services, "mnuAddAircraft_Click", [this](bool) { ClickAddAircraft(); }));
  connect(mnuPaste, &QAction::triggered, this,
          Trapped(session_.Services, "mnuPaste_Click", [this](bool) { ClickPaste(); }));
  connect(
      mnuSkin, &QMenu::triggered, this,
      Trapped(session_.Services, "mnuSkin_Click", [this](QAction* entry) { ClickSkin(entry); }));
}

/** Number of panels that a command for these flights changes: as many as their planes, at most
    those of the flight that the panels show. */
std::size_t FlightArea::ShownPlanes(const std::vector<std::size_t>& flights) {
  std::size_t most = 0;
  for (const std::size_t flight : flights)
    most = std::max(most, PlaneCount(FlightAt(session_, static_cast<std::ptrdiff_t>(flight))));
  return std::min(most, static_cast<std::size_t>(fraFlight->cboPlanes->currentText().toUInt()));
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
    for (std::size_t i = 0; i < ShownPlanes(flights); ++i)
      planes->fraPlane[i]->chkMark->setChecked(on);
  });
}

void FlightArea::ClickSkin(QAction* entry) {
  const int row = static_cast<int>(mnuSkin->actions().indexOf(entry));
  const auto flights = lstPlanes->Selection().Flights;
  Edit(session_, kSkin, [&] {
    const std::size_t own = PlaneCount(CurrentFlight(session_));
    for (std::size_t i = 0; i < ShownPlanes(flights); ++i) ShowSkinChosen(i, row, i < own);
    const std::string file = GetFileName(ToPath(entry->data().toString()));
    const auto spelled = session_.Services.Page.FromUtf8(file.empty() ? "default" : file);
    if (spelled) SetFlightSkin(session_.Doc, session_.Services, flights, *spelled);
    // A skin has switched the markings off.
    mnuAC[kMarkings]->setChecked(false);
  });
}

/** Shows a row of the skin menu in a plane's panel; its handler stores the skin in the current
    flight, which may have fewer planes than another one that is selected. */
void FlightArea::ShowSkinChosen(std::size_t plane, int row, bool stores) {
  PlanePanel& panel = *planes->fraPlane[plane];
  {
    const Loading loading(session_.Doc);
    panel.chkMark->setChecked(false);
    if (!stores) panel.cboAPSkin->SelectRow(row);
  }
  if (stores) panel.cboAPSkin->SelectRow(row);
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
  Q_EMIT WaypointEditor(&form);
  popups_.ShowDialog(form);
  Q_EMIT WaypointEditor(nullptr);
  SetModify(session_);
}

void FlightArea::ClickCopy() {
  const std::string text =
      FlightsText(session_.Doc, session_.Services, lstPlanes->Selection().Flights);
  session_.Services.System.SetClipboard(session_.Services.Page.ToUtf8(text));
}

void FlightArea::ClickAddAircraft() {
  TakeSelectedFlight();
  Q_EMIT AddAircraftWanted();
}

void FlightArea::ClickPaste() {
  const Services& services = session_.Services;
  const auto text = services.Page.FromUtf8(services.System.ClipboardText());
  if (!text) {
    services.Ask.MsgBox("The text on the clipboard has characters that missions cannot hold.",
                        Buttons::Ok, Icon::Exclamation, kProgramTitle);
    return;
  }
  PastedFlights pasted;
  Edit(session_, kPasted, [&] {
    pasted = PasteFlights(session_.Doc, services, *text);
    if (pasted.Added.empty()) return;
    PlaneChg(true, static_cast<int>(pasted.Added.front()), false);
    SetModify(session_);
  });
  const std::string told = PastedText(pasted);
  if (!told.empty()) services.Ask.Notice(services.Page.ToUtf8(told));
}

}  // namespace rws
