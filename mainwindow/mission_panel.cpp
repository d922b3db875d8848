#include "mainwindow/mission_panel.h"

#include <QMouseEvent>

#include "mainwindow/logic/aircraft_count.h"
#include "mainwindow/logic/stationary.h"
#include "platform/qt_text.h"
#include "services/clock.h"
#include "services/error_log.h"
#include "services/numbers.h"
#include "services/paths.h"
#include "services/text.h"
#include "services/units.h"
#include "session/current.h"
#include "session/doors.h"
#include "session/loading.h"

namespace rws {

namespace {

constexpr EditKind kWeather{nullptr, "Weather"};
constexpr EditKind kCloudHeight{"txtWeather_Change", "Cloud height"};
constexpr EditKind kTime{"dtMission_Change", "Mission time"};
constexpr EditKind kStaticTime{"chkST_Click", "Static time"};
constexpr EditKind kUserLoadout{"chkWL_Click", "No user loadout"};

}  // namespace

MissionPanel::MissionPanel(Session& session, QWidget* parent) : QWidget(parent), session_(session) {
  Build();
  Connect();
}

void MissionPanel::Connect() {
  connect(cboWeather, &QComboBox::currentIndexChanged, this, &MissionPanel::WeatherChosen);
  connect(txtWeather, &QLineEdit::textChanged, this, &MissionPanel::CloudsChanged);
  txtWeather->MayLeave = [this] { return MayLeaveClouds(); };
  connect(dtMission, &QTimeEdit::timeChanged, this, &MissionPanel::TimeChanged);
  connect(chkST, &QCheckBox::clicked, this,
          [this] { ConstantClicked(chkST, kStaticTime, &Mission::TimeConstant); });
  connect(chkWL, &QCheckBox::clicked, this,
          [this] { ConstantClicked(chkWL, kUserLoadout, &Mission::WeaponsConstant); });
  connect(cmdCount, &QToolButton::clicked, this, &MissionPanel::ShowAircraftCount);
  connect(imgSnd, &QToolButton::clicked, this, [this] { ResumeNext([&] { PlayBriefSound(); }); });
  imgSnd->installEventFilter(this);
}

bool MissionPanel::eventFilter(QObject* watched, QEvent* event) {
  if (watched == imgSnd && event->type() == QEvent::MouseButtonRelease &&
      static_cast<QMouseEvent*>(event)->button() == Qt::RightButton)
    PlaySoundFile("", true);
  return QWidget::eventFilter(watched, event);
}

std::string MissionPanel::ClockText() const {
  return ToPath(dtMission->time().toString(QStringLiteral("HH.mm")));
}

ShownValues MissionPanel::Shown() const {
  return {cboWeather->currentIndex(), ToBytes(session_.Services.Page, txtWeather->text()),
          ClockText()};
}

void MissionPanel::EnableControls(bool enabled) { setEnabled(enabled); }

void MissionPanel::ShowMission() {
  const Showing showing(session_);
  ResumeNext([&] {
    fraMission->setTitle(tr("Mission Map: ") +
                         FromBytes(session_.Services.Page, CurrentMission(session_).MapName)
                             .replace(u'&', QStringLiteral("&&")));
  });
  ResumeNext([&] { cboWeather->SelectRow(CInt(Val(CurrentMission(session_).CloudType))); });
  ResumeNext([&] {
    txtWeather->setText(FromPath(NumberText(Val(CurrentMission(session_).CloudHeight))));
  });
  ResumeNext([&] {
    const auto time = QTime::fromString(FromPath(HoursToClock(CurrentMission(session_).Time)),
                                        QStringLiteral("H:mm"));
    if (time.isValid()) dtMission->setTime(time);
  });
  ResumeNext([&] { ShowConstant(chkWL, CurrentMission(session_).WeaponsConstant); });
  ResumeNext([&] { ShowConstant(chkST, CurrentMission(session_).TimeConstant); });
  ResumeNext([&] { ShowSound(); });
  ResumeNext([&] { ShowStationary(); });
}

void MissionPanel::ShowNoMission() {
  const Showing showing(session_);
  const Loading loading(session_.Doc);
  txtWeather->clear();
  txtWeather->setToolTip(tr("Current cloud height"));
  dtMission->setTime(QTime(0, 0));
  for (auto* box : {chkST, chkWL}) box->setChecked(false);
  imgSnd->hide();
  lbl[9]->setText(tr("Modify Stationary Aircraft"));
  cmdModSA->setToolTip(tr("Modify Stationary ground aircraft"));
}

/** A constant of 2, which is neither on nor off, shows as half checked; other numbers cannot be
    shown. */
void MissionPanel::ShowConstant(CheckBox* box, int value) {
  if (value < 0 || value > 2) return;
  constexpr Qt::CheckState kStates[] = {Qt::Unchecked, Qt::Checked, Qt::PartiallyChecked};
  box->setCheckState(kStates[value]);
}

void MissionPanel::ShowSound() {
  const bool hasSound = !Trim(CurrentMission(session_).BriefSoundLine).empty();
  imgSnd->setVisible(hasSound);
  if (hasSound)
    imgSnd->setToolTip(tr("Click here to hear the sound file \"%1\" attached to this mission.")
                           .arg(FromPath(GetFileName(CurrentMission(session_).BriefSound))));
}

void MissionPanel::ShowStationary() {
  const int count =
      CountStationary(session_.Doc, static_cast<std::size_t>(session_.Doc.CurMission));
  const QString text = FromPath(StationaryText(count));
  lbl[9]->setText(text);
  cmdModSA->setToolTip(count >= 1 ? text : tr("Modify Stationary ground aircraft"));
  cmdModSA->setEnabled(count >= 1);
}

void MissionPanel::WeatherChosen(int row) {
  if (session_.Doc.bLoading) return;
  Edit(session_, kWeather, [&] { CurrentMission(session_).CloudType = std::to_string(row); });
}

void MissionPanel::CloudsChanged(const QString& text) {
  if (session_.Doc.Missions.empty()) return;
  LogAndLeave(session_.Services, kCloudHeight.Handler, [&] {
    const double value = Val(ToPath(text));
    // Each of these writes runs this handler again, with the value that then counts.
    if (value > udClouds->Maximum())
      return txtWeather->setText(QString::number(udClouds->Maximum()));
    if (value < udClouds->Minimum())
      return txtWeather->setText(QString::number(udClouds->Minimum()));
    txtWeather->setToolTip(FromPath(MetersToFeet(ToPath(text))) + tr(" feet"));
    // Half a number is put back when the box is left, which a command need not do.
    if (session_.Doc.bLoading || !IsNumeric(ToPath(text))) return;
    Edit(session_, kCloudHeight,
         [&] { CurrentMission(session_).CloudHeight = ToBytes(session_.Services.Page, text); });
  });
}

bool MissionPanel::MayLeaveClouds() {
  if (IsNumeric(ToPath(txtWeather->text()))) return true;
  ResumeNext([&] {
    txtWeather->setText(
        FromPath(NumberText(RoundHalfEven(Val(CurrentMission(session_).CloudHeight), 0))));
  });
  return false;
}

void MissionPanel::TimeChanged() {
  if (session_.Doc.Missions.empty()) return;
  // Runs while controls are filled as well: showing a mission writes its time back in the spelling
  // of the conversion.
  const bool done = Edit(session_, kTime, [&] {
    Document& doc = session_.Doc;
    CurrentMission(session_).Time = ClockToHours(ClockText());
    // The shadow is the mission as it was shown: another spelling of its time is no edit.
    if (doc.bLoading) At(doc.MissionShadow, doc.CurMission).Time = CurrentMission(session_).Time;
  });
  if (done) Q_EMIT TimeSet();
}

void MissionPanel::ConstantClicked(CheckBox* box, const EditKind& kind,
                                   std::int16_t Mission::*field) {
  if (session_.Doc.bLoading) return;
  Edit(session_, kind, [&] { CurrentMission(session_).*field = box->isChecked() ? 1 : 0; });
}

void MissionPanel::ShowAircraftCount() {
  // A click by the button's key comes a moment later, when the mission may have gone.
  if (session_.Doc.Missions.empty()) return;
  LogAndLeave(session_.Services, "cmdCount_Click", [&] {
    const Services& services = session_.Services;
    const std::string text = AircraftCountText(CurrentMission(session_), session_.Tables, services);
    services.Ask.MsgBox(services.Page.ToUtf8(text), Buttons::Ok, Icon::Information,
                        CurrentMission(session_).BaseName);
  });
}

/** A mission from elsewhere may name any file of this computer. */
void MissionPanel::PlayBriefSound() {
  const std::string& sound = CurrentMission(session_).BriefSound;
  const std::string& game = session_.Doc.GamePath;
  if (!ClimbsOut(std::string_view(sound).substr(sound.starts_with(game) ? game.size() : 0)))
    return PlaySoundFile(sound, false);
  session_.Services.Ask.MsgBox(
      "\"" + sound + "\" lies outside the game's folder and is not played.", Buttons::Ok,
      Icon::Exclamation, kProgramTitle);
}

void MissionPanel::PlaySoundFile(const std::string& path, bool stop) {
  const Shell& shell = session_.Services.System;
  ResumeNext([&] {
    if (session_.Prefs.bSndPlayer) {
      shell.Execute("Play", path);
      return;
    }
    const FileSystem& files = session_.Services.Files;
    if (files.FileExists(path)) shell.StartSound(files.Resolve(path));
    if (stop) shell.StopSound();
  });
}

}  // namespace rws
