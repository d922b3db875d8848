#pragma once

#include <QGroupBox>
#include <QLabel>
#include <QToolButton>
#include <QWidget>
#include <map>

#include "controls/check_box.h"
#include "controls/drop_down.h"
#include "controls/guarded_edit.h"
#include "controls/time_picker.h"
#include "controls/up_down.h"
#include "mission/writer.h"
#include "session/doors.h"

namespace rws {

/** Shows and edits the values that belong to a mission as a whole. A write to a control by code
   runs its handler as the user's own edit does; `bLoading` tells the handlers apart. */
class MissionPanel : public QWidget {
  Q_OBJECT

 public:
  MissionPanel(Session& session, QWidget* parent);

  /** Fills every control from the current mission. A value that cannot be shown leaves its control
     as it is. */
  void ShowMission();
  /** Empties every control: there is no mission. */
  void ShowNoMission();
  /** Enables or disables everything; disabled when there is no mission. */
  void EnableControls(bool enabled);
  /** Shows whether the current mission has a sound, and which. */
  void ShowSound();
  /** The values on show, for lines of a mission without their own. */
  ShownValues Shown() const;

  QGroupBox* fraMission;
  std::map<int, QLabel*> lbl;
  DropDown* cboWeather;
  GuardedEdit* txtWeather;
  UpDown* udClouds;
  TimePicker* dtMission;
  CheckBox *chkST, *chkWL;
  QToolButton *cmdCount, *cmdModSA, *imgSnd;

 Q_SIGNALS:
  /** The mission's time was changed, by the user or by showing it. */
  void TimeSet();

 private:
  void Build();
  void BuildValues();
  void BuildCounts();
  void NameControls();
  void Connect();
  bool eventFilter(QObject* watched, QEvent* event) override;

  std::string ClockText() const;
  void ShowConstant(CheckBox* box, int value);
  void ShowStationary();

  void WeatherChosen(int row);
  void CloudsChanged(const QString& text);
  bool MayLeaveClouds();
  void TimeChanged();
  void ConstantClicked(CheckBox* box, const EditKind& kind, std::int16_t Mission::*field);
  void ShowAircraftCount();
  void PlayBriefSound();
  void PlaySoundFile(const std::string& path, bool stop);

  Session& session_;
};

}  // namespace rws
