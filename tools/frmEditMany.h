#pragma once

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QScrollArea>
#include <QStackedLayout>
#include <QVBoxLayout>
#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "controls/dialog.h"
#include "controls/report_list.h"
#include "session/session.h"
#include "tools/edit_many_model.h"
#include "tools/edit_many_row.h"
#include "tools/logic/edit_many_step.h"

namespace rws {

/** Gives many missions the same values: shows beforehand what changes in each, and then writes them
    as one step of the history. The caller sets the missions, loads and shows the form. */
class frmEditMany : public Dialog {
  Q_OBJECT

 public:
  frmEditMany(Session& session, QWidget* parent);

  void LoadForm();
  /** Stores size and place, however the form is closed; not while missions are being written. */
  void done(int result) override;

  /** The first one is chosen; those without missions are left out. */
  std::vector<EditManyScope> Scopes;
  /** Called with the missions that have been written, by their full paths. */
  std::function<void(const std::vector<std::string>& paths)> Changed;
  /** Called between two missions with the dialog that can cancel. */
  std::function<void(QProgressDialog&)> Step = [](QProgressDialog&) {};

  QLabel* lblScope;
  DropDown* cboScope;
  QGroupBox* fraRows;
  QScrollArea* scrRows;
  QPushButton* cmdAdd;
  QCheckBox* chkWhole;
  QPushButton* cmdPreview;
  QLabel* lblFilter;
  DropDown* cboFilter;
  QLabel* lblState;
  EditManyModel Model;
  ReportList* lstPlan;
  /** How a run has ended. */
  QPlainTextEdit* txtReport;
  enum Command : std::size_t { kApply, kCopy, kClose };
  std::array<QPushButton*, 3> cmd;
  /** The lines of fields and values, from top to bottom. */
  const std::vector<EditManyRow*>& Rows() const { return rows_; }
  EditManyRow& AddRow();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Build();
  void BuildRows();
  void PlaceControls();
  void Connect();
  void RemoveRow(EditManyRow* row);
  void NumberRows();
  /** What is shown is no longer what the rows ask for. */
  void DropPlan();
  void Preview();
  void Apply();
  void CopyAsText();
  void ToggleSelected();
  void ShowState();
  void EnableCommands();
  QString PlanText() const;
  void ShowReport(const EditReport& report);
  /** Runs `work`, which tells its steps, with the form asleep. */
  void Run(const std::function<void(const TellWork& going)>& work);
  EditContext Context() const;

  Session& session_;
  std::vector<EditManyRow*> rows_;
  QVBoxLayout* rowLayout_;
  QStackedLayout* parts_;
  bool isRunning_ = false;
};

}  // namespace rws
