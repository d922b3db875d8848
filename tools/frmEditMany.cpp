#include "tools/frmEditMany.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <algorithm>

#include "controls/list_colors.h"
#include "controls/work_progress.h"
#include "platform/form_placement.h"
#include "platform/qt_text.h"
#include "services/faults.h"

namespace rws {

frmEditMany::frmEditMany(Session& session, QWidget* parent)
    : Dialog(session.Services, "frmEditMany", parent),
      Model(session.Services.Page, nullptr),
      session_(session) {
  Build();
  AddRow();
  Connect();
}

void frmEditMany::Connect() {
  On(cboScope, &QComboBox::currentIndexChanged, "cboScope_Click", [this] { DropPlan(); });
  On(cmdAdd, &QPushButton::clicked, "cmdAdd_Click", [this] { AddRow().cboField->setFocus(); });
  On(chkWhole, &QCheckBox::toggled, "chkWhole_Click", [this] { DropPlan(); });
  On(cmdPreview, &QPushButton::clicked, "cmdPreview_Click", [this] { Preview(); });
  On(cboFilter, &QComboBox::currentIndexChanged, "cboFilter_Click", [this](int filter) {
    Model.SetFilter(static_cast<EditManyModel::Filter>(filter));
    parts_->setCurrentWidget(lstPlan);
  });
  On(&Model, &EditManyModel::WantedChanged, "lstPlan_ItemCheck", [this] { ShowState(); });
  On(cmd[kApply], &QPushButton::clicked, "cmd_Click", [this] { Apply(); });
  On(cmd[kCopy], &QPushButton::clicked, "cmd_Click", [this] { CopyAsText(); });
  On(cmd[kClose], &QPushButton::clicked, "cmd_Click", [this] { reject(); });
}

void frmEditMany::LoadForm() {
  ApplyListColors(*this, session_.Prefs);
  Load(
      "Form_Load", [&] { LoadFormPlace(services_, *this); },
      [&] {
        std::erase_if(Scopes, [](const EditManyScope& scope) { return scope.Paths.empty(); });
        QStringList captions;
        for (const auto& scope : Scopes)
          captions << tr("%1 (%2)").arg(FromPath(scope.Caption)).arg(scope.Paths.size());
        cboScope->Fill(captions);
        cboScope->SelectRow(0);
        chkWhole->setChecked(true);
      },
      [&] { DropPlan(); });
  rows_[0]->cboField->setFocus();
}

EditManyRow& frmEditMany::AddRow() {
  auto* row = new EditManyRow(services_, session_.Tables);
  rowLayout_->insertWidget(rowLayout_->count() - 1, row);
  rows_.push_back(row);
  // What the fields show is for the controls alone; a fault is for the preview.
  On(row, &EditManyRow::Changed, "fraRows_Change", [this] { DropPlan(); });
  On(row, &EditManyRow::Removed, "cmdRemove_Click", [this, row] { RemoveRow(row); });
  NumberRows();
  DropPlan();
  // It has its place only when the layout was made.
  rowLayout_->activate();
  scrRows->widget()->adjustSize();
  scrRows->ensureWidgetVisible(row);
  return *row;
}

void frmEditMany::RemoveRow(EditManyRow* row) {
  const auto at = std::find(rows_.begin(), rows_.end(), row);
  if (at == rows_.end() || rows_.size() == 1) return;
  const auto next = rows_.erase(at);
  row->hide();
  row->deleteLater();
  NumberRows();
  DropPlan();
  (next == rows_.end() ? rows_.back() : *next)->cboField->setFocus();
}

void frmEditMany::DropPlan() {
  if (!Model.Plan().Missions.empty()) Model.SetPlan({});
  parts_->setCurrentWidget(lstPlan);
  ShowState();
}

EditContext frmEditMany::Context() const {
  EditContext context = EditContextOf(session_);
  context.LeavesImpossible = !chkWhole->isChecked();
  return context;
}

void frmEditMany::Preview() {
  const int scope = cboScope->currentIndex();
  if (scope < 0 || isRunning_) return;
  EditOrder order;
  const auto read = [&] {
    std::vector<ManyRow> rows;
    for (const auto* row : rows_) rows.push_back(row->Row());
    order = OrderOf(rows);
  };
  if (!Trap(read, [&](const Fault& caught) { lblState->setText(FromPath(caught.Text)); })) return;
  EditPlan plan;
  Run([&](const TellWork& going) {
    plan = PlanEdits(Context(), std::move(order), Scopes[static_cast<std::size_t>(scope)].Paths,
                     EditHooksOf(session_, going));
  });
  const bool isCancelled = plan.IsCancelled;
  parts_->setCurrentWidget(lstPlan);
  Model.SetPlan(std::move(plan));
  if (isCancelled)
    lblState->setText(tr("Cancelled; only these missions were looked at. ") + lblState->text());
  lstPlan->setFocus();
  if (Model.rowCount() > 0) lstPlan->setCurrentIndex(Model.index(0, 0));
}

void frmEditMany::Apply() {
  if (Model.Count().Wanted == 0 || isRunning_) return;
  EditReport report;
  Run([&](const TellWork& going) {
    report = ApplyAsStep(session_, Context(), Model.Plan(), going);
  });
  ShowReport(report);
  if (Changed && !report.Done.empty()) Changed(report.Done);
}

void frmEditMany::ShowReport(const EditReport& report) {
  Model.SetPlan({});
  txtReport->setPlainText(FromPath(ReportText(services_.Page, report)));
  parts_->setCurrentWidget(txtReport);
  lblState->setText(FromPath(EndText(report)) +
                    (report.Done.empty() ? QStringLiteral(".") : tr(". Undo takes it back.")));
  EnableCommands();
  txtReport->setFocus();
}

void frmEditMany::Run(const std::function<void(const TellWork&)>& work) {
  QWidget* const asleep[] = {cboScope, fraRows,   chkWhole,    cmdPreview, cboFilter,
                             lstPlan,  txtReport, cmd[kApply], cmd[kCopy], cmd[kClose]};
  isRunning_ = true;
  for (auto* control : asleep) control->setEnabled(false);
  {
    WorkProgress progress(*this, nullptr, Step);
    const auto going = [&](const WorkStep& step) {
      const bool goesOn = progress.Told(step);
      // So that the dialog is seen and can cancel.
      if (services_.System.PumpEvents) services_.System.PumpEvents();
      return goesOn && !progress.IsCancelled();
    };
    LogAndLeave(services_, "frmEditMany_Run", [&] { work(going); });
  }
  isRunning_ = false;
  for (auto* control : asleep) control->setEnabled(true);
  EnableCommands();
}

void frmEditMany::ShowState() {
  const auto counts = Model.Count();
  if (Model.Plan().Missions.empty()) {
    lblState->setText(tr("Preview shows what will change; until Apply nothing is written."));
  } else {
    QString text = counts.Changing == 1 ? tr("1 mission changes")
                                        : tr("%1 missions change").arg(counts.Changing);
    if (counts.Partly > 0) text += tr(" (%1 of them not in all)").arg(counts.Partly);
    if (counts.Wanted < counts.Changing) text += tr(", %1 of them ticked").arg(counts.Wanted);
    if (counts.LeftOut > 0) text += tr(", %1 left out").arg(counts.LeftOut);
    if (counts.Same > 0) text += tr(", in %1 nothing changes").arg(counts.Same);
    lblState->setText(text + QLatin1Char('.'));
  }
  EnableCommands();
}

void frmEditMany::EnableCommands() {
  cmdPreview->setEnabled(!isRunning_ && cboScope->currentIndex() >= 0);
  cmd[kApply]->setEnabled(!isRunning_ && Model.Count().Wanted > 0);
  cmd[kCopy]->setEnabled(!isRunning_ &&
                         (Model.rowCount() > 0 || parts_->currentWidget() == txtReport));
}

QString frmEditMany::PlanText() const {
  QString text;
  const auto add = [&](const auto& cell) {
    for (int column = 0; column < EditManyModel::kColumns; ++column)
      text += (column > 0 ? QStringLiteral("\t") : QString()) + cell(column).toString();
    text += QLatin1Char('\n');
  };
  add([&](int column) { return Model.headerData(column, Qt::Horizontal, Qt::DisplayRole); });
  for (int row = 0; row < Model.rowCount(); ++row)
    add([&](int column) { return Model.data(Model.index(row, column), Qt::DisplayRole); });
  return text;
}

void frmEditMany::CopyAsText() {
  QGuiApplication::clipboard()->setText(
      parts_->currentWidget() == txtReport ? txtReport->toPlainText() : PlanText());
}

/** As the row with the focus is not now. */
void frmEditMany::ToggleSelected() {
  const int current = lstPlan->CurrentRow();
  if (current < 0) return;
  Model.SetWanted(lstPlan->SelectedRows(), !Model.IsWanted(current));
}

bool frmEditMany::eventFilter(QObject* watched, QEvent* event) {
  if (watched == lstPlan && event->type() == QEvent::KeyPress &&
      static_cast<QKeyEvent*>(event)->key() == Qt::Key_Space) {
    LogAndLeave(services_, "lstPlan_KeyDown", [&] { ToggleSelected(); });
    return true;
  }
  return Dialog::eventFilter(watched, event);
}

void frmEditMany::done(int result) {
  if (isRunning_) return;
  LogAndLeave(services_, "Form_Unload", [&] { SaveFormPlace(services_, *this); });
  Dialog::done(result);
}

}  // namespace rws
