#include "catalogues/dogfight.h"
#include "editors/frmBrief.h"
#include "editors/frmDogFight.h"
#include "editors/frmStatic.h"
#include "mainwindow/frmRWS.h"
#include "mainwindow/logic/aircraft_count.h"
#include "mainwindow/trapped.h"
#include "services/platform/qt_text.h"
#include "tools/logic/mission_files.h"
#include "tools/logic/mission_menu.h"

namespace rws {

void frmRWS::ConnectMissionMenu() {
  const auto command = [this](std::size_t entry, void (frmRWS::*run)()) {
    connect(
        mnuMissionPop[entry], &QAction::triggered, this,
        Trapped(context_.Services, "mnuMissionPop_Click", [this, run](bool) { (this->*run)(); }));
  };
  command(0, &frmRWS::ClickEditBrief);
  command(1, &frmRWS::ClickViewText);
  command(2, &frmRWS::ClickSpawnPoints);
  command(3, &frmRWS::ClickAddSound);
  command(5, &frmRWS::ClickSaveAs);
  command(6, &frmRWS::ClickDelete);
  command(7, &frmRWS::ClickMove);
  connect(missionPanel->cmdModSA, &QToolButton::clicked, this,
          Trapped(context_.Services, "cmdModSA_Click", [this](bool) { ClickParkedAircraft(); }));
}

/** What every entry ends with. Rereading the directory drops the edits in memory. */
void frmRWS::EndMissionCommand(bool reread) {
  if (reread) Start();
  if (!context_.Doc.Missions.empty()) SetModify(context_.Doc, context_.Services);
}

void frmRWS::EndFileCommand(FileOutcome outcome) {
  if (outcome != FileOutcome::Failed) EndMissionCommand(outcome == FileOutcome::Reread);
}

void frmRWS::ClickEditBrief() {
  std::vector<std::string> captions;
  for (int row = 0; row < missionPanel->cboWeather->count(); ++row)
    captions.push_back(ToPath(missionPanel->cboWeather->itemText(row)));
  const BriefFields fields = MakeBriefFields(context_.Doc, captions);
  frmBrief form(context_, this);
  form.BriefName = fields.BriefName;
  form.Backups = fields.Backups;
  form.MissionPath = fields.MissionPath;
  form.Weather = fields.Weather;
  form.Map = fields.Map;
  form.MisTime = fields.MisTime;
  form.Clouds = fields.Clouds;
  form.AircraftCount = [this] {
    return AircraftCountText(At(context_.Doc.Missions, context_.Doc.CurMission), context_.Tables,
                             context_.Services);
  };
  form.LoadForm();
  ShowDialog(form);
  EndMissionCommand(false);
}

void frmRWS::ClickViewText() {
  ViewMissionText(context_.Doc, context_.Services);
  EndMissionCommand(false);
}

void frmRWS::ClickSpawnPoints() {
  Document& doc = context_.Doc;
  // The reader takes other sections for home bases too; without one there is nothing to edit.
  if (At(doc.MissionShadow, doc.CurMission).BornPlaces.empty())
    return Notice("This mission has no spawn points.");
  ReadDogFight(context_.Tables, context_.Services);
  frmDogFight form(context_, this);
  form.Idx = doc.CurMission;
  form.LoadForm();
  ShowDialog(form);
  EndMissionCommand(false);
}

void frmRWS::ClickAddSound() {
  if (AddSoundFile(context_.Doc, context_.Services)) missionPanel->ShowSound();
  EndMissionCommand(false);
}

void frmRWS::ClickSaveAs() { EndFileCommand(SaveMissionAs(context_.Doc, context_.Services)); }

void frmRWS::ClickDelete() { EndFileCommand(DeleteMission(context_.Doc, context_.Services)); }

void frmRWS::ClickMove() { EndFileCommand(MoveMission(context_.Doc, context_.Services)); }

void frmRWS::ClickParkedAircraft() {
  frmStatic form(context_, this);
  form.ShowDialog = ShowDialog;
  form.LoadForm();
  ShowDialog(form);
  if (form.Static()) SetModify(context_.Doc, context_.Services);
}

}  // namespace rws
