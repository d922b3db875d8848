#pragma once

#include <QCheckBox>
#include <QLabel>
#include <QTime>
#include <functional>
#include <map>

#include "controls/drop_down.h"
#include "controls/group_frame.h"
#include "controls/guarded_edit.h"
#include "controls/up_down.h"
#include "mainwindow/flight_list.h"
#include "session/doors.h"

namespace rws {

/** The frame `fraFlight`: shows and edits what belongs to a flight as a whole, or to all selected
    flights while the list's tag is "multiple". A write to a control by code runs its handler as the
    user's own edit does; `bLoading` tells the handlers apart where they look at it. */
class FlightPanel : public GroupFrame {
  Q_OBJECT

 public:
  FlightPanel(Session& session, FlightList& flights, QWidget* parent);

  /** Shows a flight of the current mission, index from 0. Some values are written back in the
     panel's own spelling. A failure is logged; the rest of the panel stays as it was. */
  void LoadFlight(int index);
  /** The same for a group, of which the panel goes on showing what it has shown; only the time of
      the start is the new one. */
  void LoadFlightOfGroup(int index);
  /** Enables or disables what edits a flight; `parachute` false leaves that box disabled. The lock
     of the preferences wins. */
  void EnableFlightControls(bool enabled, bool parachute);
  /** Enables or disables loadout, mission time and delayed start, as the preferences want it. */
  void LockFlightControls(bool enabled);
  /** Enables what makes sense for a selection of several flights. */
  void EnableForGroup(bool sameAircraft, bool allFlyable);
  /** Fills the lists that never change and selects their first rows. */
  void FillFixedLists();
  /** Shows that the mission has no flights. */
  void ShowNoFlight();
  /** What the current flight is: aircraft, number of planes, loadout. */
  void ShowCaption();

  std::map<int, QLabel*> lbl;
  DropDown *cboPlanes, *cboSkill, *cboWeap;
  GuardedEdit *txtFuel, *txtDStart;
  UpDown *udFuel, *udDStart;
  QLabel* lblDelayStart;
  QCheckBox *chkAI, *chkPara;

  /** The aircraft for which the loadout list stands: the tag of `cboWeap`. */
  std::string WeaponTag;
  /** The installed game has the current flight's aircraft. */
  bool CurAircraftOK = false;

  /** The mission's time of day as the window shows it. */
  std::function<QTime()> MissionTime;

 Q_SIGNALS:
  /** All that shows the planes of the current flight is to be filled again. */
  void PlanesChanged();
  void MissionTimeLocked(bool locked);
  /** Markings of the first plane. */
  void MarkingsShown(bool on);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void Build();
  void BuildLabels();
  void PlaceControls();
  void NameControls();
  void Connect();
  bool eventFilter(QObject* watched, QEvent* event) override;

  std::string Bytes(const QString& text) const;

  void ShowPlanes(const Flight& flight);
  void ShowSkill(const Flight& flight);
  void ShowWeapons(const Flight& flight);
  void FillWeapons(const Flight& flight);
  QString WeaponText(const std::string& key);
  void ShowDelay(const Flight& flight);
  void ShowStartTime();
  void ColorDelay();
  void ShowSwitches(const Flight& flight);

  /** Writes to the current flight, or the whole panel to all that are selected. True for the first
      when it is done. */
  bool EditFlight(const EditKind& kind, const std::function<void(Flight& flight)>& write);
  /** Copies all five values of the panel to every selected flight, whichever was changed. The
      loadout only where all fly one aircraft. */
  void ApplyFlightPanel();
  void TellSkillsLost(std::size_t flights);
  void PlanesChosen();
  void SkillChosen(int row);
  void WeaponChosen();
  void FuelChanged(const QString& text);
  void DelayTextChanged(const QString& text);
  void DelayChanged();
  void ParachuteClicked();
  void AIOnlyReleased();
  bool MayClearPlayer(int focused, int row);
  bool MayLeave(GuardedEdit* box, std::string Flight::*field);

  Session& session_;
  FlightList& flights_;
  int loads_ = 0;
};

}  // namespace rws
