#include "controls/work_progress.h"
#include "library/forms/frmFind.h"
#include "mainwindow/frmRWS.h"
#include "platform/qt_text.h"
#include "services/error_log.h"
#include "services/setting_values.h"
#include "services/trapped.h"
#include "session/current.h"
#include "session/journal.h"
#include "session/recording.h"
#include "tools/frmEditMany.h"
#include "tools/frmSkins.h"

namespace rws {

void frmRWS::ConnectTools() {
  const auto command = [this](QAction* entry, const char* name, std::function<void()> run) {
    connect(entry, &QAction::triggered, this,
            Trapped(session_.Services, name, [run = std::move(run)](bool) { run(); }));
  };
  Document& doc = session_.Doc;
  const Services& services = session_.Services;
  command(mnuTools[kSkinManager], "mnuTools_Click", [this] { ClickSkinManager(); });
  command(mnuTools[kRenameAll], "mnuTools_Click", [&, this] {
    RunTool("Rename All", true,
            [&](const ToolSeam& seam) { return RenameAll(doc, services, seam); });
  });
  command(mnuTools[kConvertFolder], "mnuTools_Click", [&, this] {
    RunTool("Convert Mission Folder", true,
            [&](const ToolSeam& seam) { return ConvertMissionFolder(doc, services, seam); });
  });
  command(mnuTools[kCopyFrom], "mnuTools_Click", [&, this] {
    RunTool("Copy From", true, [&](const ToolSeam& seam) { return CopyFrom(doc, services, seam); });
  });
  command(mnuEditMany, "mnuEditMany_Click", [this] { EditMany(ScopesHere()); });
  for (std::size_t i = 0; i < mnuCases.size(); ++i)
    command(mnuCases[i], "mnuCase_Click", [&, this, i] {
      // Only a name that is typed ends in a reread.
      RunTool("Rename", i == kManual, [&, i](const ToolSeam& seam) {
        return RenameCase(doc, services, static_cast<int>(i), seam);
      });
    });
}

/** Settles the edits that a reread would drop, as leaving the mission does. False if the user
    cancelled. */
bool frmRWS::SettleEdits() {
  Document& doc = session_.Doc;
  if (!IsAnyPending(doc)) return true;
  if (!SettlePending(doc, session_.Services, session_.Prefs, [this] { return ClickUpdate(); }))
    return false;
  NoteDrops(session_, "leaving");
  ShowHistory();
  // Answered No, the file's own state is shown again: what follows may end without a reread.
  if (!doc.Closing && !doc.Missions.empty() && !CurrentMission(session_).Loaded) ShowMission();
  return !doc.Closing;
}

/** As one step of the history, in which what settling writes has no part. */
void frmRWS::RunTool(const std::string& title, bool rereads,
                     const std::function<ToolResult(const ToolSeam&)>& tool) {
  WorkProgress progress(*this, staBar, Popups.ToolStep);
  ToolSeam seam;
  if (rereads)
    seam.Settle = [this] {
      const PausedJournal paused(session_);
      return SettleEdits();
    };
  seam.Told = [&](const WorkStep& step) { return progress.Told(step); };
  ToolResult result;
  RecordFiles(session_, title, [&] { result = tool(seam); });
  if (session_.Doc.Closing) return;
  TakeToolResult(result, title);
  TellToolEnd(result);
  KeepRenamed();
  OfferHalfRenamed();
  ShowHistory();
}

/** Behind the reason for which the others are left out, if there is one. */
void frmRWS::TellToolEnd(const ToolResult& result) {
  if (result.Of == 0) return;
  std::string text = staBar->currentMessage().toStdString();
  if (!text.empty()) text += " ";
  Notice(text + WorkEndText(result.Done, result.Of - result.Done) + ".");
}

void frmRWS::TakeToolResult(const ToolResult& result, const std::string& by) {
  Document& doc = session_.Doc;
  switch (result.Outcome) {
    case ToolOutcome::Nothing:
    case ToolOutcome::Cancelled:
      return;
    case ToolOutcome::Gone:
      return lstMission->MarkGone(doc.CurMission);
    case ToolOutcome::RowText:
      lstMission->SetMissionText(doc.CurMission, FromPath(result.Text));
      return FollowMissions();
    case ToolOutcome::Rows:
      for (int mission = 0; mission < lstMission->MissionCount(); ++mission)
        lstMission->SetMissionText(mission, FromPath(At(doc.Missions, mission).BaseName));
      return FollowMissions();
    case ToolOutcome::GoToFolder:
      return GoToFolder(result.Text);
    case ToolOutcome::Reread:
      doc.Missions.clear();
      return Start(by);
  }
}

void frmRWS::GoToFolder(const std::string& folder) {
  Document& doc = session_.Doc;
  doc.MissionDir = folder;
  // Nobody has asked for what it would hide there.
  qryFilter->txtQuery->clear();
  ShowDirectory();
  ResumeNext([&] { WriteSetting(session_.Services.Settings, setting::LastDirPath, folder); });
  RememberFolder();
  doc.CurMission = 0;
  doc.CurFlight = 0;
  doc.Missions.clear();
  // The first mission there, also where one has the name of the last.
  doc.MissionFiles.clear();
  Start("leaving");
  OfferHalfRenamed();
}

void frmRWS::EditMany(std::vector<EditManyScope> scopes) {
  frmEditMany form(session_, this);
  form.Scopes = std::move(scopes);
  form.Step = Popups.ToolStep;
  form.Changed = [this](const std::vector<std::string>& paths) {
    bars->Hide(kReloadBar);
    const Document& doc = session_.Doc;
    if (!doc.MissionFiles.empty()) GoTo(At(doc.MissionFiles, doc.CurMission), doc.CurFlight);
    FollowMissions();
    if (Find && Find->isVisible()) Find->Library->ReadAgain(paths);
    ShowHistory();
  };
  form.LoadForm();
  Popups.ShowDialog(form);
}

/** What the filter has left comes first. */
std::vector<EditManyScope> frmRWS::ScopesHere() const {
  const Document& doc = session_.Doc;
  std::vector<EditManyScope> scopes;
  if (lstMission->RowCount() < lstMission->MissionCount()) {
    EditManyScope& shown = scopes.emplace_back();
    shown.Caption = "Missions that the filter shows";
    for (int row = 0; row < lstMission->RowCount(); ++row)
      shown.Paths.push_back(At(doc.MissionFiles, lstMission->MissionAt(row)));
  }
  scopes.push_back({"Missions of this folder", doc.MissionFiles});
  if (Find && Find->isVisible()) {
    scopes.push_back({"Missions found by Find Missions", Find->FoundPaths()});
    scopes.push_back({"Missions selected in Find Missions", Find->SelectedPaths()});
  }
  return scopes;
}

void frmRWS::ClickSkinManager() {
  frmSkins form(session_, this);
  // Without a flight it opens with no aircraft chosen.
  ResumeNext([&] { form.Plane = CurrentFlight(session_).Class; });
  form.LoadForm();
  Popups.ShowDialog(form);
}

}  // namespace rws
