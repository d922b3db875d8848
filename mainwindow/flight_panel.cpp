#include "mainwindow/flight_panel.h"

#include <QEvent>

#include "catalogues/aircraft.h"
#include "catalogues/weapons.h"
#include "controls/list_colors.h"
#include "platform/qt_text.h"
#include "services/error_log.h"
#include "services/numbers.h"
#include "session/current.h"
#include "session/loading.h"

namespace rws {

namespace {

constexpr int kCustomSkill = 4;
constexpr std::int32_t kDelayed = 0x0000FF;  // red

/** Writes a text only when it is another one: the cursor of who is typing stays in its place. */
void SetText(QLineEdit& box, const std::string& text) {
  const QString shown = FromPath(text);
  if (box.text() != shown) box.setText(shown);
}

}  // namespace

FlightPanel::FlightPanel(Session& session, FlightList& flights, QWidget* parent)
    : GroupFrame(parent), session_(session), flights_(flights) {
  Build();
  Connect();
}

std::string FlightPanel::Bytes(const QString& text) const {
  return ToBytes(session_.Services.Page, text);
}

void FlightPanel::FillFixedLists() {
  cboSkill->Fill(
      {tr("Rookie (0)"), tr("Average (1)"), tr("Veteran (2)"), tr("Ace (3)"), tr("Custom")});
  QStringList counts;
  for (int count = 1; count <= 4; ++count) counts << QString::number(count);
  cboPlanes->Fill(counts);
  cboPlanes->SelectRow(0);
  cboSkill->SelectRow(0);
}

void FlightPanel::ShowNoFlight() {
  setTitle(tr("None"));
  setToolTip({});
  cboWeap->SelectRow(0);
  txtFuel->setText(QStringLiteral("0"));
  EnableFlightControls(false, false);
}

void FlightPanel::LoadFlight(int index) {
  const Showing showing(session_);
  ++loads_;
  LogAndLeave(session_.Services, "LoadFlight", [&] {
    const Flight& flight = FlightAt(session_, index);
    CurAircraftOK = IsKnownPlane(session_.Tables, flight.Class);
    setToolTip(FromBytes(session_.Services.Page, UnknownPlaneText(session_.Tables, flight.Class)));
    // First: what follows may show the caption, which must learn no loadout for another aircraft.
    FillWeapons(flight);
    ShowPlanes(flight);
    ShowSkill(flight);
    SetText(*txtFuel, flight.Fuel);
    ShowWeapons(flight);
    ShowDelay(flight);
    ShowSwitches(flight);
    EnableFlightControls(CurAircraftOK, true);
  });
  --loads_;
}

void FlightPanel::LoadFlightOfGroup(int index) {
  const Showing showing(session_);
  const std::array<QWidget*, 9> controls{txtFuel,  udFuel,  udDStart, txtDStart, cboPlanes,
                                         cboSkill, cboWeap, chkAI,    chkPara};
  std::array<bool, controls.size()> enabled;
  for (std::size_t i = 0; i < controls.size(); ++i) enabled[i] = controls[i]->isEnabled();
  const std::array<int, 3> rows{cboPlanes->currentIndex(), cboSkill->currentIndex(),
                                cboWeap->currentIndex()};
  QStringList loadouts;
  for (int row = 0; row < cboWeap->count(); ++row) loadouts << cboWeap->itemText(row);
  const std::string tag = WeaponTag;
  const QString fuel = txtFuel->text(), delay = txtDStart->text();
  const bool onlyAI = chkAI->isChecked(), parachute = chkPara->isChecked(), known = CurAircraftOK;
  LoadFlight(index);
  // No handler of these writes may apply the panel while it is half filled.
  ++loads_;
  {
    const Loading loading(session_.Doc);
    WeaponTag = tag;
    CurAircraftOK = known;
    cboWeap->Fill(loadouts);
    cboPlanes->setCurrentIndex(rows[0]);
    cboSkill->setCurrentIndex(rows[1]);
    cboWeap->setCurrentIndex(rows[2]);
    txtFuel->setText(fuel);
    txtDStart->setText(delay);
    chkAI->setChecked(onlyAI);
    chkPara->setChecked(parachute);
  }
  --loads_;
  for (std::size_t i = 0; i < controls.size(); ++i) controls[i]->setEnabled(enabled[i]);
  ShowStartTime();
}

void FlightPanel::ShowPlanes(const Flight& flight) {
  const Loading loading(session_.Doc);
  cboPlanes->SelectRow(static_cast<int>(Val(flight.Planes)) - 1);
}

void FlightPanel::ShowSkill(const Flight& flight) {
  if (IsNumeric(flight.Skill)) return cboSkill->SelectRow(CInt(flight.Skill));
  const Loading loading(session_.Doc);
  cboSkill->SelectRow(kCustomSkill);
}

void FlightPanel::ShowWeapons(const Flight& flight) {
  if (flight.Weapons.empty()) return;
  const int row = cboWeap->findText(WeaponText(flight.Weapons), Qt::MatchExactly);
  if (CurAircraftOK) return cboWeap->SelectRow(row);
  // The list of an aircraft that is not in the table cannot spell its loadout: the handler would
  // replace it.
  const Loading loading(session_.Doc);
  cboWeap->SelectRow(row);
}

void FlightPanel::FillWeapons(const Flight& flight) {
  const WeaponList list = MakeWeaponList(session_.Tables, flight.Class);
  WeaponTag = list.Tag;
  QStringList rows;
  for (const auto& row : list.Rows) rows << FromBytes(session_.Services.Page, row);
  cboWeap->Fill(rows);
}

/** Display text of a loadout key. One that the table lacks gets its row. */
QString FlightPanel::WeaponText(const std::string& key) {
  const ShownWeapon shown = DisplayWeps(session_.Tables, session_.Services, WeaponTag, key);
  const QString text = FromBytes(session_.Services.Page, shown.Text);
  if (shown.Learnt) {
    // The row selected may move; that chooses no other loadout.
    const Loading loading(session_.Doc);
    cboWeap->insertItem(std::max(cboWeap->count() - 1, 0), text);
  }
  return text;
}

void FlightPanel::ShowCaption() {
  const Flight& flight = CurrentFlight(session_);
  const std::string plane = GetPlaneName(session_.Tables, session_.Services, flight.Class);
  QString text = FromBytes(session_.Services.Page, plane + " - Flight of " + flight.Planes + " - ");
  text += WeaponText(flight.Weapons);
  setTitle(text.replace(u'&', QStringLiteral("&&")));
}

void FlightPanel::ShowDelay(const Flight& flight) {
  SetText(*txtDStart, NumberText(Val(flight.StartTime)));
  ShowStartTime();
}

void FlightPanel::ShowStartTime() {
  constexpr int kSeconds = 60;
  const int minutes = static_cast<int>(Val(ToPath(txtDStart->text())));
  lblDelayStart->setText(
      MissionTime().addSecs(minutes * kSeconds).toString(QStringLiteral("HH:mm")));
  ColorDelay();
}

void FlightPanel::ColorDelay() {
  const bool delayed = txtDStart->text() != QStringLiteral("0");
  SetFixedColor(*lbl[7], delayed ? std::optional(FromBgr(kDelayed)) : std::nullopt,
                palette().color(QPalette::Window));
}

void FlightPanel::changeEvent(QEvent* event) {
  GroupFrame::changeEvent(event);
  if (event->type() == QEvent::PaletteChange && lbl.contains(7)) ColorDelay();
}

void FlightPanel::ShowSwitches(const Flight& flight) {
  chkAI->setChecked(!flight.OnlyAI.empty());
  chkPara->setChecked(flight.Parachute.empty());
  const bool flyable = IsFlyable(session_.Tables, flight.Class);
  chkAI->setEnabled(flyable);
  // Shown so whatever the record says, which is left as it is.
  if (!flyable) chkAI->setChecked(true);
  Q_EMIT MarkingsShown(flight.PlaneSlots[0].NumberOn.empty());
}

void FlightPanel::EnableFlightControls(bool enabled, bool parachute) {
  const std::array<QWidget*, 7> controls{txtFuel,   udFuel,   udDStart, txtDStart,
                                         cboPlanes, cboSkill, cboWeap};
  for (auto* control : controls) control->setEnabled(enabled);
  if (chkAI->isEnabled()) chkAI->setEnabled(enabled);
  chkPara->setEnabled(parachute && enabled);
  if (session_.Prefs.bLockWT) LockFlightControls(false);
}

void FlightPanel::LockFlightControls(bool enabled) {
  const std::array<QWidget*, 3> controls{cboWeap, txtDStart, udDStart};
  for (auto* control : controls) control->setEnabled(enabled);
  Q_EMIT MissionTimeLocked(!enabled);
}

void FlightPanel::EnableForGroup(bool sameAircraft, bool allFlyable) {
  cboWeap->setEnabled(sameAircraft && !session_.Prefs.bLockWT);
  chkAI->setEnabled(allFlyable);
}

}  // namespace rws
