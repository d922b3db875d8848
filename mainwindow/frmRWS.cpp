#include "mainwindow/frmRWS.h"

#include <QGuiApplication>
#include <algorithm>

#include "controls/work_progress.h"
#include "mainwindow/logic/no_missions.h"
#include "map/forms/frmMap.h"
#include "mission/reader.h"
#include "platform/qt_text.h"
#include "services/arrays.h"
#include "services/error_log.h"
#include "services/notice.h"
#include "services/text.h"
#include "services/trapped.h"
#include "session/current.h"
#include "session/doors.h"
#include "session/lines_rule.h"
#include "session/loading.h"
#include "session/recording.h"

namespace rws {

frmRWS::frmRWS(Session& session) : session_(session) {
  Build();
  ConnectDocument();
  Connect();
}

frmRWS::~frmRWS() {
  // Closing moves the focus, of which only a whole window may be told.
  disconnect(qApp, nullptr, this, nullptr);
}

void frmRWS::ConnectDocument() {
  WindowSeam& window = session_.Services.Window;
  window.ShowBusy = [](bool busy) {
    busy ? QGuiApplication::setOverrideCursor(Qt::WaitCursor)
         : QGuiApplication::restoreOverrideCursor();
  };
  window.Close = [this] {
    QMetaObject::invokeMethod(
        this, [this] { Unload(); }, Qt::QueuedConnection);
  };
  window.Progress = [this](const WorkStep& step) {
    if (!work_) work_ = std::make_unique<WorkProgress>(*this, staBar, Popups.ToolStep);
    const bool goesOn = work_->Told(step);
    if (step.Done == step.Of) work_.reset();
    return goesOn;
  };
  window.IsUp = [this] { return isVisible(); };
  window.LightUpdate = [this](bool lit) { LightUpdate(lit); };
  session_.Services.Ask.Notice = [this](const std::string& text) { Notice(text); };
  TellUnkeptSettings();
}

/** No command ends over settings that cannot be kept. */
void frmRWS::TellUnkeptSettings() {
  const Services& services = session_.Services;
  SettingsBackend& backend = session_.Services.Settings.Backend;
  backend.Write = [&services, write = backend.Write](SettingsRoot root, const std::string& key,
                                                     const std::string& name,
                                                     const SettingData& value) {
    if (write) NoticeAndLeave(services, [&] { write(root, key, name, value); });
  };
  backend.Delete = [&services, remove = backend.Delete](SettingsRoot root, const std::string& key) {
    if (remove) NoticeAndLeave(services, [&] { remove(root, key); });
  };
}

void frmRWS::Connect() {
  ConnectList();
  ConnectButtons();
  ConnectPanels();
  ConnectMissionMenu();
  ConnectTools();
  ConnectMap();
  ConnectPrefs();
  ConnectHelp();
  ConnectMenus();
  ConnectFolders();
  ConnectFilter();
  ConnectHistory();
  ConnectOutside();
  ConnectOwnEntries();
}

void frmRWS::ConnectList() {
  const Services& services = session_.Services;
  connect(lstMission, &ListBox::KeyReleased, this,
          Trapped(services, "lstMission_KeyUp", [this] { FollowList(LeaveBy::Key); }));
  connect(lstMission, &ListBox::MouseReleased, this,
          Trapped(services, "lstMission_MouseUp",
                  [this](Qt::MouseButton button, int row, QPoint position) {
                    ListMouseReleased(button, row, position);
                  }));
  connect(lstMission, &ListBox::MenuKeyPressed, this,
          Trapped(services, "lstMission_MouseUp", [this](QPoint) { OpenMissionMenuAtItsRow(); }));
}

void frmRWS::ConnectButtons() {
  for (std::size_t i = 0; i < cmd.size(); ++i)
    connect(cmd[i], &QPushButton::clicked, this,
            Trapped(session_.Services, "cmd_Click", [this, i](bool) { Press(i); }));
  // Unlike the Exit button this entry does not ask about unsaved changes; the difference stays.
  // But they must be on disk then, for the next start to offer them.
  connect(mnuExit, &QAction::triggered, this,
          Trapped(session_.Services, "mnuExit_Click", [this](bool) {
            if (KeepEdits() || AskUnsaved()) Unload();
          }));
}

void frmRWS::Press(std::size_t button) {
  switch (button) {
    case kDirectory:
      return ClickDirectory();
    case kExit:
      return ClickExit();
    case kMinimize:
      return showMinimized();
    default:
      ClickUpdate();
  }
}

void frmRWS::ConnectPanels() {
  FlightPanel& flight = *flightArea->fraFlight;
  connect(flightArea, &FlightArea::PlayerShown, staPanels[1], &QLabel::setText);
  flight.MissionTime = [this] { return missionPanel->dtMission->time(); };
  connect(&flight, &FlightPanel::MissionTimeLocked, missionPanel->dtMission, &QWidget::setDisabled);
  connect(bars, &MessageBars::Filled, flightArea, &FlightArea::SetTight);
  connect(missionPanel, &MissionPanel::TimeSet, flightArea, &FlightArea::MissionTimeChanged);
}

void frmRWS::Notice(const std::string& text) {
  constexpr int kNoticeMilliseconds = 8000;
  staBar->showMessage(FromPath(text), kNoticeMilliseconds);
}

void frmRWS::ShowUnsaved(const std::set<int>& missions) {
  lstMission->SetUnsaved(missions);
  unsavedShown_ = missions;
  TellFilterUnsaved();
  lblUnsaved->setText(missions.empty() ? QString() : tr("%1 unsaved").arg(missions.size()));
  setWindowModified(!missions.empty());
}

void frmRWS::ShowDirectory() { staPanels[0]->setText(FromPath(session_.Doc.MissionDir)); }

void frmRWS::EnableMission(bool enabled) {
  missionPanel->EnableControls(enabled);
  flightArea->setEnabled(enabled);
  mnuMisPop->setEnabled(enabled);
  mnuMission->menuAction()->setEnabled(enabled);
  // It stands in the menu Edit as well.
  flightArea->mnuPaste->setEnabled(enabled);
}

void frmRWS::LightUpdate(bool lit) {
  cmd[kUpdate]->setEnabled(lit);
  // Pale green; black text goes with it, also where the desktop is dark.
  const QString style =
      lit ? QStringLiteral("background-color: #C0FFC0; color: black;") : QString();
  // Every edit comes by here, and a style that is set again is worked out again.
  if (cmd[kUpdate]->styleSheet() != style) cmd[kUpdate]->setStyleSheet(style);
}

void frmRWS::InitForm() {
  const Showing showing(session_);
  LogAndLeave(session_.Services, "InitForm", [&] {
    const bool loading = session_.Doc.bLoading;
    session_.Doc.bLoading = true;
    lstMission->ShowMissions({});
    flightArea->ClearFlightList();
    missionPanel->fraMission->setTitle(tr("Mission Map:"));
    flightArea->ResetCaptions();
    missionPanel->cboWeather->Fill({tr("Clear"), tr("Good"), tr("Hazy"), tr("Poor"), tr("Blind"),
                                    tr("Rain/Snow"), tr("Thunder")});
    flightArea->FillFixedLists();
    missionPanel->cboWeather->SelectRow(0);
    staBar->clearMessage();
    staPanels[1]->clear();
    session_.Doc.bLoading = loading;
  });
}

void frmRWS::ShowNoMissions() {
  session_.Doc.Missions.clear();
  session_.Doc.MissionShadow.clear();
  InitForm();
  missionPanel->ShowNoMission();
  flightArea->ShowNoFlights();
  const Loading clearing(session_.Doc);
  flightArea->fraFlight->cboWeap->Fill({});
  flightArea->fraFlight->txtDStart->clear();
  flightArea->fraFlight->lblDelayStart->clear();
  FollowMissions();
  lstMission->SetEmptyText(FromPath(WhyNoMissions(session_.Doc, session_.Services)));
  LightUpdate(false);
  EnableMission(false);
  WatchShown();
  ShowHistory();
}

void frmRWS::Start(const std::string& by) {
  Document& doc = session_.Doc;
  const std::string current = CurrentMissionPath(doc);
  ShowDirectory();
  if (!GetMissionFiles(doc, session_.Services)) {
    Arguments.ComLineMission.clear();
    NoteDrops(session_, by);
    return ShowNoMissions();
  }
  // Missions may have come or gone before it; by its place only when it is gone itself.
  const auto& files = doc.MissionFiles;
  const auto found = std::find(files.begin(), files.end(), current);
  if (found != files.end()) doc.CurMission = static_cast<int>(found - files.begin());
  EnableMission(true);
  LoadMissionArray(doc, session_.Services);
  doc.MissionShadow.clear();
  NoteDrops(session_, by);
  doc.bLoading = true;
  LoadMissionList();
  ShowMission();
}

void frmRWS::LoadMissionList() {
  LogAndLeave(session_.Services, "LoadMissionList", [&] {
    Document& doc = session_.Doc;
    flightArea->ClearFlightList();
    std::vector<MissionRow> rows;
    for (const auto& mission : doc.Missions)
      rows.push_back({static_cast<int>(rows.size()), FromPath(mission.BaseName)});
    // Only once: after an Update the current mission stays the current one.
    const int named = FindComLineMission(doc, Arguments);
    Arguments.ComLineMission.clear();
    comLineMissionFound_ = named >= 0;
    if (named >= 0) doc.CurMission = named;
    lstMission->ShowMissions(std::move(rows));
    if (doc.CurMission >= std::ssize(doc.Missions)) doc.CurMission = 0;
    FollowMissions();
    lstMission->SelectMission(doc.CurMission);
  });
}

void frmRWS::ShowMission(Baseline baseline, int flight) {
  FillMission(baseline, flight);
  if (session_.Doc.Closing) return;
  Record(session_, nullptr);
  RememberNames();
  WatchShown();
  ShowHistory();
}

void frmRWS::FillMission(Baseline baseline, int flight) {
  const Showing showing(session_);
  Document& doc = session_.Doc;
  doc.bLoading = true;
  ResumeNext([&] { flightArea->ClearFlightList(); });
  ResumeNext([&] { flightArea->ClearFrames(true); });
  // The shadow of a mission is looked at only once it has been shown: taking all of them at each
  // selection would cost the more the more have been read.
  ResumeNext([&] {
    if (doc.MissionShadow.size() != doc.Missions.size()) doc.MissionShadow = doc.Missions;
  });
  if (!doc.Missions.empty()) {
    const auto current = static_cast<std::size_t>(doc.CurMission);
    // A mission that was moved away or deleted must not reach the reader, which would end the run.
    ReadCurrent(session_, baseline, lstMission->IsGone(doc.CurMission));
    if (doc.Closing) return;
    FollowLinesRule(session_, current);
    const Mission& mission = doc.Missions[current];
    mnuMissionPop[kSpawnPoints]->setVisible(mission.HasBornPlace);
    missionPanel->ShowMission();
    const bool hasFlights = SafeUBound(mission.Flights) >= 0;
    missionPanel->cmdCount->setEnabled(hasFlights);
    ResumeNext([&] {
      // A step that is undone may have been made while a flight was shown that went with it.
      const bool isThere = flight < std::ssize(mission.Flights);
      if (hasFlights)
        flightArea->PlaneChg(true, isThere ? flight : -1, false);
      else
        flightArea->ShowNoFlights();
    });
    // The button may still be lit by the mission that was left.
    LightUpdate(mission.Modified);
  }
  doc.bLoading = false;
}

}  // namespace rws
