#include "tools/frmCheck.h"

#include <QElapsedTimer>
#include <algorithm>
#include <chrono>
#include <unordered_set>
#include <utility>

#include "controls/list_colors.h"
#include "library/check_report.h"
#include "platform/form_placement.h"
#include "platform/qt_text.h"
#include "services/paths.h"
#include "services/pickers.h"
#include "services/text.h"
#include "services/work.h"
#include "session/current.h"
#include "session/recording.h"
#include "tools/logic/mission_files.h"
#include "tools/logic/shown_check.h"

namespace rws {

namespace {

/** How many results are taken at a time, and for how long, so that the window does not feel it. */
constexpr std::size_t kMostTaken = 20;
constexpr qint64 kMostMilliseconds = 8;

QString Counted(std::size_t count, const QString& one, const QString& several) {
  return count == 1 ? one : several.arg(count);
}

}  // namespace

frmCheck::frmCheck(Session& session, QWidget* parent)
    : Dialog(session.Services, "frmCheck", parent),
      Model(session.Services.Page),
      session_(session) {
  Build();
  Connect();
}

frmCheck::~frmCheck() = default;

void frmCheck::Connect() {
  for (const auto subject : {kShown, kFolder, kFound})
    On(optWhat[subject], &QRadioButton::clicked, "optWhat_Click",
       [this, subject] { Check(subject); });
  for (auto* box : chkSeverity)
    On(box, &QCheckBox::clicked, "chkSeverity_Click", [this] { Filter(); });
  On(txtFilter, &QLineEdit::textChanged, "txtFilter_Change", [this] { Filter(); });
  On(lstFindings->selectionModel(), &QItemSelectionModel::selectionChanged, "lstFindings_ItemClick",
     [this] { EnableCommands(); });
  connect(&Model, &QAbstractItemModel::modelReset, this, [this] { SpanHeadings(0); });
  connect(&Model, &QAbstractItemModel::rowsInserted, this,
          [this](const QModelIndex&, int first) { SpanHeadings(first); });
  On(lstFindings, &ReportList::clicked, "lstFindings_Click", [this] { GoToCurrent(false); });
  On(lstFindings, &ReportList::activated, "lstFindings_DblClick", [this] { GoToCurrent(true); });
  On(cmd[kCheck], &QPushButton::clicked, "cmd_Click", [this] {
    for (const auto subject : {kShown, kFolder, kFound})
      if (optWhat[subject]->isChecked()) return Check(subject);
  });
  On(cmd[kStop], &QPushButton::clicked, "cmd_Click", [this] {
    if (checker_) EndRun(tr("Stopped"));
  });
  On(cmd[kGoTo], &QPushButton::clicked, "cmd_Click", [this] { GoToCurrent(true); });
  On(cmd[kMend], &QPushButton::clicked, "cmd_Click", [this] {
    const auto rows = lstFindings->SelectedRows();
    Mend({rows.begin(), rows.end()});
  });
  On(cmd[kMendAll], &QPushButton::clicked, "cmd_Click", [this] { Mend(MendableRows()); });
  On(cmd[kCompatibility], &QPushButton::clicked, "cmd_Click", [this] {
    if (Compatibility) Compatibility();
    EnableCommands();
  });
  On(cmd[kExport], &QPushButton::clicked, "cmd_Click", [this] { Export(); });
  connect(cmd[kClose], &QPushButton::clicked, this, &QDialog::reject);
  On(&timer_, &QTimer::timeout, "frmCheck.TakeResults", [this] { TakeResults(); });
}

void frmCheck::LoadForm() {
  ApplyListColors(*this, session_.Prefs);
  QPalette colors = txtFilter->palette();
  QColor pale = colors.color(QPalette::Text);
  pale.setAlphaF(0.5F);
  colors.setColor(QPalette::PlaceholderText, pale);
  txtFilter->setPalette(colors);
  Load("Form_Load", [&] { LoadFormPlace(services_, *this); });
  setWindowTitle(tr("%1 - Check Missions").arg(QLatin1String(kProgramTitle)));
  SetFound({});
}

void frmCheck::done(int result) {
  timer_.stop();
  checker_.reset();
  LogAndLeave(services_, "Form_Unload", [&] { SaveFormPlace(services_, *this); });
  Dialog::done(result);
}

const std::shared_ptr<const CheckTables>& frmCheck::Tables() {
  if (!tables_) tables_ = FreshTables(services_, session_.Tables);
  return tables_;
}

void frmCheck::SetFound(std::vector<std::string> paths) {
  found_ = std::move(paths);
  optWhat[kFound]->setVisible(!found_.empty());
  optWhat[kFound]->setToolTip(Counted(found_.size(), tr("1 mission"), tr("%1 missions")));
  if (found_.empty() && optWhat[kFound]->isChecked()) optWhat[kShown]->setChecked(true);
}

void frmCheck::Check(Subject subject) {
  timer_.stop();
  checker_.reset();
  optWhat[subject]->setChecked(true);
  Model.Clear();
  checked_ = leftOut_ = 0;
  lastChecked_.clear();
  prgState->hide();
  sinceBegin_.start();
  // Pictures may have come since.
  game_ = std::make_unique<GameFiles>(services_.Files, session_.Doc.GamePath);
  if (subject == kShown) return CheckCurrent();
  CheckRequest request;
  if (subject == kFolder) {
    request.Folders = {session_.Doc.MissionDir};
    request.Excluded = session_.Doc.ExcludedNames;
  } else {
    request.Files = found_;
  }
  checker_ = std::make_unique<MissionChecker>(services_.Files, Tables(), session_.Doc.GamePath);
  checker_->Add(request);
  unsaved_ = UnsavedMissions(session_);
  constexpr int kPauseMilliseconds = 30;
  timer_.start(kPauseMilliseconds);
  EnableCommands();
}

/** Of the mission on show, with its unsaved edits; none if they cannot be told. */
std::vector<CheckedMission> frmCheck::FindingsNow() {
  services_.Window.ShowBusy(true);
  std::vector<CheckedMission> one;
  Trap(
      [&] {
        one.push_back(CheckShown(session_, *Tables(), *game_,
                                 static_cast<std::size_t>(session_.Doc.CurMission),
                                 Shown ? Shown() : ShownValues()));
      },
      [&](const Fault& caught) { LogError(services_, caught.Text, "frmCheck.FindingsNow"); });
  services_.Window.ShowBusy(false);
  return one;
}

/** What has been edited since the check, here or by others, is not mended over. */
void frmCheck::DropStale(std::vector<Finding>& findings) {
  const auto nameOf = [](const Finding& finding) {
    return std::string(finding.Kind) + '\n' + finding.Text + '\n' + finding.Mend->Text;
  };
  std::unordered_set<std::string> now;
  for (const auto& mission : FindingsNow())
    for (const auto& finding : mission.Findings)
      if (finding.Mend) now.insert(nameOf(finding));
  std::erase_if(findings, [&](const Finding& finding) { return !now.contains(nameOf(finding)); });
}

/** The mission on show, whatever else is listed. */
void frmCheck::CheckCurrent() {
  if (!IsMissionShown(session_)) return EndRun(tr("No mission is shown"));
  std::vector<CheckedMission> one = FindingsNow();
  checked_ = std::max(checked_, one.size());
  Model.Add(std::move(one));
  EndRun({});
}

void frmCheck::TakeResults() {
  QElapsedTimer since;
  since.start();
  const ReadProgress progress = checker_->Progress();
  bool isDone = false;
  do {
    auto batch = checker_->Take(kMostTaken);
    isDone = batch.empty();
    Take(std::move(batch));
  } while (!isDone && since.elapsed() < kMostMilliseconds);
  if (!isDone || !progress.Idle) return ShowProgress(progress.Found);
  const std::size_t done = checked_ - leftOut_;
  // Each names its folder.
  for (auto& trouble : checker_->TakeTroubles()) {
    Model.Add({{trouble, trouble, {}}});
    ++leftOut_;
  }
  EndRun(QString::fromStdString(WorkEndText(done, leftOut_)));
}

/** In the words of all long works, but beside the list: it grows, and one can go on working. */
void frmCheck::ShowProgress(std::size_t found) {
  constexpr qint64 kShownAfterMilliseconds = 500;
  prgState->setRange(0, static_cast<int>(found));
  prgState->setValue(static_cast<int>(checked_));
  prgState->setVisible(sinceBegin_.elapsed() >= kShownAfterMilliseconds);
  const WorkStep step{checked_, found, {}, "Mission"};
  QString text =
      QString::fromStdString(WorkText(step, std::chrono::milliseconds(sinceBegin_.elapsed())));
  if (!lastChecked_.empty()) text += tr(", %1").arg(FromPath(GetFileName(lastChecked_)));
  ShowCounts(text);
}

void frmCheck::Take(std::vector<CheckedMission> batch) {
  for (auto& mission : batch) {
    // What is on disk is not what the user has made of it.
    const auto index = UnsavedAt(mission.Path);
    if (index < 0) continue;
    const bool isCurrent = index == session_.Doc.CurMission;
    mission = CheckShown(session_, *Tables(), *game_, static_cast<std::size_t>(index),
                         isCurrent && Shown ? Shown() : ShownValues());
  }
  checked_ += batch.size();
  for (const auto& mission : batch) leftOut_ += mission.FaultText.empty() ? 0 : 1;
  if (!batch.empty()) lastChecked_ = batch.back().Path;
  Model.Add(std::move(batch));
}

/** Index of a mission with unsaved edits, or -1. */
std::ptrdiff_t frmCheck::UnsavedAt(const std::string& path) const {
  if (!std::binary_search(unsaved_.begin(), unsaved_.end(), path)) return -1;
  const auto index = rws::MissionAt(session_.Doc, path);
  return index >= 0 && session_.Doc.Missions[static_cast<std::size_t>(index)].Loaded ? index : -1;
}

void frmCheck::EndRun(const QString& how) {
  timer_.stop();
  checker_.reset();
  prgState->hide();
  Model.Sort();
  ShowCounts(how.isEmpty() ? Counted(checked_, tr("1 mission checked"), tr("%1 missions checked"))
                           : how);
  if (lstFindings->SelectedRows().isEmpty() && Model.rowCount() > 1) lstFindings->SelectOnly(1);
  EnableCommands();
}

void frmCheck::ShowCounts(const QString& how) {
  lblState->setText(QStringLiteral("%1: %2").arg(how, FromPath(CountsText(Model.Counts()))));
}

void frmCheck::Filter() {
  FindingFilter filter;
  for (std::size_t i = 0; i < chkSeverity.size(); ++i)
    filter.Severities[i] = chkSeverity[i]->isChecked();
  filter.Text = txtFilter->text().trimmed();
  Model.SetFilter(filter);
  if (Model.rowCount() > 1) lstFindings->SelectOnly(1);
  EnableCommands();
}

bool frmCheck::IsShown(const std::string& path) const {
  const Document& doc = session_.Doc;
  // Results come also while the folder is read anew, and the list may have become shorter then.
  return !doc.Missions.empty() && path == CurrentMissionPath(doc);
}

/** What can be mended of the mission on show. */
std::vector<int> frmCheck::MendableRows() const {
  std::vector<int> rows;
  for (int row = 0; row < Model.rowCount(); ++row) {
    const Finding* finding = Model.FindingAt(row);
    if (finding && finding->Mend && IsShown(Model.MissionAt(row).Path)) rows.push_back(row);
  }
  return rows;
}

void frmCheck::EnableCommands() {
  ShowText();
  const auto rows = lstFindings->SelectedRows();
  const bool isRunning = checker_ != nullptr;
  cmd[kStop]->setEnabled(isRunning);
  cmd[kGoTo]->setEnabled(!rows.isEmpty());
  cmd[kMend]->setEnabled(std::any_of(rows.begin(), rows.end(), [&](int row) {
    const Finding* finding = Model.FindingAt(row);
    return finding && finding->Mend;
  }));
  cmd[kMendAll]->setEnabled(!isRunning && !MendableRows().empty());
  cmd[kCompatibility]->setEnabled(IsMissionShown(session_));
  cmd[kExport]->setEnabled(Model.rowCount() > 0);
}

void frmCheck::ShowText() {
  const auto rows = lstFindings->SelectedRows();
  const Finding* finding = rows.size() == 1 ? Model.FindingAt(rows[0]) : nullptr;
  lblText->setText(finding ? FromPath(finding->Text) : QString());
}

/** Headings have all of the row for their text. */
void frmCheck::SpanHeadings(int first) {
  for (int row = first; row < Model.rowCount(); ++row)
    if (!Model.FindingAt(row)) lstFindings->setFirstColumnSpanned(row, {}, true);
}

void frmCheck::GoToCurrent(bool alsoElsewhere) {
  const int row = lstFindings->CurrentRow();
  if (row < 0 || !GoTo) return;
  const std::string path = Model.MissionAt(row).Path;
  if (!alsoElsewhere && !IsShown(path)) return;
  // Showing a mission may check it anew.
  const Finding* const finding = Model.FindingAt(row);
  const Finding copy = finding ? *finding : Finding();
  // A folder that could not be listed is no place to go to.
  if (copy.Kind == "unreadable" && !services_.Files.FileExists(path)) return;
  GoTo(path, finding ? &copy : nullptr);
  EnableCommands();
}

/** Mends what is selected of one mission, that of the first row; it is shown first, so that the
    user sees what becomes of it and can undo it. */
void frmCheck::Mend(const std::vector<int>& rows) {
  std::string path;
  std::vector<Finding> findings;
  for (const int row : rows) {
    const Finding* finding = Model.FindingAt(row);
    if (!finding || !finding->Mend) continue;
    if (path.empty()) path = Model.MissionAt(row).Path;
    if (Model.MissionAt(row).Path == path) findings.push_back(*finding);
  }
  if (findings.empty()) return;
  if (!IsShown(path) && (!GoTo || !GoTo(path, &findings[0]) || !IsShown(path))) return;
  const int row = lstFindings->CurrentRow();
  const std::size_t asked = findings.size();
  DropStale(findings);
  const MendOutcome outcome = findings.empty() ? MendOutcome() : MendShown(session_, findings);
  if (Mended && !findings.empty()) Mended();
  game_ = std::make_unique<GameFiles>(services_.Files, session_.Doc.GamePath);
  CheckCurrent();
  // Where it was, so that the next one is at hand.
  if (row >= 0 && Model.rowCount() > 0)
    lstFindings->SelectOnly(std::min(row, Model.rowCount() - 1));
  QString told = Counted(outcome.Mended, tr("1 finding mended"), tr("%1 findings mended"));
  if (findings.size() < asked) told += tr("; %1 no longer found").arg(asked - findings.size());
  for (const auto& fault : outcome.Faults) told += tr("; not mended: %1").arg(FromPath(fault));
  ShowCounts(told);
}

void frmCheck::Export() {
  const std::string path = GetSaveFile(services_, "Export Findings", "Findings.csv",
                                       "CSV files|*.csv|Text files|*.txt", session_.Doc.MissionDir);
  if (path.empty()) return;
  const bool isText = FoldName(path).ends_with(".txt");
  const auto shown = Model.Shown();
  const std::string text =
      isText ? FindingsText(shown, services_.Page) : FindingsCsv(shown, services_.Page);
  Trap(
      [&] {
        services_.Files.ReplaceFile(path, text);
        ShowCounts(tr("Exported to \"%1\"").arg(FromPath(GetFileName(path))));
      },
      [&](const Fault& caught) {
        LogError(services_, caught.Text, "frmCheck.Export");
        services_.Ask.MsgBox(caught.Text, Buttons::Ok, Icon::Exclamation, kProgramTitle);
      });
}

}  // namespace rws
