#include "tools/frmBackups.h"

#include <algorithm>

#include "controls/list_colors.h"
#include "platform/form_placement.h"
#include "platform/qt_text.h"
#include "services/clock.h"
#include "services/numbers.h"
#include "services/paths.h"

namespace rws {

frmBackups::frmBackups(Session& session, QWidget* parent)
    : Dialog(session.Services, "frmBackups", parent), Model(this), session_(session) {
  Build();
  Connect();
}

void frmBackups::Connect() {
  connect(cmd[kClose], &QPushButton::clicked, this, &QDialog::reject);
  On(cmd[kRestore], &QPushButton::clicked, "cmd_Click", [this] { Restore(); });
  On(lstBackups->selectionModel(), &QItemSelectionModel::selectionChanged, "lstBackups_ItemClick",
     [this] { ShowBackup(); });
  On(&idle_, &QTimer::timeout, "frmBackups.LookAtNext", [this] { LookAtNext(); });
}

void frmBackups::LoadForm() {
  ApplyListColors(*this, session_.Prefs);
  Chosen.clear();
  lblMission->setText(FromPath(MissionPath));
  cmd[kRestore]->setEnabled(false);
  Load(
      "Form_Load", [&] { LoadFormPlace(services_, *this); }, [&] { ReadNow(); },
      [&] { FillList(); });
  setWindowTitle(tr("%1 - Restore a Backup").arg(QLatin1String(kProgramTitle)));
}

void frmBackups::done(int result) {
  idle_.stop();
  LogAndLeave(services_, "Form_Unload", [&] { SaveFormPlace(services_, *this); });
  Dialog::done(result);
}

void frmBackups::ReadNow() {
  now_.reset();
  whyNot_.clear();
  Trap([&] { now_ = ReadMissionNow(services_, MissionPath); },
       [&](const Fault& caught) {
         LogError(services_, caught.Text, "Form_Load");
         whyNot_ = caught.Text;
       });
}

void frmBackups::FillList() {
  std::vector<BackupRow> rows;
  std::string reason;
  const auto list = [&] {
    for (auto& backup : ListBackups(services_, MissionPath)) rows.push_back({backup, {}});
  };
  Trap(list, [&](const Fault& caught) {
    LogError(services_, caught.Text, "Form_Load");
    reason = caught.Text;
  });
  const bool none = rows.empty();
  Model.SetRows(std::move(rows));
  parts_->setVisible(!none);
  lblEmpty->setVisible(none);
  if (none) return ShowEmpty(reason);
  for (const int column : {BackupModel::kTime, BackupModel::kSize, BackupModel::kDifference})
    lstBackups->resizeColumnToContents(column);
  lstBackups->SelectOnly(0);
  lstBackups->setFocus();
  idle_.start();
}

void frmBackups::ShowEmpty(const std::string& reason) {
  const QString name = FromPath(GetFileName(MissionPath));
  const QString none =
      tr("There is no backup of a mission named \"%1\" yet. Each Update makes one "
         "while Create Backups is ticked in the preferences.");
  lblState->clear();
  lblEmpty->setText(reason.empty() ? none.arg(name) : FromPath(reason));
  cmd[kClose]->setFocus();
}

std::optional<std::string> frmBackups::Read(int row) {
  const std::string& path = At(Model.Rows(), row).Backup.Path;
  std::optional<std::string> text;
  Trap([&] { text = ReadMissionBytes(services_, path); },
       [&](const Fault& caught) {
         LogError(services_, caught.Text, "frmBackups.Read");
         lblState->setText(FromPath(caught.Text));
         Model.SetDifference(row, "cannot be read");
       });
  return text;
}

void frmBackups::NoteDifference(int row, const DiffCounts& counts, bool sameBytes) {
  Model.SetDifference(row, whyNot_.empty() ? ShortDifferenceText(counts, sameBytes) : "?");
}

void frmBackups::ShowBackup() {
  const int row = lstBackups->SelectedRows().value(0, -1);
  cmd[kRestore]->setEnabled(false);
  if (row < 0) return;
  const Backup& backup = At(Model.Rows(), row).Backup;
  lblState->setText(StateOf(backup));
  const auto text = Read(row);
  const QString time = FromPath(TimeText(backup.Stamp));
  QString now = tr("As it stands on disk now");
  if (!now_) now = whyNot_.empty() ? tr("The mission is not on disk any more") : tr("Unreadable");
  cmpTexts->SetCaptions(tr("The backup, as of %1").arg(time), now);
  cmpTexts->SetTexts(text.value_or(""), now_.value_or(""));
  if (!text) return;
  NoteDifference(row, cmpTexts->Model.Counts(), cmpTexts->Model.SameBytes());
  cmd[kRestore]->setEnabled(!now_ || *text != *now_);
}

QString frmBackups::StateOf(const Backup& backup) const {
  if (!whyNot_.empty()) return FromPath(whyNot_);
  const QString name = FromPath(GetFileName(MissionPath));
  switch (backup.Origin) {
    case BackupOrigin::OtherFolder:
      return tr("This backup is of another mission of the name \"%1\": of the one in %2.")
          .arg(name, FromPath(OriginText(backup)));
    case BackupOrigin::Unknown:
      return tr("It is not known of which folder's \"%1\" this backup is.").arg(name);
    default:
      return {};
  }
}

void frmBackups::LookAtNext() {
  const auto& rows = Model.Rows();
  const auto next =
      std::find_if(rows.begin(), rows.end(), [](const BackupRow& row) { return !row.Difference; });
  if (next == rows.end()) return idle_.stop();
  const int row = static_cast<int>(next - rows.begin());
  const QString state = lblState->text();
  const auto text = Read(row);
  lblState->setText(state);
  if (!text) return;
  const std::string now = now_.value_or("");
  NoteDifference(row, CountDifferences(*text, now), *text == now);
}

void frmBackups::Restore() {
  const int row = lstBackups->SelectedRows().value(0, -1);
  Chosen = At(Model.Rows(), row).Backup.Path;
  accept();
}

void BackupModel::SetDifference(int row, std::string text) {
  rows_[static_cast<std::size_t>(row)].Difference = std::move(text);
  Q_EMIT dataChanged(index(row, kDifference), index(row, kDifference));
}

QVariant BackupModel::data(const QModelIndex& index, int role) const {
  const BackupRow* row = RowOf(index);
  if (!row) return {};
  if (role == Qt::TextAlignmentRole && index.column() == kSize)
    return static_cast<int>(Qt::AlignRight | Qt::AlignVCenter);
  if (role == Qt::ToolTipRole && index.column() == kOrigin) return FromPath(row->Backup.OriginPath);
  if (role != Qt::DisplayRole) return {};
  switch (index.column()) {
    case kTime:
      return FromPath(TimeText(row->Backup.Stamp));
    case kSize:
      return FromPath(SizeText(row->Backup.Stamp.Size));
    case kDifference:
      return row->Difference ? FromPath(*row->Difference) : QStringLiteral("...");
    default:
      return FromPath(OriginText(row->Backup));
  }
}

QVariant BackupModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  const std::array<QString, kColumns> names{tr("As of"), tr("Size"), tr("Lines changed since"),
                                            tr("From")};
  return At(names, section);
}

}  // namespace rws
