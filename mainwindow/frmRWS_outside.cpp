#include <QApplication>

#include "mainwindow/frmRWS.h"
#include "mission/untouched.h"
#include "platform/folder_watch.h"
#include "platform/qt_text.h"
#include "services/clock.h"
#include "services/paths.h"
#include "services/trapped.h"
#include "session/current.h"
#include "session/lines_rule.h"
#include "session/recording.h"
#include "session/relist.h"
#include "session/saving.h"
#include "tools/frmCompare.h"

namespace rws {

namespace {

/** A file that is being written can be read soon. */
constexpr int kMostFailedLooks = 10;

}  // namespace

void frmRWS::ConnectOutside() {
  watch_ = new FolderWatch(this);
  connect(watch_, &FolderWatch::Changed, this,
          Trapped(session_.Services, "LookOutside", [this] { LookOutside(); }));
}

/** Follows what others have done in the folder and to the mission that is shown. */
void frmRWS::LookOutside() {
  const Document& doc = session_.Doc;
  if (doc.Closing) return;
  // Not in the middle of something; what is done then may be what has changed the folder.
  const bool busy = QApplication::activeModalWidget() || QApplication::activePopupWidget() ||
                    session_.Showing > 0 || session_.Editing > 0 || doc.bLoading ||
                    session_.History.Journal.Open > 0;
  if (busy) return watch_->LookAgain();
  Record(session_, nullptr);
  const std::string current = CurrentMissionPath(doc);
  const auto gone = GoneRows();
  const Relisted found = RelistFolder(session_, gone);
  if (found.Changed || found.Gone.size() != goneShown_) {
    goneShown_ = found.Gone.size();
    EnableMission(!doc.Missions.empty());
    ShowRows(gone);
    if (CurrentMissionPath(doc) != current && !doc.Missions.empty()) ShowMission();
    ShowHistory();
  }
  LookAtShownFile();
}

void frmRWS::LookAtShownFile() {
  const Document& doc = session_.Doc;
  const Services& services = session_.Services;
  if (!IsMissionShown(session_)) return bars->Hide(kReloadBar);
  const std::string path = CurrentMissionPath(doc);
  const FileStamp stamp = services.Files.Stamp(path);
  if (!stamp.Exists || stamp == stampSeen_) return;
  bool changed = false;
  const bool read = ResumeNext(
      [&] { changed = !IsAsRead(CurrentMission(session_), services.Files.ReadFile(path)); });
  // In the middle of being written, it is looked at once more.
  if (!read) return ++failedLooks_ < kMostFailedLooks ? watch_->LookAgain() : void();
  failedLooks_ = 0;
  stampSeen_ = stamp;
  if (changed) Library->ReadAgain({path});
  changed ? OfferReload(path) : bars->Hide(kReloadBar);
}

void frmRWS::OfferReload(const std::string& path) {
  const Services& services = session_.Services;
  const bool unsaved = IsUnsaved(session_, static_cast<std::size_t>(session_.Doc.CurMission));
  const std::string time = TimeText(FileSystem::LocalTime(services.Files.Stamp(path)));
  BarContent bar{BarKind::Warning,
                 tr("Another program has changed \"%1\" (%2).")
                     .arg(FromPath(GetFileName(path)), FromPath(time)),
                 {},
                 {}};
  bar.Buttons.push_back({tr("Reload"), [this, path] {
                           const auto mission = MissionAt(session_.Doc, path);
                           if (mission < 0) return bars->Hide(kReloadBar);
                           const int flight = session_.Doc.CurFlight;
                           if (!RevertOne(session_, static_cast<std::size_t>(mission),
                                          "Reload of " + GetBaseName(path)))
                             return Notice("\"" + path + "\" cannot be read; nothing has changed.");
                           bars->Hide(kReloadBar);
                           GoTo(path, flight);
                         }});
  if (unsaved) {
    bar.Text += u' ' + tr("Your edits are still here, unsaved.");
    bar.Buttons.push_back({tr("Keep mine"), [this] { bars->Hide(kReloadBar); }});
  }
  bar.Buttons.push_back({tr("Compare"), [this, path, time] { CompareWithDisk(path, time); }});
  bars->Show(kReloadBar, bar);
}

void frmRWS::CompareWithDisk(const std::string& path, const std::string& time) {
  const auto mission = MissionAt(session_.Doc, path);
  if (mission < 0) return bars->Hide(kReloadBar);
  frmCompare form(session_, this);
  form.Subject = path;
  form.BeforeCaption = "As it is on disk, " + time;
  form.AfterCaption = "As it is here";
  ResumeNext([&] { form.Before = session_.Services.Files.ReadFile(path); });
  const Mission& record = At(session_.Doc.Missions, mission);
  const PendingPart part = record.KeepsLines ? PendingPart::Kept : PendingPart::Anew;
  const PendingLines pending =
      LookAhead(session_.Doc, session_.Services, record, missionPanel->Shown(),
                SavedMission(session_, static_cast<std::size_t>(mission)), part);
  form.After = (record.KeepsLines ? pending.Kept : pending.Anew).FileText();
  form.LoadForm();
  Popups.ShowDialog(form);
}

/** Rows that a command has left marked stay until the folder is read anew. */
std::vector<std::string> frmRWS::GoneRows() const {
  std::vector<std::string> gone;
  const auto& files = session_.Doc.MissionFiles;
  for (std::size_t i = 0; i < files.size(); ++i)
    if (lstMission->IsGone(static_cast<int>(i))) gone.push_back(files[i]);
  return gone;
}

/** The folder that is open and the file that is shown are watched from now on. */
void frmRWS::WatchShown() {
  const Document& doc = session_.Doc;
  const std::string path = doc.Missions.empty() ? "" : CurrentMissionPath(doc);
  const History& history = session_.History;
  const auto known = history.Known.find(path);
  const bool isFresh = known != history.Known.end() && known->second.Reading > readingsShown_;
  // Edits that have come back may have been made on lines that are no longer the file's.
  const auto seen = history.Seen.find(path);
  const bool isOfFile = isFresh && seen != history.Seen.end() &&
                        seen->second.Lines == CurrentMission(session_).AsRead;
  readingsShown_ = history.Readings;
  if (isFresh || path != watched_) {
    bars->Hide(kReloadBar);
    stampSeen_ = isOfFile ? session_.Services.Files.Stamp(path) : FileStamp();
  }
  watched_ = path;
  watch_->Watch(FromPath(doc.MissionDir), FromPath(path));
  // Nobody has watched a mission while others were on show.
  LookAtShownFile();
}

}  // namespace rws
