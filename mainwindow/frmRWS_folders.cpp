#include <QApplication>
#include <QPointer>

#include "controls/guarded_edit.h"
#include "mainwindow/file_drops.h"
#include "mainwindow/frmRWS.h"
#include "mainwindow/logic/recent_folders.h"
#include "platform/qt_text.h"
#include "services/error_log.h"
#include "services/trapped.h"

namespace rws {

namespace {

constexpr char kSecondStart[] = "second start";

/** A path as the caption of an entry: with a digit to press, short enough for a menu. */
QString EntryCaption(const QFontMetrics& metrics, const std::string& path, std::size_t place) {
  constexpr int kCharacters = 60;
  const int room = metrics.averageCharWidth() * kCharacters;
  QString text = metrics.elidedText(FromPath(path), Qt::ElideMiddle, room);
  text.replace(u'&', QStringLiteral("&&"));
  return QStringLiteral("&%1 %2").arg((place + 1) % 10).arg(text);
}

}  // namespace

void frmRWS::ConnectFolders() {
  const Services& services = session_.Services;
  connect(mnuOpenFolder, &QAction::triggered, this,
          Trapped(services, "cmd_Click", [this](bool) { Press(kDirectory); }));
  connect(mnuReread, &QAction::triggered, this,
          Trapped(services, "mnuReread_Click", [this](bool) { ClickReread(); }));
  connect(mnuRecent, &QMenu::aboutToShow, this,
          Trapped(services, "mnuRecent_Popup", [this] { FillRecent(); }));
  auto* drops = new FileDrops(*this, services.Files);
  // Queued: the program that the file comes from waits for the drop to end, which may ask.
  connect(drops, &FileDrops::Dropped, this,
          Trapped(services, "frmRWS_Drop", [this](const std::string& path) { OpenPath(path); }),
          Qt::QueuedConnection);
  connect(mnuClearRecent, &QAction::triggered, this,
          Trapped(services, "mnuRecent_Click", [this](bool) {
            ClearRecentFolders(session_.Services);
            mnuRecent->menuAction()->setEnabled(false);
          }));
  mnuRecent->menuAction()->setEnabled(!RecentFolders(services).empty());
}

void frmRWS::RememberFolder() {
  const Services& services = session_.Services;
  const std::string& folder = session_.Doc.MissionDir;
  ResumeNext([&] {
    if (services.Files.FolderExists(folder)) AddRecentFolder(services, folder);
  });
  mnuRecent->menuAction()->setEnabled(!RecentFolders(services).empty());
}

/** Only as the menu opens: whether a folder is there may take a while to find out. */
void frmRWS::FillRecent() {
  const Services& services = session_.Services;
  auto* line = mnuRecent->actions().at(mnuRecent->actions().size() - 2);
  while (mnuRecent->actions().first() != line) delete mnuRecent->actions().first();
  const auto folders = RecentFolders(services);
  for (std::size_t i = 0; i < folders.size(); ++i) {
    auto* entry = new QAction(EntryCaption(mnuRecent->fontMetrics(), folders[i], i), mnuRecent);
    mnuRecent->insertAction(line, entry);
    entry->setEnabled(services.Files.FolderExists(folders[i]));
    entry->setToolTip(FromPath(folders[i]));
    connect(entry, &QAction::triggered, this,
            Trapped(services, "mnuRecent_Click",
                    [this, folder = folders[i]](bool) { OpenPath(folder); }));
  }
}

void frmRWS::ClickReread() {
  if (!SettleEdits()) return;
  ReloadChangedNames();
  if (session_.Doc.Closing) return;
  session_.Doc.Missions.clear();
  Start();
  OfferHalfRenamed();
}

bool frmRWS::OpenPath(const std::string& path) {
  if (session_.Doc.Closing) return false;
  const StartArguments asked = ArgumentsFor(session_.Services, path);
  if (!asked.Unfound.empty()) {
    Notice("\"" + path + "\" was not found.");
    return false;
  }
  // A text that may not stay is put right first.
  if (const auto* box = dynamic_cast<GuardedEdit*>(focusWidget())) box->Refuses();
  if (!SettleEdits()) return false;
  // Only now: an Update on the way would have gone to a mission of that name in this folder.
  Arguments.ComLineMission = asked.ComLineMission;
  GoToFolder(asked.ComLinePath);
  if (asked.IsBriefing && comLineMissionFound_ && !session_.Doc.Closing) ClickEditBrief();
  return true;
}

/** A later start ends at once; what it was to open is offered here. */
void frmRWS::HearOtherStarts() {
  const Shell& system = session_.Services.System;
  if (!system.HearOtherStarts) return;
  system.HearOtherStarts([window = QPointer<frmRWS>(this)](const std::string& path) {
    if (!window || window->session_.Doc.Closing) return;
    const auto open = [window, path] {
      // Cancelled, the offer stands.
      if (window->OpenPath(path)) window->bars->Hide(kSecondStart);
    };
    window->bars->Show(kSecondStart,
                       {BarKind::Info,
                        tr("\"%1\" was asked for by a second start.").arg(FromPath(path)),
                        {{tr("Open"), open}},
                        {}});
    QApplication::alert(window);
  });
}

}  // namespace rws
