#include <QApplication>
#include <QHBoxLayout>
#include <algorithm>

#include "controls/layouts.h"
#include "library/completion.h"
#include "mainwindow/frmRWS.h"
#include "platform/qt_text.h"
#include "services/trapped.h"

namespace rws {

namespace {

/** Shorter work is not worth a look. */
constexpr int kShownAfterMilliseconds = 500;

}  // namespace

void frmRWS::BuildFilter() {
  const Session& session = session_;
  Library = new MissionLibrary(
      session.Services.Page,
      [&session] { return NamesFrom(session.Doc.Maps, session.Tables, session.Services.Page); },
      this);
  query_ = new LibraryQuery(*Library, this);
  qryFilter = Named(new QueryBox, "qryFilter");
  qryFilter->txtQuery->setObjectName(QStringLiteral("txtFilter"));
  qryFilter->txtQuery->setAccessibleName(tr("Filter"));
  qryFilter->txtQuery->setPlaceholderText(tr("Filter (Ctrl+F)"));
  qryFilter->txtQuery->setToolTip(
      tr("Shows only the missions that match: words of names, or map:crimea, aircraft:\"bf 109\", "
         "-kind:coop and more; Ctrl+Space lists what there is"));
  qryFilter->Completions = [this](std::string_view line, std::size_t cursor) {
    return Complete(line, cursor, Library->Index());
  };
}

/** A place in the status bar that is there only while it takes long. */
QWidget* frmRWS::BuildReading() {
  boxReading = Named(new QWidget, "boxReading");
  lblReading = Named(new QLabel, "lblReading", tr("Reading missions"));
  lblReading->setTextFormat(Qt::PlainText);
  cmdStopReading = Named(new QToolButton, "cmdStopReading", tr("Stop reading missions"),
                         tr("Reads no more missions for the filter"));
  cmdStopReading->setText(tr("Stop"));
  cmdStopReading->setAutoRaise(true);
  cmdStopReading->setFocusPolicy(Qt::TabFocus);
  auto* row = new QHBoxLayout(boxReading);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(lblReading);
  row->addWidget(cmdStopReading);
  boxReading->hide();
  return boxReading;
}

void frmRWS::ConnectFilter() {
  const Services& services = session_.Services;
  connect(qryFilter, &QueryBox::LineChanged, this,
          Trapped(services, "txtFilter_Change", [this](const std::string& line) {
            query_->SetLine(line);
            ShowFilterMessage();
          }));
  connect(qryFilter, &QueryBox::Left, this,
          Trapped(services, "txtFilter_KeyDown", [this](bool) { LeaveFilter(); }));
  connect(qryFilter, &QueryBox::WentDown, this,
          Trapped(services, "txtFilter_KeyDown", [this] { GoIntoList(); }));
  connect(qryFilter, &QueryBox::Entered, this,
          Trapped(services, "txtFilter_KeyDown", [this] { GoIntoList(); }));
  connect(query_, &LibraryQuery::Changed, this,
          Trapped(services, "ApplyFilter", [this] { ApplyFilter(); }));
  connect(query_, &LibraryQuery::LookingChanged, this, [this] { ShowFilterMessage(); });
  connect(Library, &MissionLibrary::RowsChanged, this,
          Trapped(services, "ApplyFilter", [this] { ApplyFilterWhenFree(); }));
  connect(Library, &MissionLibrary::ProgressChanged, this, [this] { ShowReading(); });
  connect(cmdStopReading, &QToolButton::clicked, this,
          Trapped(services, "cmdStopReading_Click", [this](bool) { StopReading(); }));
  connect(mnuFilter, &QAction::triggered, this, Trapped(services, "mnuFilter_Click", [this](bool) {
            qryFilter->txtQuery->setFocus(Qt::ShortcutFocusReason);
            qryFilter->txtQuery->selectAll();
          }));
  connect(mnuFind, &QAction::triggered, this,
          Trapped(services, "mnuFind_Click", [this](bool) { ClickFind(); }));
  connect(Library, &MissionLibrary::MissionRead, this, &frmRWS::TellFind);
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget* before, QWidget* now) {
    if (now == qryFilter->txtQuery && before && before->window() == this) beforeFilter_ = before;
  });
}

/** The missions of the document are those that are read, and filtered. */
void frmRWS::FollowMissions() {
  Library->Follow(session_.Doc.MissionFiles, session_.Doc.ExcludedNames);
  ApplyFilter();
}

void frmRWS::ApplyFilter() {
  const Document& doc = session_.Doc;
  if (doc.Closing) return;
  TellFilterUnsaved();
  const std::size_t missions = doc.Missions.size();
  std::vector<bool> hidden;
  if (query_->IsActive()) {
    hidden.resize(missions);
    for (std::size_t i = 0; i < missions; ++i) {
      const std::size_t row = Library->RowOf(i);
      hidden[i] = row == MissionIndex::npos || !query_->Matches(row);
    }
  }
  lstMission->HideMissions(std::move(hidden));
  if (lstMission->SelectedMission() < 0) lstMission->SelectMission(doc.CurMission);
  const bool filtered = query_->IsActive() && missions > 0;
  const auto shown = static_cast<std::size_t>(lstMission->RowCount());
  qryFilter->SetCount(filtered ? CountText(shown, missions) : QString());
  ShowFilterMessage();
}

/** What is typed may hold for what has just been read; but rows do not move under the mouse. */
void frmRWS::ApplyFilterWhenFree() {
  constexpr int kLaterMilliseconds = 100;
  if (!query_->IsActive()) return;
  if (QApplication::mouseButtons() == Qt::NoButton) return ApplyFilter();
  QTimer::singleShot(kLaterMilliseconds, this, [this] { ApplyFilterWhenFree(); });
}

/** By the rows of the index. */
void frmRWS::TellFilterUnsaved() {
  std::unordered_set<std::size_t> rows;
  for (const int mission : unsavedShown_) {
    const std::size_t row = Library->RowOf(static_cast<std::size_t>(mission));
    if (row != MissionIndex::npos) rows.insert(row);
  }
  query_->SetUnsaved(std::move(rows));
}

void frmRWS::ShowFilterMessage() {
  const auto& fault = query_->Fault();
  qryFilter->SetMessage(fault ? QString::fromStdString(fault->Text) : query_->LookingText(),
                        fault.has_value());
  if (lstMission->MissionCount() == 0) return;
  const bool isNone = lstMission->RowCount() == 0 && !query_->IsLooking();
  const QString text = isNone ? tr("No mission matches the filter.") : QString();
  if (lstMission->EmptyText() != text) lstMission->SetEmptyText(text);
}

void frmRWS::LeaveFilter() {
  QWidget* back = beforeFilter_;
  const bool canTake = back && back->isVisible() && back->isEnabled();
  (canTake ? back : lstMission)->setFocus(Qt::OtherFocusReason);
}

/** To the mission that is lit; without one, the first that is left is shown. */
void frmRWS::GoIntoList() {
  lstMission->setFocus(Qt::OtherFocusReason);
  if (lstMission->SelectedMission() >= 0 || lstMission->RowCount() == 0) return;
  lstMission->SelectRow(0);
  FollowList(LeaveBy::Key);
}

void frmRWS::ShowReading() {
  const bool shown = Library->IsBusy() && Library->BusyFor() >= kShownAfterMilliseconds;
  if (shown) lblReading->setText(Library->ProgressText());
  if (boxReading->isVisibleTo(staBar) != shown) boxReading->setVisible(shown);
}

void frmRWS::StopReading() {
  const QString text = Library->ProgressText();
  Library->Stop();
  Notice(ToPath(tr("%1. Of the others the filter knows the names only; Reread Folder reads them.")
                    .arg(text)));
}

}  // namespace rws
