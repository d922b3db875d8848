#include <QKeyEvent>

#include "catalogues/weapons.h"
#include "mainwindow/flight_panel.h"
#include "mainwindow/logic/flight_rows.h"
#include "platform/qt_text.h"
#include "services/numbers.h"
#include "services/trapped.h"
#include "session/current.h"
#include "session/doors.h"

namespace rws {

namespace {

constexpr EditKind kPlanes{nullptr, "Number of planes"};
constexpr EditKind kSkill{nullptr, "Skill"};
constexpr EditKind kWeapons{"cboWeap_Click", "Weapon load"};
constexpr EditKind kFuel{nullptr, "Fuel"};
constexpr EditKind kDelay{nullptr, "Delayed start"};
constexpr EditKind kParachute{"chkPara_Click", "Parachute"};
/** Compared by its handler: not when the user answers No. */
constexpr EditKind kAIOnly{"chkAI_MouseUp", "AI only", Lighting::None};

}  // namespace

void FlightPanel::Connect() {
  const Services& services = session_.Services;
  connect(cboPlanes, &QComboBox::currentIndexChanged, this, &FlightPanel::PlanesChosen);
  connect(cboSkill, &QComboBox::currentIndexChanged, this, &FlightPanel::SkillChosen);
  connect(cboWeap, &QComboBox::currentIndexChanged, this,
          Trapped(services, kWeapons.Handler, [this](int) { WeaponChosen(); }));
  connect(txtFuel, &QLineEdit::textChanged, this, &FlightPanel::FuelChanged);
  connect(txtDStart, &QLineEdit::textChanged, this,
          Trapped(services, "txtDStart_Change",
                  [this](const QString& text) { DelayTextChanged(text); }));
  connect(udDStart, &UpDown::ValueChanged, this, &FlightPanel::DelayChanged);
  connect(chkPara, &QCheckBox::clicked, this, &FlightPanel::ParachuteClicked);
  connect(chkAI, &QCheckBox::clicked, this, &FlightPanel::AIOnlyReleased);
  txtFuel->MayLeave = [this] { return MayLeave(txtFuel, &Flight::Fuel); };
  txtDStart->MayLeave = [this] { return MayLeave(txtDStart, &Flight::StartTime); };
  txtDStart->installEventFilter(this);
}

bool FlightPanel::eventFilter(QObject* watched, QEvent* event) {
  if (watched == txtDStart && event->type() == QEvent::KeyRelease) {
    const QString typed = static_cast<QKeyEvent*>(event)->text();
    if (typed.size() == 1 && typed[0] >= u'0' && typed[0] <= u'9')
      LogAndLeave(session_.Services, "txtDStart_KeyUp", [&] {
        udDStart->SetValue(CInt(ToPath(txtDStart->text())));
        // Its handler has written the value, mostly as it was typed: this is no edit of its own.
        SetModify(session_);
      });
  }
  return GroupFrame::eventFilter(watched, event);
}

bool FlightPanel::EditFlight(const EditKind& kind,
                             const std::function<void(Flight& flight)>& write) {
  if (!flights_.Selection().Several)
    return Edit(session_, kind, [&] { write(CurrentFlight(session_)); });
  // While a flight is shown the panel holds the values of two flights.
  if (loads_ == 0) Edit(session_, kind, [&] { ApplyFlightPanel(); });
  return false;
}

void FlightPanel::PlanesChosen() {
  if (session_.Doc.bLoading) return;
  const bool done = EditFlight(kPlanes, [&](Flight& flight) {
    flight.Planes = std::to_string(CInt(ToPath(cboPlanes->currentText())));
  });
  if (done) Q_EMIT PlanesChanged();
}

void FlightPanel::SkillChosen(int row) {
  if (session_.Doc.bLoading) return;
  const bool done = EditFlight(kSkill, [&](Flight& flight) {
    flight.Skill = row == cboSkill->count() - 1 ? "Custom" : std::to_string(row);
  });
  if (done) Q_EMIT PlanesChanged();
}

void FlightPanel::WeaponChosen() {
  if (session_.Doc.bLoading) return;
  const bool done = EditFlight(kWeapons, [&](Flight& flight) {
    flight.Weapons = GetWeaponName(session_.Tables, session_.Services, flight.Class,
                                   Bytes(cboWeap->currentText()));
  });
  if (done) ShowCaption();
}

void FlightPanel::FuelChanged(const QString& text) {
  if (session_.Doc.bLoading || !IsNumeric(ToPath(text))) return;
  ResumeNext([&] {
    const double value = CDbl(ToPath(text));
    // Each of these writes runs this handler again, with the value that then counts.
    if (value > udFuel->Maximum()) return txtFuel->setText(QString::number(udFuel->Maximum()));
    if (value < udFuel->Minimum()) return txtFuel->setText(QString::number(udFuel->Minimum()));
    EditFlight(kFuel, [&](Flight& flight) { flight.Fuel = ToPath(text); });
  });
}

void FlightPanel::DelayTextChanged(const QString& text) {
  const std::string typed = ToPath(text);
  if (!IsNumeric(typed)) return txtDStart->setText(QStringLiteral("0"));
  // Each of these writes runs this handler again, with the value that then counts.
  if (CDbl(typed) > udDStart->Maximum())
    return txtDStart->setText(QString::number(udDStart->Maximum()));
  if (CDbl(typed) < udDStart->Minimum())
    return txtDStart->setText(QString::number(udDStart->Minimum()));
  // The only way from the text to the record.
  udDStart->SetValue(CInt(typed));
}

void FlightPanel::DelayChanged() {
  const bool done =
      EditFlight(kDelay, [&](Flight& flight) { flight.StartTime = ToPath(txtDStart->text()); });
  // Of a group only what tells of the start; the rest stays as it was shown.
  done ? LoadFlight(session_.Doc.CurFlight) : ShowStartTime();
}

/** Of several selected flights only the current one: the tool tip promises more. */
void FlightPanel::ParachuteClicked() {
  if (session_.Doc.bLoading) return;
  Edit(session_, kParachute,
       [&] { CurrentFlight(session_).Parachute = chkPara->isChecked() ? "" : "0"; });
}

bool FlightPanel::MayLeave(GuardedEdit* box, std::string Flight::*field) {
  if (IsNumeric(ToPath(box->text()))) return true;
  ResumeNext([&] {
    const double value = Val(CurrentFlight(session_).*field);
    box->setText(FromPath(NumberText(box == txtFuel ? RoundHalfEven(value, 0) : value)));
  });
  return false;
}

void FlightPanel::ApplyFlightPanel() {
  const FlightSelection selection = flights_.Selection();
  const bool same = SelectedSameAircraft(selection.Planes);
  const std::string weapons =
      GetWeaponName(session_.Tables, session_.Services, CurrentFlight(session_).Class,
                    Bytes(cboWeap->currentText()));
  const std::string fuel = Bytes(txtFuel->text()), delay = Bytes(txtDStart->text());
  std::size_t skillsLost = 0;
  for (const std::size_t index : selection.Flights) {
    Flight& flight = FlightAt(session_, static_cast<std::ptrdiff_t>(index));
    // A box that is still being typed into may hold anything.
    if (IsNumeric(delay)) flight.StartTime = delay;
    if (IsNumeric(fuel)) flight.Fuel = fuel;
    flight.Planes = std::to_string(CInt(ToPath(cboPlanes->currentText())));
    if (flight.Skill == "Custom") ++skillsLost;
    // "4" stays a number here; only the edit of a single flight makes it "Custom".
    flight.Skill = std::to_string(cboSkill->currentIndex());
    // A panel without a loadout takes none away.
    if (same && !weapons.empty()) flight.Weapons = weapons;
  }
  if (skillsLost > 0) TellSkillsLost(skillsLost);
}

void FlightPanel::TellSkillsLost(std::size_t flights) {
  session_.Services.Ask.Notice(
      "The group's skill, " + ToPath(cboSkill->currentText()) + ", now counts for " +
      std::to_string(flights) + (flights == 1 ? " flight" : " flights") +
      " of custom skill: Update will not write the skills of its single planes.");
}

/** Asks when the player flies in the flight that has the list's focus. On No the flight whose index
    is the row's place counted from 1 loses its flag: it need not be the one asked about. */
bool FlightPanel::MayClearPlayer(int focused, int row) {
  Mission& mission = CurrentMission(session_);
  if (!chkAI->isChecked() || focused < 0 || mission.Player != FlightAt(session_, focused).Name)
    return true;
  const Answer answer = session_.Services.Ask.MsgBox(
      "This will clear the player selected plane.\nIs this what you want to do?", Buttons::YesNo,
      Icon::Question, kProgramTitle);
  if (answer == Answer::Yes) {
    mission.Player.clear();
    mission.PlayerNum.clear();
    return true;
  }
  ResumeNext([&] { FlightAt(session_, row + 1).OnlyAI.clear(); });
  chkAI->setChecked(false);
  return false;
}

void FlightPanel::AIOnlyReleased() {
  const FlightSelection selection = flights_.Selection();
  bool settled = false;
  Edit(session_, kAIOnly, [&] {
    for (std::size_t i = 0; i < selection.Rows.size(); ++i) {
      if (!MayClearPlayer(selection.Focused, selection.Rows[i])) return;
      FlightAt(session_, static_cast<std::ptrdiff_t>(selection.Flights[i])).OnlyAI =
          chkAI->isChecked() ? "1" : "";
    }
    SetModify(session_);
    settled = true;
  });
  if (settled && !selection.Several) Q_EMIT PlanesChanged();
}

}  // namespace rws
