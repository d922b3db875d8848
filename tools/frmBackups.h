#pragma once

#include <QLabel>
#include <QPushButton>
#include <QSplitter>
#include <QTimer>
#include <array>
#include <optional>
#include <string>

#include "controls/dialog.h"
#include "controls/report_list.h"
#include "controls/row_model.h"
#include "session/session.h"
#include "tools/compare_view.h"
#include "tools/logic/backups.h"

namespace rws {

/** A backup, and what the mission differs from it in, once that was looked for. */
struct BackupRow {
  rws::Backup Backup;
  std::optional<std::string> Difference;
};

/** The rows of the list of backups. Columns: time, size, what has changed since, origin. */
class BackupModel : public RowModel<BackupRow> {
  Q_OBJECT

 public:
  enum Column { kTime, kSize, kDifference, kOrigin, kColumns };

  explicit BackupModel(QObject* parent) : RowModel(kColumns, parent) {}

  void SetDifference(int row, std::string text);

  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
};

/** Lists the backups of a mission, shows each beside the mission as it stands on disk, and lets one
    be chosen. Changes nothing: the caller, who set the mission, restores what was chosen. */
class frmBackups : public Dialog {
  Q_OBJECT

 public:
  frmBackups(Session& session, QWidget* parent);

  void LoadForm();
  /** Stores size and place, however the form is closed. */
  void done(int result) override;

  /** Full path of the mission, which may have gone. */
  std::string MissionPath;
  /** Out: path of the backup to be restored; "" when the form was closed without one. */
  std::string Chosen;

  QLabel* lblMission;
  BackupModel Model;
  ReportList* lstBackups;
  CompareView* cmpTexts;
  /** What is to be said of the backup that is lit. */
  QLabel* lblState;
  /** Why there is none. */
  QLabel* lblEmpty;
  enum Command : std::size_t { kRestore, kClose };
  std::array<QPushButton*, 2> cmd;

 private:
  void Build();
  void PlaceControls();
  void Connect();
  void FillList();
  void ShowEmpty(const std::string& reason);
  void ReadNow();
  void ShowBackup();
  /** The text of a backup; a failure is logged and told in the list. */
  std::optional<std::string> Read(int row);
  void NoteDifference(int row, const DiffCounts& counts, bool sameBytes);
  /** Looks at one more backup; the window stays usable between two of them. */
  void LookAtNext();
  void Restore();
  QString StateOf(const Backup& backup) const;

  Session& session_;
  /** The mission on disk; nothing where it has gone or cannot be read. */
  std::optional<std::string> now_;
  /** Why it cannot be read. */
  std::string whyNot_;
  QSplitter* parts_;
  QTimer idle_{this};
};

}  // namespace rws
