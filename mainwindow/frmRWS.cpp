#include "mainwindow/frmRWS.h"

#include <QGuiApplication>

#include "mission/reader.h"
#include "platform/qt_text.h"
#include "services/arrays.h"
#include "services/error_log.h"
#include "services/text.h"

/** The pictures stand in a library; without this call the linker would leave them out. */
static void InitIcons() { Q_INIT_RESOURCE(icons); }

namespace rws {

frmRWS::frmRWS(Session& session) : session_(session) {
  InitIcons();
  Build();
  ConnectDocument();
  Connect();
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
  window.IsUp = [this] { return isVisible(); };
  window.LightUpdate = [this](bool lit) { LightUpdate(lit); };
  session_.Services.Ask.Notice = [this](const std::string& text) { Notice(text); };
  flightArea->ShowPlayer = [this](const QString& text) { staPanels[1]->setText(text); };
  flightArea->fraFlight->MissionTime = [this] { return missionPanel->dtMission->time(); };
  flightArea->fraFlight->EnableMissionTime = [this](bool enabled) {
    missionPanel->dtMission->setEnabled(enabled);
  };
  missionPanel->ReloadFlight = [this] {
    flightArea->fraFlight->LoadFlight(session_.Doc.CurFlight);
  };
}

void frmRWS::Notice(const std::string& text) {
  constexpr int kNoticeMilliseconds = 8000;
  staBar->showMessage(FromPath(text), kNoticeMilliseconds);
}

void frmRWS::ShowDirectory() { staPanels[0]->setText(FromPath(session_.Doc.MissionDir)); }

void frmRWS::EnableMission(bool enabled) {
  missionPanel->EnableControls(enabled);
  flightArea->setEnabled(enabled);
  mnuMisPop->setEnabled(enabled);
}

void frmRWS::InitForm() {
  LogAndLeave(session_.Services, "InitForm", [&] {
    const bool loading = session_.Doc.bLoading;
    session_.Doc.bLoading = true;
    lstMission->SetRows({});
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

void frmRWS::Start() {
  Document& doc = session_.Doc;
  ShowDirectory();
  if (!GetMissionFiles(doc, session_.Services)) {
    Arguments.ComLineMission.clear();
    doc.Missions.clear();
    doc.MissionShadow.clear();
    InitForm();
    LightUpdate(false);
    return EnableMission(false);
  }
  EnableMission(true);
  LoadMissionArray(doc, session_.Services);
  doc.MissionShadow.clear();
  doc.bLoading = true;
  LoadMissionList();
  ShowMission();
}

void frmRWS::LoadMissionList() {
  LogAndLeave(session_.Services, "LoadMissionList", [&] {
    Document& doc = session_.Doc;
    flightArea->ClearFlightList();
    QStringList names;
    names.reserve(static_cast<qsizetype>(doc.Missions.size()));
    for (const auto& mission : doc.Missions) names << FromPath(mission.BaseName);
    // Only once: after an Update the current mission stays the current one.
    const int named = FindComLineMission(doc, Arguments);
    Arguments.ComLineMission.clear();
    comLineMissionFound_ = named >= 0;
    if (named >= 0) doc.CurMission = named;
    lstMission->SetRows(names);
    if (doc.CurMission >= names.size()) doc.CurMission = 0;
    lstMission->SelectRow(doc.CurMission);
  });
}

void frmRWS::ShowMission() {
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
    if (!doc.Missions[current].Loaded)
      ResumeNext([&] { LoadMission(doc, session_.Services, current); });
    if (doc.Closing) return;
    const Mission& mission = doc.Missions[current];
    mnuMissionPop[2]->setVisible(mission.HasBornPlace);
    ResumeNext([&] { doc.MissionShadow[current] = mission; });
    missionPanel->ShowMission();
    const bool hasFlights = SafeUBound(mission.Flights) >= 0;
    missionPanel->cmdCount->setEnabled(hasFlights);
    ResumeNext([&] {
      if (hasFlights)
        flightArea->PlaneChg(true, -1, false);
      else
        flightArea->ShowNoFlights();
    });
    // The button may still be lit by the mission that was left.
    LightUpdate(mission.Modified);
  }
  doc.bLoading = false;
}

}  // namespace rws
