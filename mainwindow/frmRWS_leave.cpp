#include <QCloseEvent>
#include <algorithm>
#include <utility>

#include "library/forms/frmFind.h"
#include "mainwindow/frmRWS.h"
#include "map/forms/frmMap.h"
#include "platform/qt_text.h"
#include "services/error_log.h"
#include "services/paths.h"
#include "services/pickers.h"
#include "services/setting_values.h"
#include "session/current.h"
#include "session/lines_rule.h"
#include "session/recording.h"
#include "tools/frmCheck.h"

namespace rws {

void frmRWS::LightCurrentMission() {
  const int current = session_.Doc.CurMission;
  if (lstMission->SelectedMission() != current) lstMission->SelectMission(current);
}

/** The menu works on the current mission, which need not be the one that is lit after Cancel. */
void frmRWS::OpenMissionMenu(QPoint globalPosition) {
  if (session_.Doc.Missions.empty()) return;
  LightCurrentMission();
  Popups.OpenMenu(*mnuMisPop, globalPosition);
}

void frmRWS::OpenMissionMenuAtItsRow() {
  if (IsFilteredAway())
    return Notice("The filter leaves out the mission on show, \"" +
                  CurrentMissionRecord(session_.Doc).BaseName + "\".");
  LightCurrentMission();
  const QRect row = lstMission->visualRect(lstMission->currentIndex());
  OpenMissionMenu(lstMission->viewport()->mapToGlobal(row.bottomLeft()));
}

/** No row of the list is that of the mission on show. */
bool frmRWS::IsFilteredAway() const {
  const Document& doc = session_.Doc;
  return !doc.Missions.empty() && lstMission->RowOf(doc.CurMission) < 0;
}

/** True, told, for a mission that was moved away or deleted and still has its row; but its unsaved
    edits may be looked at. */
bool frmRWS::RefuseGone(int mission) {
  if (!lstMission->IsGone(mission) || IsUnsaved(session_, static_cast<std::size_t>(mission)))
    return false;
  Notice("\"" + GetFileName(At(session_.Doc.MissionFiles, mission)) +
         "\" is no longer in this folder; Directory reads the folder again.");
  LightCurrentMission();
  return true;
}

/** Settles the changes of the mission being left. An Update rereads the directory, so the mission
    that is wanted is found again by its file. */
bool frmRWS::LeaveMission(LeaveBy by, int& mission) {
  Document& doc = session_.Doc;
  const std::string wanted = At(doc.MissionFiles, mission);
  const auto update = [this] {
    const bool written = ClickUpdate();
    // The mission that could not be written stays, and is the one to look at.
    if (!written) LightCurrentMission();
    return written;
  };
  if (!WarnSave(doc, session_.Services, session_.Prefs, by, update)) return false;
  const auto found = std::find(doc.MissionFiles.begin(), doc.MissionFiles.end(), wanted);
  if (doc.Closing || found == doc.MissionFiles.end()) return false;
  mission = static_cast<int>(found - doc.MissionFiles.begin());
  return true;
}

/** Goes to the mission that the list shows, if the current one may be left. */
void frmRWS::FollowList(LeaveBy by) {
  int mission = lstMission->SelectedMission();
  if (mission < 0 || RefuseGone(mission) || mission == session_.Doc.CurMission) return;
  if (!LeaveMission(by, mission)) return;
  // Looking at all that are in memory would make a selection the slower the more have been read.
  if (!At(session_.Doc.Missions, session_.Doc.CurMission).Loaded) NoteDrops(session_, "leaving");
  session_.Doc.CurMission = mission;
  ShowMission();
  if (lstMission->SelectedMission() != mission) lstMission->SelectMission(mission);
}

void frmRWS::ListMouseReleased(Qt::MouseButton button, int row, QPoint globalPosition) {
  if (button == Qt::RightButton) {
    const auto& files = session_.Doc.MissionFiles;
    int mission = lstMission->MissionAt(row);
    const std::string clicked = mission >= 0 ? At(files, mission) : std::string();
    // With no other row lit, the menu is taken for that of the row under the mouse.
    if (mission >= 0 && IsFilteredAway()) {
      lstMission->SelectMission(mission);
      FollowList(LeaveBy::Mouse);
      if (session_.Doc.Closing || CurrentMissionPath(session_.Doc) != clicked) return;
      mission = static_cast<int>(session_.Doc.CurMission);
    }
    OpenMissionMenu(globalPosition);
    // The menu worked on the mission that was lit; only now the light moves, unless the menu has
    // reread the directory meanwhile.
    if (session_.Doc.Closing || mission >= std::ssize(files)) return;
    if (mission >= 0 && At(files, mission) != clicked) return;
    if (mission >= 0) lstMission->SelectMission(mission);
  }
  FollowList(LeaveBy::Mouse);
}

void frmRWS::ClickDirectory() {
  const Services& services = session_.Services;
  Document& doc = session_.Doc;
  std::string folder = ReadSetting(services.Settings, setting::LastDirPath, doc.MissionDir);
  folder = ExistingFolder(services, folder);
  folder = GetFolder(services, "Select a mission directory", true, folder);
  if (folder.empty()) return;
  GoToFolder(folder);
}

/** The Update of all modified missions. */
bool frmRWS::WriteChanges() {
  Record(session_, nullptr);
  const bool allWritten = UpdateChanges(session_.Doc, session_.Services, session_.Prefs,
                                        missionPanel->Shown(), HooksOf(session_));
  CloseStep(session_);
  ShowHistory();
  // Still lit when the user has cancelled.
  LightUpdate(!allWritten && CurrentMission(session_).Modified);
  return allWritten;
}

bool frmRWS::ClickUpdate() {
  const bool allWritten = WriteChanges();
  // What could not be written lives in memory only; it is neither erased nor reread.
  if (!allWritten) return false;
  // Nor is what an earlier Update failed to write.
  if (IsAnyPending(session_.Doc)) return true;
  session_.Doc.Missions.clear();
  Start("Update");
  return true;
}

/** The question about Update first, where it is lit; then that about all else that is unsaved. */
bool frmRWS::MayExit() {
  if (!cmd[kUpdate]->isEnabled()) return AskUnsaved();
  const Answer answer =
      session_.Services.Ask.MsgBox("Would you like to save your updates before exiting?",
                                   Buttons::YesNoCancel, Icon::Question, kProgramTitle);
  if (answer == Answer::Cancel) return false;
  if (answer == Answer::Yes) return WriteChanges() && AskUnsaved();
  std::vector<std::string> refused;
  const Document& doc = session_.Doc;
  for (std::size_t i = 0; i < doc.Missions.size(); ++i)
    if (doc.Missions[i].Modified) refused.push_back(doc.MissionFiles[i]);
  return AskUnsaved(refused);
}

void frmRWS::ClickExit() {
  if (MayExit()) Unload();
}

void frmRWS::Unload() {
  Finish();
  close();
}

void frmRWS::Finish() {
  if (std::exchange(unloaded_, true)) return;
  // Ended without a question, it has the unsaved edits offered at the next start.
  KeepEdits();
  session_.Doc.Closing = true;
  if (Find) Find->close();
  if (Map) Map->close();
  const Services& services = session_.Services;
  if (services.System.CancelFetch) services.System.CancelFetch();
  if (check_ && check_->isVisible()) check_->close();
  if (isVisible() && Arguments.ComLinePath.empty()) ResumeNext([&] { SavePlacement(); });
  ResumeNext([&] {
    WriteSetting(services.Settings, setting::ForeColor, std::to_string(session_.Prefs.ForeColor));
    WriteSetting(services.Settings, setting::BackColor, std::to_string(session_.Prefs.BackColor));
  });
}

void frmRWS::closeEvent(QCloseEvent* event) {
  bool mayClose = unloaded_;
  if (!mayClose) LogAndLeave(session_.Services, "Form_Unload", [&] { mayClose = MayExit(); });
  if (!mayClose) return event->ignore();
  Finish();
  event->accept();
}

}  // namespace rws
