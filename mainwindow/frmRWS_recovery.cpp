#include <QGuiApplication>
#include <QSessionManager>
#include <algorithm>
#include <iterator>

#include "mainwindow/frmRWS.h"
#include "mainwindow/frmUnsaved.h"
#include "mission/interrupted.h"
#include "platform/qt_text.h"
#include "services/notice.h"
#include "services/paths.h"
#include "services/trapped.h"
#include "session/file_store.h"
#include "session/half_renamed.h"
#include "session/journal.h"
#include "session/recording.h"
#include "session/relist.h"
#include "session/saving.h"
#include "tools/frmCompare.h"

namespace rws {

namespace {

constexpr char kRecoveredBar[] = "recovered", kInterruptedBar[] = "interrupted",
               kHalfRenamedBar[] = "half renamed";
/** Edits lie on disk two seconds after they were made, at the latest. */
constexpr int kKeepMilliseconds = 1500, kTryAgainMilliseconds = 15000;

QString NameList(const std::vector<std::string>& paths) {
  constexpr std::size_t kMost = 5;
  QStringList names;
  for (const auto& path : paths) names << FromPath(GetFileName(path));
  if (paths.size() <= kMost) return names.join(QStringLiteral(", "));
  return QStringList(names.mid(0, kMost)).join(QStringLiteral(", ")) +
         QObject::tr(" and %n more", nullptr, static_cast<int>(paths.size() - kMost));
}

/** "1 mission", "2 missions". */
QString Missions(std::size_t count) {
  return count == 1 ? QObject::tr("1 mission") : QObject::tr("%1 missions").arg(count);
}

}  // namespace

void frmRWS::ConnectRecovery() {
  recoveryTimer_ = new QTimer(this);
  recoveryTimer_->setObjectName(QStringLiteral("recoveryTimer"));
  recoveryTimer_->setSingleShot(true);
  recoveryTimer_->setInterval(kKeepMilliseconds);
  const auto keep = Trapped(session_.Services, "KeepUnsaved", [this] { KeepEdits(); });
  connect(recoveryTimer_, &QTimer::timeout, this, [keep] { keep(); });
  // The end of the desktop's session may kill the program before it has asked anything.
  connect(
      qGuiApp, &QGuiApplication::commitDataRequest, this, [keep](QSessionManager&) { keep(); },
      Qt::DirectConnection);
}

/** False if they are in memory only. */
bool frmRWS::KeepEdits() {
  Record(session_, nullptr);
  // The run that held it may have ended: a third one is not to take the edits of this one.
  if (!recoveredHeld_) HoldRecovered(session_.Services, recoveredHeld_);
  const std::string reason = KeepUnsaved(session_, recovery_);
  recoveryTimer_->setInterval(reason.empty() ? kKeepMilliseconds : kTryAgainMilliseconds);
  if (!reason.empty()) recoveryTimer_->start();
  if (!reason.empty() && !recovery_.Told)
    Notice("Unsaved edits are only in memory, not safe from a crash. " + reason);
  recovery_.Told = !reason.empty();
  return reason.empty();
}

/** After a crash they are for the names that the missions have by now. */
void frmRWS::KeepRenamed() {
  if (!recovery_.Written.empty() || !recovery_.Offered.empty()) KeepEdits();
  if (bars->Bar(kRecoveredBar)) ShowRecoveredBar();
}

/** The user does not want them any more: no later start offers them. */
void frmRWS::ForgetEdits(const std::vector<std::string>& paths) {
  for (const auto& path : paths) session_.History.Known.erase(path);
  KeepEdits();
}

void frmRWS::OfferRecovered() {
  const Services& services = session_.Services;
  LimitStore(services, LimitsOf(session_.Prefs));
  if (HoldRecovered(services, recoveredHeld_)) recovery_.Offered = FindRecovered(services);
  ShowRecoveredBar();
  OfferInterrupted();
  OfferHalfRenamed();
}

void frmRWS::ShowRecoveredBar() {
  if (recovery_.Offered.empty()) return bars->Hide(kRecoveredBar);
  std::vector<std::string> names;
  std::size_t readable = 0, changed = 0;
  std::string fault;
  for (const auto& edits : recovery_.Offered) {
    if (edits.Fault.empty()) ++readable;
    if (fault.empty()) fault = edits.Fault;
    if (edits.Fault.empty() && HasChangedSince(session_.Services, edits)) ++changed;
    names.push_back(edits.Fault.empty() ? edits.Path : edits.File);
  }
  QString text = tr("Unsaved edits of %1 were kept.").arg(Missions(recovery_.Offered.size()));
  if (changed > 0)
    text += u' ' + tr("Since then the file has changed or gone: %1.").arg(Missions(changed));
  if (readable < recovery_.Offered.size())
    text += u' ' + tr("%1 of the files cannot be read: %2")
                       .arg(recovery_.Offered.size() - readable)
                       .arg(FromPath(fault));
  BarContent bar{BarKind::Info, text + u' ' + NameList(names), {}, {}};
  if (readable > 0) {
    bar.Buttons.push_back({tr("Restore"), [this] { RestoreEdits(); }});
    bar.Buttons.push_back({tr("Show"), [this] { CompareRecovered(); }});
  }
  bar.Buttons.push_back({tr("Discard"), [this] {
                           for (const auto& edits : recovery_.Offered)
                             NoticeAndLeave(session_.Services,
                                            [&] { DiscardRecovered(session_.Services, edits); });
                           recovery_.Offered.clear();
                           bars->Hide(kRecoveredBar);
                         }});
  bars->Show(kRecoveredBar, bar);
}

/** Those of one folder; the bar keeps offering the others. */
void frmRWS::RestoreEdits() {
  auto here = recovery_.Offered;
  const auto first = std::find_if(here.begin(), here.end(),
                                  [](const Recovered& edits) { return edits.Fault.empty(); });
  if (first == here.end()) return;
  const std::string folder = GetParentFolderName(first->Path);
  if (!session_.Services.Files.FolderExists(folder))
    return Notice("\"" + folder + "\" is not there; the edits are still kept.");
  if (!session_.Services.Files.IsSameFile(folder, session_.Doc.MissionDir)) {
    if (!SettleEdits()) return;
    GoToFolder(folder);
  }
  std::erase_if(here, [&](const Recovered& edits) {
    return !edits.Fault.empty() || GetParentFolderName(edits.Path) != folder;
  });
  // The folder may be on show under another name.
  for (auto& edits : here) edits.Path = BuildPath(session_.Doc.MissionDir, GetFileName(edits.Path));
  const auto paths = RestoreRecovered(session_, recovery_, here);
  std::erase_if(recovery_.Offered, [&](const Recovered& edits) {
    return std::any_of(here.begin(), here.end(),
                       [&](const Recovered& restored) { return restored.File == edits.File; });
  });
  ShowRecoveredBar();
  EnableMission(!session_.Doc.Missions.empty());
  ShowRows();
  if (!paths.empty()) GoTo(paths.front(), -1);
}

/** Each of the missions beside what stands on disk. */
void frmRWS::CompareRecovered() {
  for (const auto& edits : std::vector(recovery_.Offered)) {
    if (!edits.Fault.empty()) continue;
    frmCompare form(session_, this);
    form.Subject = edits.Path;
    form.BeforeCaption = "As it is on disk";
    form.AfterCaption = "With the edits of " + edits.Time;
    ResumeNext([&] { form.Before = session_.Services.Files.ReadFile(edits.Path); });
    form.After = TextOf(session_.Services, edits);
    form.LoadForm();
    Popups.ShowDialog(form);
    if (session_.Doc.Closing) return;
  }
}

void frmRWS::OfferInterrupted() {
  const auto found = FindInterrupted(session_.Services);
  if (found.empty()) return bars->Hide(kInterruptedBar);
  const Interrupted& copy = found.front();
  const bool isKnown = copy.State != InterruptedState::Unknown;
  const QString mission = FromPath(isKnown ? copy.Mission : copy.Copy);
  QString text;
  if (copy.State == InterruptedState::Missing)
    text = tr("\"%1\" is missing since an Update that did not end. A copy of it is there.");
  else if (copy.State == InterruptedState::Torn)
    text =
        tr("\"%1\" is not as an Update that did not end would have left it. A copy of what it "
           "was is there.");
  else
    text = tr("\"%1\" is a copy of a mission that is not known, from an Update that did not end.");
  BarContent bar{BarKind::Warning, text.arg(mission), {}, {}};
  if (isKnown)
    bar.Buttons.push_back(
        {tr("Restore"), [this, copy] {
           if (NoticeAndLeave(session_.Services, [&] { GiveBack(session_.Services, copy); }))
             ShowGivenBack(copy.Mission);
           OfferInterrupted();
         }});
  bar.Buttons.push_back({tr("Keep the copy only"), [this, copy] {
                           NoticeAndLeave(session_.Services, [&] {
                             Notice("The copy is kept as \"" + Dismiss(session_.Services, copy) +
                                    "\".");
                           });
                           OfferInterrupted();
                         }});
  bars->Show(kInterruptedBar, bar);
}

/** A mission whose file is back: read anew where it was read already, unless it has edits. */
void frmRWS::ShowGivenBack(const std::string& path) {
  const auto mission = MissionAt(session_.Doc, path);
  const auto row = static_cast<std::size_t>(mission);
  const bool stale = mission >= 0 && session_.Doc.Missions[row].Loaded && !IsUnsaved(session_, row);
  if (stale && RevertOne(session_, row, "Reload of " + GetBaseName(path)))
    GoTo(At(session_.Doc.MissionFiles, session_.Doc.CurMission), -1);
  LookOutside();
  // It tells whether the files have changed; closed, it stays so.
  if (bars->Bar(kRecoveredBar)) ShowRecoveredBar();
}

void frmRWS::OfferHalfRenamed() {
  const auto found = FindHalfRenamed(session_.Services, session_.Doc.MissionDir);
  if (found.empty()) return bars->Hide(kHalfRenamedBar);
  std::vector<std::string> names;
  for (const auto& file : found) names.push_back(file.Path);
  const auto give = [this] {
    RecordFiles(session_, "Names of half renamed files", [&] {
      const auto reason = FinishRenames(
          session_.Services, FindHalfRenamed(session_.Services, session_.Doc.MissionDir));
      if (!reason.empty()) Notice(reason);
    });
    KeepRenamed();
    LookOutside();
    OfferHalfRenamed();
  };
  bars->Show(
      kHalfRenamedBar,
      {BarKind::Warning,
       tr("Renaming has left files under a name that is not listed: %1").arg(NameList(names)),
       {{tr("Give them their names"), give}},
       {}});
}

/** Asks before unsaved edits are left. `refused` are missions that the user has just been asked
    about and does not want saved. False to stay. */
bool frmRWS::AskUnsaved(const std::vector<std::string>& refused) {
  std::vector<std::string> paths;
  for (const auto& path : UnsavedMissions(session_))
    if (std::find(refused.begin(), refused.end(), path) == refused.end()) paths.push_back(path);
  frmUnsaved form(session_.Services, this);
  form.Missions = paths;
  if (!paths.empty()) {
    form.LoadForm();
    Popups.ShowDialog(form);
    if (form.Choice == UnsavedChoice::Cancel) return false;
    if (form.Choice == UnsavedChoice::SaveAll && !SaveMissions(paths)) return false;
    if (form.Choice == UnsavedChoice::Discard) ForgetEdits(paths);
  }
  ForgetEdits(refused);
  return true;
}

}  // namespace rws
