#include "library/forms/frmFind.h"

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>
#include <algorithm>

#include "controls/layouts.h"
#include "controls/list_colors.h"
#include "platform/form_placement.h"
#include "platform/qt_text.h"
#include "services/numbers.h"
#include "services/paths.h"
#include "services/pickers.h"
#include "services/setting_values.h"

namespace rws {

frmFind::frmFind(Session& session, QWidget* parent)
    : Dialog(session.Services, "frmFind", parent), session_(session) {
  Build();
  ResetColumns();
  Connect();
  ConnectTable();
}

void frmFind::Connect() {
  On(cmd[kBrowse], &QPushButton::clicked, "cmd_Click", [this] { Browse(); });
  On(cmd[kStop], &QPushButton::clicked, "cmd_Click", [this] { Library->Stop(); });
  On(cmd[kOpen], &QPushButton::clicked, "cmd_Click", [this] { Open(); });
  On(cmd[kExport], &QPushButton::clicked, "cmd_Click", [this] { Export(); });
  // One alone is selected as soon as the list is gone through; several are on purpose.
  On(cmd[kCheck], &QPushButton::clicked, "cmd_Click", [this] {
    const auto selected = SelectedPaths();
    CheckMissions(selected.size() > 1 ? selected : FoundPaths());
  });
  On(cmd[kEdit], &QPushButton::clicked, "cmd_Click", [this] { EditMissions(); });
  connect(cmd[kClose], &QPushButton::clicked, this, &QDialog::reject);
  On(txtFolder, &QLineEdit::returnPressed, "txtFolder_KeyDown", [this] { ReadFolder(); });
  On(chkBelow, &QCheckBox::clicked, "chkBelow_Click", [this] { ReadFolder(); });
  On(mnuRecent, &QMenu::aboutToShow, "cmdRecent_Click", [this] { FillRecent(); });
  On(qryFind, &QueryBox::LineChanged, "qryFind_Change",
     [this](const std::string& line) { Query->SetLine(line); });
  On(qryFind, &QueryBox::Left, "qryFind_KeyDown", [this](bool wasEmpty) {
    if (wasEmpty) reject();
  });
  const auto goToList = [this] {
    RememberQuery();
    lstFound->setFocus();
    if (lstFound->SelectedRows().isEmpty() && Table->rowCount() > 0) lstFound->SelectOnly(0);
  };
  On(qryFind, &QueryBox::Entered, "qryFind_KeyDown", goToList);
  On(qryFind, &QueryBox::WentDown, "qryFind_KeyDown", goToList);
  On(Library, &MissionLibrary::ProgressChanged, "frmFind.ShowState", [this] { ShowState(); });
  On(Query, &LibraryQuery::LookingChanged, "frmFind.ShowFound", [this] { ShowFound(); });
}

void frmFind::ConnectTable() {
  On(Library, &MissionLibrary::RowsChanged, "frmFind.Fill",
     [this] { Fill([this] { Table->Refill(); }); });
  On(Library, &MissionLibrary::Emptied, "frmFind.Fill", [this] { Table->Refill(); });
  On(Query, &LibraryQuery::Changed, "frmFind.Fill", [this] { Fill([this] { Table->Narrow(); }); });
  auto* header = lstFound->header();
  On(header, &QHeaderView::sectionClicked, "lstFound_ColumnClick",
     [this](int column) { SortByHeader(column); });
  On(header, &QWidget::customContextMenuRequested, "lstFound_ColumnMenu",
     [this, header](QPoint place) { mnuColumns->popup(header->mapToGlobal(place)); });
  On(mnuColumns, &QMenu::triggered, "mnuColumns_Click", [this](QAction* entry) {
    const auto place = mnuColumns->actions().indexOf(entry);
    if (place >= static_cast<qsizetype>(kMissionColumns)) return ResetColumns();
    if (!entry->isChecked()) return lstFound->header()->hideSection(static_cast<int>(place));
    ShowColumn(static_cast<MissionColumn>(place), fontMetrics().averageCharWidth() * 18);
  });
  On(lstFound, &QTreeView::doubleClicked, "lstFound_DblClick",
     [this](const QModelIndex&) { Open(); });
  On(lstFound->selectionModel(), &QItemSelectionModel::selectionChanged, "lstFound_ItemClick",
     [this] {
       if (!isFilling_) ForgetAwaited();
       previewTimer_.start();
     });
  // Keys that are held down go through many missions.
  constexpr int kPreviewMilliseconds = 60;
  previewTimer_.setSingleShot(true);
  previewTimer_.setInterval(kPreviewMilliseconds);
  On(&previewTimer_, &QTimer::timeout, "frmFind.ShowPreview", [this] { ShowPreview(); });
}

void frmFind::LoadForm() {
  ApplyListColors(*this, session_.Prefs);
  const Settings& settings = services_.Settings;
  std::string folder = ReadSetting(settings, setting::FindFolder);
  const std::string missions = BuildPath(session_.Doc.GamePath, "Missions");
  if (folder.empty())
    folder = services_.Files.FolderExists(missions) ? missions : session_.Doc.MissionDir;
  txtFolder->setText(FromPath(folder));
  chkBelow->setChecked(ReadFlag(settings, setting::FindBelow));
  Load(
      "Form_Load", [&] { LoadFormPlace(services_, *this); }, [&] { LoadColumns(); },
      [&] { LoadSplitter(services_, *parts_); }, [&] { ReadFolder(); });
  setWindowTitle(tr("%1 - Find Missions").arg(QLatin1String(kProgramTitle)));
  ShowPreview();
  qryFind->txtQuery->setFocus();
}

void frmFind::done(int result) {
  RememberQuery();
  Library->Stop();
  LogAndLeave(services_, "Form_Unload", [&] { StoreColumns(); });
  LogAndLeave(services_, "Form_Unload", [&] { SaveFormPlace(services_, *this); });
  LogAndLeave(services_, "Form_Unload", [&] { SaveSplitter(services_, *parts_); });
  Dialog::done(result);
}

void frmFind::Browse() {
  const std::string start = ExistingFolder(services_, ToPath(txtFolder->text()));
  const std::string folder = GetFolder(services_, "Select the folder to look in", false, start);
  if (folder.empty()) return;
  txtFolder->setText(FromPath(folder));
  ReadFolder();
}

void frmFind::ReadFolder() {
  const std::string folder = ToPath(txtFolder->text());
  WriteSetting(services_.Settings, setting::FindFolder, folder);
  WriteSetting(services_.Settings, setting::FindBelow, chkBelow->isChecked() ? "True" : "False");
  // Of what is awaited from the last time some may be missing yet.
  for (auto& path : SelectedPaths()) awaited_.push_back(std::move(path));
  if (const std::string path = CurrentPath(); !path.empty()) awaitedCurrent_ = path;
  // What the list leaves out could not be shown in it.
  Library->ReadFolder(folder, chkBelow->isChecked(), session_.Doc.ExcludedNames);
  ShowState();
}

void frmFind::ShowState() {
  const bool busy = Library->IsBusy();
  cmd[kStop]->setEnabled(busy);
  QStringList parts;
  if (busy)
    parts << Library->ProgressText();
  else
    parts << tr("%1 missions").arg(FromPath(GroupedNumber(Library->Index().Missions())));
  const auto& gone = Library->Gone();
  if (gone.size() == 1)
    parts << tr("\"%1\" is gone").arg(FromPath(gone[0]));
  else if (!gone.empty())
    parts << tr("%1 missions are gone").arg(FromPath(GroupedNumber(gone.size())));
  const auto& troubles = Library->Troubles();
  if (!troubles.empty()) {
    QStringList all;
    for (const auto& trouble : troubles) all << FromPath(trouble);
    lblState->setToolTip(all.join(u'\n'));
    parts << all.first();
    if (all.size() > 1) parts << tr("and %1 more").arg(all.size() - 1);
  }
  const QString text = parts.join(QStringLiteral("; "));
  if (lblState->text() != text) lblState->setText(text);
  if (troubles.empty()) lblState->setToolTip(QString());
}

void frmFind::ShowFound() {
  const auto& fault = Query->Fault();
  qryFind->SetMessage(fault ? QString::fromStdString(fault->Text) : Query->LookingText(),
                      fault.has_value());
  qryFind->SetCount(CountText(Table->Shown().size(), Library->Index().Missions()));
  for (const Command command : {kExport, kCheck, kEdit})
    cmd[command]->setEnabled(!Table->Shown().empty());
}

void frmFind::Fill(const std::function<void()>& fill) {
  std::vector<bool> selected(Library->Index().size());
  for (const int row : lstFound->SelectedRows())
    selected[Table->Shown()[static_cast<std::size_t>(row)]] = true;
  const int current = lstFound->CurrentRow();
  std::size_t currentRow =
      current < 0 ? MissionIndex::npos : Table->Shown()[static_cast<std::size_t>(current)];
  const int scrolled = lstFound->verticalScrollBar()->value();
  isFilling_ = true;
  fill();
  const bool isBack = TakeAwaited(selected, currentRow);
  SelectRows(selected, currentRow);
  isFilling_ = false;
  if (!Library->IsBusy()) ForgetAwaited();
  if (isBack)
    lstFound->scrollTo(lstFound->currentIndex(), QAbstractItemView::PositionAtCenter);
  else
    lstFound->verticalScrollBar()->setValue(scrolled);
  ShowFound();
  previewTimer_.start();
}

bool frmFind::TakeAwaited(std::vector<bool>& wanted, std::size_t& current) {
  if (awaited_.empty() && awaitedCurrent_.empty()) return false;
  const MissionIndex& index = Library->Index();
  wanted.resize(index.size());
  std::erase_if(awaited_, [&](const std::string& path) {
    const std::size_t row = index.Find(path);
    if (row != MissionIndex::npos) wanted[row] = true;
    return row != MissionIndex::npos;
  });
  const std::size_t lit = index.Find(awaitedCurrent_);
  if (lit == MissionIndex::npos) return false;
  awaitedCurrent_.clear();
  current = lit;
  return true;
}

void frmFind::ForgetAwaited() {
  awaited_.clear();
  awaitedCurrent_.clear();
}

void frmFind::SelectRows(const std::vector<bool>& wanted, std::size_t current) {
  const auto& shown = Table->Shown();
  const int last = Table->columnCount() - 1;
  QItemSelection selection;
  for (std::size_t i = 0; i < shown.size(); ++i) {
    if (shown[i] == current)
      lstFound->selectionModel()->setCurrentIndex(Table->index(static_cast<int>(i), 0),
                                                  QItemSelectionModel::NoUpdate);
    if (shown[i] >= wanted.size() || !wanted[shown[i]]) continue;
    const std::size_t first = i;
    while (i + 1 < shown.size() && shown[i + 1] < wanted.size() && wanted[shown[i + 1]]) ++i;
    selection.select(Table->index(static_cast<int>(first), 0),
                     Table->index(static_cast<int>(i), last));
  }
  lstFound->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
}

void frmFind::ShowPreview() {
  const auto selected = lstFound->selectionModel()->selectedRows();
  cmd[kOpen]->setEnabled(selected.size() == 1);
  const int row = lstFound->CurrentRow();
  const bool isLit = lstFound->selectionModel()->isSelected(lstFound->currentIndex());
  if (row < 0 || !isLit) return preview->Clear();
  preview->ShowMission(Library->Index(), Table->Shown()[static_cast<std::size_t>(row)]);
}

void frmFind::SortByHeader(int column) {
  const auto by = static_cast<MissionColumn>(column);
  const bool descending = Table->SortedBy() == by && !Table->IsDescending();
  lstFound->header()->setSortIndicator(column,
                                       descending ? Qt::DescendingOrder : Qt::AscendingOrder);
  Fill([&] { Table->SortBy(by, descending); });
}

bool frmFind::eventFilter(QObject* watched, QEvent* event) {
  if (watched == lstFound && event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
      LogAndLeave(services_, "lstFound_KeyDown", [&] { Open(); });
      return true;
    }
  }
  return Dialog::eventFilter(watched, event);
}

void frmFind::Open() {
  const auto paths = SelectedPaths();
  if (paths.size() != 1) return;
  RememberQuery();
  // Read again it goes from the list, and that is told here.
  if (!services_.Files.FileExists(paths.front())) return Library->ReadAgain(paths);
  OpenMission(paths.front());
}

/** The columns that are shown, for programs that know UTF-8 by its mark. */
void frmFind::Export() {
  RememberQuery();
  const std::string path = GetSaveFile(services_, "Export the list of missions", "missions.csv",
                                       "Comma-separated values |*.csv", ToPath(txtFolder->text()));
  if (path.empty()) return;
  Trap(
      [&] {
        services_.Files.ReplaceFile(
            path, "\xEF\xBB\xBF" + CsvText(Library->Index(), Table->Shown(), ShownColumns()));
        lblState->setText(tr("%1 missions are in \"%2\".")
                              .arg(FromPath(GroupedNumber(Table->Shown().size())), FromPath(path)));
      },
      [&](const Fault& caught) {
        services_.Ask.MsgBox(caught.Text, Buttons::Ok, Icon::Exclamation, kProgramTitle);
      });
}

std::vector<std::string> frmFind::FoundPaths() const {
  std::vector<std::string> paths;
  for (const auto row : Table->Shown()) paths.push_back(Library->Index().Path(row));
  return paths;
}

std::string frmFind::CurrentPath() const {
  const int current = lstFound->CurrentRow();
  return current < 0 ? ""
                     : Library->Index().Path(Table->Shown()[static_cast<std::size_t>(current)]);
}

std::vector<std::string> frmFind::SelectedPaths() const {
  std::vector<std::string> paths;
  for (const int row : lstFound->SelectedRows())
    paths.push_back(Library->Index().Path(Table->Shown()[static_cast<std::size_t>(row)]));
  return paths;
}

}  // namespace rws
