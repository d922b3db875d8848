#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>
#include <algorithm>
#include <set>
#include <utility>

#include "mainwindow/frmRWS.h"
#include "platform/qt_text.h"
#include "services/paths.h"
#include "services/trapped.h"
#include "session/current.h"
#include "session/doors.h"
#include "session/recording.h"
#include "session/relist.h"
#include "session/saving.h"
#include "tools/frmBackups.h"
#include "tools/logic/backups.h"

namespace rws {

namespace {

constexpr char kUndoBar[] = "undo";

/** What the user does between two edits makes them two steps; and Undo is the program's own also
    where the focus is in a text box. */
class StepEnds : public QObject {
 public:
  StepEnds(Session& session, QWidget* window) : QObject(window), session_(session) {
    qApp->installEventFilter(this);
    connect(qApp, &QApplication::focusChanged, this, [this] { CloseStep(session_); });
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::MouseButtonPress) CloseStep(session_);
    if (event->type() != QEvent::ShortcutOverride) return false;
    const auto* box = qobject_cast<QWidget*>(watched);
    if (!box || box->window() != parent()) return false;
    const auto* key = static_cast<QKeyEvent*>(event);
    if (!key->matches(QKeySequence::Undo) && !key->matches(QKeySequence::Redo) &&
        key->keyCombination() != QKeyCombination(Qt::CTRL, Qt::Key_Y))
      return false;
    event->ignore();
    return true;
  }

 private:
  Session& session_;
};

QString EntryText(const QString& verb, const std::string& title) {
  return title.empty() ? verb : verb + u' ' + FromPath(title).replace(u'&', QStringLiteral("&&"));
}

void SetText(QAction& entry, const QString& text, bool enabled) {
  // Every edit comes by here.
  if (entry.text() != text) entry.setText(text);
  entry.setEnabled(enabled);
}

}  // namespace

void frmRWS::ConnectHistory() {
  const Services& services = session_.Services;
  new StepEnds(session_, this);
  session_.Listeners.push_back([window = QPointer<frmRWS>(this)](const Change&) {
    if (window && window->session_.Showing == 0) window->ShowHistory();
  });
  const auto command = [&](QAction* entry, const char* name, const std::function<void()>& run) {
    connect(entry, &QAction::triggered, this, Trapped(services, name, [run](bool) { run(); }));
  };
  command(mnuSave, "mnuSave_Click", [this] { ClickSave(); });
  command(mnuSaveAll, "mnuSaveAll_Click", [this] { ClickSaveAll(); });
  command(mnuRevert, "mnuRevert_Click", [this] { ClickRevert(); });
  command(mnuRestoreBackup, "mnuRestoreBackup_Click", [this] { ClickRestoreBackup(); });
  command(mnuUndo, "mnuUndo_Click", [this] { Travel(true); });
  command(mnuRedo, "mnuRedo_Click", [this] { Travel(false); });
  ConnectRecovery();
  ConnectLines();
  ConnectReferences();
}

/** Brings menus and marks to what has been done and what is unsaved. */
void frmRWS::ShowHistory() {
  const std::string undo = UndoTitle(session_), redo = RedoTitle(session_);
  // The bar is about the step that was the next one then.
  if (stepToldOf_ != std::pair(session_.History.Done, session_.History.Steps.size()))
    bars->Hide(kUndoBar);
  SetText(*mnuUndo, EntryText(tr("&Undo"), undo), !undo.empty());
  SetText(*mnuRedo, EntryText(tr("&Redo"), redo), !redo.empty());
  ShowUnsavedMissions();
  LinesMayHaveChanged();
}

void frmRWS::ShowUnsavedMissions() {
  const Document& doc = session_.Doc;
  std::set<int> unsaved;
  const auto paths = UnsavedMissions(session_);
  for (const auto& path : paths)
    if (const auto mission = MissionAt(doc, path); mission >= 0)
      unsaved.insert(static_cast<int>(mission));
  ShowUnsaved(unsaved);
  const bool current = unsaved.contains(doc.CurMission);
  mnuSave->setEnabled(current);
  mnuSaveAll->setEnabled(!paths.empty());
  mnuRestoreBackup->setEnabled(!doc.Missions.empty());
  mnuRevert->setEnabled(current && !lstMission->IsGone(doc.CurMission));
  if (!paths.empty() && !recoveryTimer_->isActive()) recoveryTimer_->start();
  if (paths.empty() && !recovery_.Written.empty()) KeepEdits();
}

void frmRWS::ClickSave() { SaveMissions({At(session_.Doc.MissionFiles, session_.Doc.CurMission)}); }

void frmRWS::ClickSaveAll() { SaveMissions(UnsavedMissions(session_)); }

/** Writes these missions, each whatever becomes of the others, and shows the current one anew.
   False if one could not be written. */
bool frmRWS::SaveMissions(const std::vector<std::string>& paths) {
  Document& doc = session_.Doc;
  const std::string current = At(doc.MissionFiles, doc.CurMission);
  const int flight = doc.CurFlight;
  std::vector<std::size_t> listed;
  for (const auto& path : paths)
    if (const auto mission = MissionAt(doc, path); mission >= 0)
      listed.push_back(static_cast<std::size_t>(mission));
  if (!AskAboutLines(doc, session_.Services, missionPanel->Shown(), listed, session_.AskLines))
    return false;
  std::size_t written = 0;
  for (const auto& path : paths)
    written += SaveOne(session_, path, path == current ? missionPanel->Shown() : ShownValues());
  if (doc.Closing) return false;
  const auto gone = GoneRows();
  RelistFolder(session_, gone);
  ShowRows(gone);
  GoTo(current, flight);
  if (written < paths.size()) return false;
  bars->Hide(kReloadBar);
  Notice(paths.size() == 1 ? "\"" + GetFileName(paths[0]) + "\" is saved."
                           : std::to_string(paths.size()) + " missions are saved.");
  return true;
}

void frmRWS::ClickRevert() {
  Document& doc = session_.Doc;
  const std::string path = At(doc.MissionFiles, doc.CurMission);
  const int flight = doc.CurFlight;
  if (!RevertOne(session_, static_cast<std::size_t>(doc.CurMission), "Reverted"))
    return Notice("\"" + GetFileName(path) + "\" cannot be read; nothing has changed.");
  bars->Hide(kReloadBar);
  GoTo(path, flight);
}

void frmRWS::ClickRestoreBackup() {
  const std::string path = At(session_.Doc.MissionFiles, session_.Doc.CurMission);
  frmBackups form(session_, this);
  form.MissionPath = path;
  form.LoadForm();
  Popups.ShowDialog(form);
  if (form.Chosen.empty()) return;
  if (!RestoreAsStep(session_, path, form.Chosen)) return;
  bars->Hide(kReloadBar);
  const auto gone = GoneRows();
  RelistFolder(session_, gone);
  ShowRows(gone);
  GoTo(path, -1);
}

/** Undo, or Redo. */
void frmRWS::Travel(bool back) {
  const std::string title = back ? UndoTitle(session_) : RedoTitle(session_);
  if (title.empty()) return;
  const std::string folder = back ? UndoFolder(session_) : RedoFolder(session_);
  if (!folder.empty() && !session_.Services.Files.FolderExists(folder))
    return TellNotDone(back, title, "\"" + folder + "\" is not there.");
  OpenFolderOf(folder);
  session_.Services.Window.ShowBusy(true);
  const UndoResult result = back ? UndoStep(session_) : RedoStep(session_);
  session_.Services.Window.ShowBusy(false);
  if (!result.Done) return TellNotDone(back, title, result.Reason);
  bars->Hide(kUndoBar);
  if (result.Files) {
    ShowRows();
    TellFindOfStep(back);
    KeepRenamed();
    OfferHalfRenamed();
  }
  const Document& doc = session_.Doc;
  const bool listed = MissionAt(doc, result.Mission) >= 0;
  if (!doc.MissionFiles.empty())
    GoTo(listed ? result.Mission : At(doc.MissionFiles, doc.CurMission),
         listed ? result.Flight : -1);
  ShowHistory();
  if (!result.LeftOut.empty()) return TellLeftOut(back, title, result.LeftOut);
  Notice((back ? "Undone: " : "Done again: ") + title + ".");
}

/** Names the files that a step has left as they are. */
void frmRWS::TellLeftOut(bool back, const std::string& title,
                         const std::vector<std::string>& reasons) {
  constexpr std::size_t kMostNamed = 20;
  QString text =
      (back ? tr("\"%1\" is undone, but for %n file(s):", nullptr, int(reasons.size()))
            : tr("\"%1\" is done again, but for %n file(s):", nullptr, int(reasons.size())))
          .arg(FromPath(title));
  for (std::size_t i = 0; i < reasons.size() && i < kMostNamed; ++i)
    text += u'\n' + FromPath(reasons[i]);
  if (reasons.size() > kMostNamed) text += QStringLiteral("\n...");
  stepToldOf_ = {session_.History.Done, session_.History.Steps.size()};
  bars->Show(kUndoBar, {BarKind::Warning, text, {}, {}});
}

void frmRWS::TellNotDone(bool back, const std::string& title, const std::string& reason) {
  const Document& doc = session_.Doc;
  if (!doc.MissionFiles.empty()) GoTo(At(doc.MissionFiles, doc.CurMission), doc.CurFlight);
  BarContent bar{BarKind::Warning,
                 (back ? tr("\"%1\" cannot be undone. %2") : tr("\"%1\" cannot be done again. %2"))
                     .arg(FromPath(title), FromPath(reason)),
                 {},
                 {}};
  stepToldOf_ = {session_.History.Done, session_.History.Steps.size()};
  if (back)
    bar.Buttons.push_back({tr("Leave it out"), [this] {
                             SkipStep(session_);
                             bars->Hide(kUndoBar);
                             ShowHistory();
                           }});
  bars->Show(kUndoBar, bar);
}

/** The folder of a step, with all edits that are unsaved in this one kept. */
void frmRWS::OpenFolderOf(const std::string& folder) {
  if (folder.empty() || session_.Services.Files.IsSameFile(folder, session_.Doc.MissionDir)) return;
  OpenFolderKeeping(session_, folder);
  qryFilter->txtQuery->clear();
  ShowDirectory();
  ShowRows();
  OfferHalfRenamed();
}

/** Shows the missions of the document in the list, those of `gone` marked. */
void frmRWS::ShowRows(const std::vector<std::string>& gone) {
  const Document& doc = session_.Doc;
  std::vector<MissionRow> rows;
  for (const auto& mission : doc.Missions)
    rows.push_back({static_cast<int>(rows.size()), FromPath(mission.BaseName)});
  lstMission->ShowMissions(std::move(rows));
  FollowMissions();
  for (std::size_t i = 0; i < doc.MissionFiles.size(); ++i) {
    const std::string& path = doc.MissionFiles[i];
    const bool mayBeGone =
        doc.Missions[i].Loaded || std::find(gone.begin(), gone.end(), path) != gone.end();
    if (mayBeGone && session_.Services.Files.IsGone(path))
      lstMission->MarkGone(static_cast<int>(i));
  }
  if (doc.Missions.empty()) return ShowNoMissions();
  EnableMission(true);
  lstMission->SelectMission(doc.CurMission);
}

/** Shows a mission and a flight of it, with Update lit or dark as it is; the current one if that
   has left the list. */
void frmRWS::GoTo(const std::string& path, int flight) {
  Document& doc = session_.Doc;
  const auto mission = MissionAt(doc, path);
  if (doc.Missions.empty()) return;
  if (mission >= 0) doc.CurMission = static_cast<int>(mission);
  lstMission->SelectMission(doc.CurMission);
  ShowMission(Baseline::Keep, mission >= 0 ? flight : -1);
}

}  // namespace rws
