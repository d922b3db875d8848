#include "catalogues/dogfight.h"
#include "editors/frmBrief.h"
#include "editors/frmDogFight.h"
#include "editors/frmStatic.h"
#include "mainwindow/frmRWS.h"
#include "mainwindow/logic/aircraft_count.h"
#include "platform/qt_text.h"
#include "services/trapped.h"
#include "session/current.h"
#include "session/doors.h"
#include "session/journal.h"
#include "session/recording.h"
#include "tools/logic/mission_files.h"
#include "tools/logic/mission_menu.h"

namespace rws {

namespace {

/** Compared as every entry of the menu is, at its end. */
constexpr EditKind kSound{"mnuMissionPop_Click", "Add Sound File", Lighting::None};

}  // namespace

void frmRWS::ConnectMissionMenu() {
  const auto command = [this](MissionEntry entry, void (frmRWS::*run)()) {
    connect(
        mnuMissionPop[entry], &QAction::triggered, this,
        Trapped(session_.Services, "mnuMissionPop_Click", [this, run](bool) { (this->*run)(); }));
  };
  command(kEditBrief, &frmRWS::ClickEditBrief);
  command(kViewText, &frmRWS::ClickViewText);
  command(kSpawnPoints, &frmRWS::ClickSpawnPoints);
  command(kAddSound, &frmRWS::ClickAddSound);
  command(kSaveAs, &frmRWS::ClickSaveAs);
  command(kDelete, &frmRWS::ClickDelete);
  command(kMove, &frmRWS::ClickMove);
  connect(missionPanel->cmdModSA, &QToolButton::clicked, this,
          Trapped(session_.Services, "cmdModSA_Click", [this](bool) { ClickParkedAircraft(); }));
}

/** What every entry ends with. Rereading the directory drops the edits in memory. */
void frmRWS::EndMissionCommand(bool reread, const std::string& by) {
  if (reread) Start(by);
  if (!session_.Doc.Missions.empty()) SetModify(session_);
  ShowHistory();
}

/** A command on the files of the current mission, as one step of the history. */
void frmRWS::RunFileCommand(const std::string& name,
                            ToolOutcome (*command)(const Document&, const Services&)) {
  const std::string title = name + " of " + CurrentMissionRecord(session_.Doc).BaseName;
  ToolOutcome outcome = ToolOutcome::Nothing;
  Record(session_, nullptr);
  RecordFiles(session_, title, [&] { outcome = command(session_.Doc, session_.Services); });
  if (outcome == ToolOutcome::Gone)
    lstMission->MarkGone(session_.Doc.CurMission);
  else if (outcome != ToolOutcome::Nothing)
    EndMissionCommand(outcome == ToolOutcome::Reread, name);
  KeepRenamed();
  ShowHistory();
}

void frmRWS::ClickEditBrief() {
  std::vector<std::string> captions;
  for (int row = 0; row < missionPanel->cboWeather->count(); ++row)
    captions.push_back(ToPath(missionPanel->cboWeather->itemText(row)));
  const BriefFields fields = MakeBriefFields(session_.Doc, session_.Services, captions);
  frmBrief form(session_, this);
  form.BriefName = fields.BriefName;
  form.Backups = session_.Prefs.bBackup;
  form.MissionPath = fields.MissionPath;
  form.Weather = fields.Weather;
  form.Map = fields.Map;
  form.MisTime = fields.MisTime;
  form.Clouds = fields.Clouds;
  form.AircraftCount = [this] {
    return AircraftCountText(CurrentMission(session_), session_.Tables, session_.Services);
  };
  form.LoadForm();
  Popups.ShowDialog(form);
  Library->ReadAgain({fields.MissionPath});
  EndMissionCommand(false);
}

void frmRWS::ClickViewText() {
  ViewMissionText(session_.Doc, session_.Services);
  EndMissionCommand(false);
}

void frmRWS::ClickSpawnPoints() {
  Document& doc = session_.Doc;
  // The reader takes other sections for home bases too; without one there is nothing to edit.
  if (At(doc.MissionShadow, doc.CurMission).BornPlaces.empty())
    return Notice("This mission has no spawn points.");
  ReadDogFight(session_.Tables, session_.Services);
  frmDogFight form(session_, this);
  form.Idx = doc.CurMission;
  form.LoadForm();
  const std::size_t steps = session_.History.Done;
  const auto shadow = [&]() -> const Mission& { return At(doc.MissionShadow, doc.CurMission); };
  const FrozenMission before = Freeze(shadow(), nullptr);
  Popups.ShowDialog(form);
  // The form edits the shadow, and only Apply takes that over.
  if (form.frmCancel && !SameContent(*before, *Freeze(shadow(), before)))
    NoteDropsOfDialog(session_, steps, "closing the home bases",
                      [&](Mission& mission) { mission.BornPlaces = shadow().BornPlaces; });
  EndMissionCommand(false);
}

void frmRWS::ClickAddSound() {
  bool attached = false;
  Edit(session_, kSound, [&] { attached = AddSoundFile(session_.Doc, session_.Services); });
  if (attached) missionPanel->ShowSound();
  EndMissionCommand(false);
}

void frmRWS::ClickSaveAs() { RunFileCommand("Save As", SaveMissionAs); }

void frmRWS::ClickDelete() { RunFileCommand("Delete", DeleteMission); }

void frmRWS::ClickMove() { RunFileCommand("Move", MoveMission); }

void frmRWS::ClickParkedAircraft() {
  frmStatic form(session_, this);
  form.ShowDialog = Popups.ShowDialog;
  form.LoadForm();
  Popups.ShowDialog(form);
  if (form.Static()) SetModify(session_);
}

}  // namespace rws
