#include <QCloseEvent>
#include <algorithm>
#include <utility>

#include "mainwindow/frmRWS.h"
#include "platform/qt_text.h"
#include "services/error_log.h"
#include "services/paths.h"
#include "services/pickers.h"
#include "services/setting_values.h"
#include "services/trapped.h"

namespace rws {

void frmRWS::Connect() {
  const Services& services = session_.Services;
  connect(lstMission, &ListBox::KeyReleased, this,
          Trapped(services, "lstMission_KeyUp", [this] { FollowList(LeaveBy::Key); }));
  connect(lstMission, &ListBox::MouseReleased, this,
          Trapped(services, "lstMission_MouseUp",
                  [this](Qt::MouseButton button, int row, QPoint position) {
                    ListMouseReleased(button, row, position);
                  }));
  connect(lstMission, &ListBox::MenuKeyPressed, this,
          Trapped(services, "lstMission_MouseUp",
                  [this](QPoint position) { OpenMissionMenu(position); }));
  connect(cmd[0], &QPushButton::clicked, this,
          Trapped(services, "cmd_Click", [this](bool) { ClickDirectory(); }));
  connect(cmd[1], &QPushButton::clicked, this,
          Trapped(services, "cmd_Click", [this](bool) { ClickExit(); }));
  connect(cmd[2], &QPushButton::clicked, this, [this] { showMinimized(); });
  connect(cmd[3], &QPushButton::clicked, this,
          Trapped(services, "cmd_Click", [this](bool) { ClickUpdate(); }));
  // Unlike the Exit button this entry does not ask about unsaved changes; the difference stays.
  connect(mnuExit, &QAction::triggered, this, [this] { Unload(); });
  PopUpMissionMenu = [this](QPoint position) { mnuMisPop->exec(position); };
  ShowDialog = [](QDialog& dialog) { dialog.exec(); };
  flightArea->ShowDialog = [this](QDialog& dialog) { ShowDialog(dialog); };
  ConnectMissionMenu();
  ConnectTools();
  ConnectPrefs();
  ConnectHelp();
}

void frmRWS::OpenMissionMenu(QPoint globalPosition) {
  if (!session_.Doc.Missions.empty()) PopUpMissionMenu(globalPosition);
}

/** Settles the changes of the mission being left. An Update rereads the directory, so the row that
   is wanted is found again by its file. */
bool frmRWS::LeaveMission(LeaveBy by, int& row) {
  Document& doc = session_.Doc;
  const std::string wanted = At(doc.MissionFiles, row);
  if (!WarnSave(doc, session_.Services, session_.Prefs, by, [this] { return ClickUpdate(); }))
    return false;
  const auto found = std::find(doc.MissionFiles.begin(), doc.MissionFiles.end(), wanted);
  if (doc.Closing || found == doc.MissionFiles.end()) return false;
  row = static_cast<int>(found - doc.MissionFiles.begin());
  return true;
}

/** Goes to the row that the list shows, if the mission may be left. */
void frmRWS::FollowList(LeaveBy by) {
  int row = lstMission->CurrentRow();
  if (row < 0 || row == session_.Doc.CurMission || !LeaveMission(by, row)) return;
  session_.Doc.CurMission = row;
  ShowMission();
  if (lstMission->CurrentRow() != row) lstMission->SelectRow(row);
}

void frmRWS::ListMouseReleased(Qt::MouseButton button, int row, QPoint globalPosition) {
  if (button == Qt::RightButton) {
    const std::string clicked = row >= 0 ? At(session_.Doc.MissionFiles, row) : std::string();
    OpenMissionMenu(globalPosition);
    // The menu worked on the mission that was lit; only now the light moves, unless the menu has
    // reread the directory meanwhile.
    const auto& files = session_.Doc.MissionFiles;
    if (session_.Doc.Closing || row >= std::ssize(files) || (row >= 0 && At(files, row) != clicked))
      return;
    if (row >= 0) lstMission->SelectRow(row);
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

bool frmRWS::ClickUpdate() {
  const bool allWritten =
      UpdateChanges(session_.Doc, session_.Services, session_.Prefs, missionPanel->Shown());
  LightUpdate(false);
  // What could not be written lives in memory only; it is neither erased nor reread.
  if (!allWritten) return false;
  session_.Doc.Missions.clear();
  Start();
  return true;
}

bool frmRWS::MayExit() {
  if (!cmd[3]->isEnabled()) return true;
  const Answer answer =
      session_.Services.Ask.MsgBox("Would you like to save your updates before exiting?",
                                   Buttons::YesNoCancel, Icon::Question, kProgramTitle);
  if (answer == Answer::Yes) {
    const bool allWritten =
        UpdateChanges(session_.Doc, session_.Services, session_.Prefs, missionPanel->Shown());
    LightUpdate(false);
    return allWritten;
  }
  return answer == Answer::No;
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
  session_.Doc.Closing = true;
  const Services& services = session_.Services;
  if (services.System.CancelFetch) services.System.CancelFetch();
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

void frmRWS::LightUpdate(bool lit) {
  cmd[3]->setEnabled(lit);
  // Pale green; black text goes with it, also where the desktop is dark.
  const QString style =
      lit ? QStringLiteral("background-color: #C0FFC0; color: black;") : QString();
  // Every edit comes by here, and a style that is set again is worked out again.
  if (cmd[3]->styleSheet() != style) cmd[3]->setStyleSheet(style);
}

}  // namespace rws
