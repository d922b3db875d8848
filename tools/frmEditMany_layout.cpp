#include <QHeaderView>

#include "controls/layouts.h"
#include "tools/frmEditMany.h"

namespace rws {

void frmEditMany::Build() {
  lblScope = Named(new QLabel(tr("&Missions:")), "lblScope");
  cboScope = Named(new DropDown, "cboScope", tr("Missions"), tr("Which missions are edited"));
  lblScope->setBuddy(cboScope);
  BuildRows();
  chkWhole = Named(new QCheckBox(tr("&Leave a mission out when not all of it is possible")),
                   "chkWhole", tr("Leave a mission out when not all of it is possible"),
                   tr("Else what is not possible stays as it is, and the rest is changed"));
  cmdPreview = Button("cmdPreview", tr("&Preview"), tr("Show what changes; nothing is written"));
  lblFilter = Named(new QLabel(tr("&Show:")), "lblFilter");
  cboFilter =
      Named(new DropDown, "cboFilter", tr("Show"), tr("Which rows of the preview are shown"));
  cboFilter->Fill({tr("everything"), tr("what changes"), tr("what is left out")});
  cboFilter->SelectRow(0);
  lblFilter->setBuddy(cboFilter);
  lblState = Named(new QLabel, "lblState");
  lblState->setTextFormat(Qt::PlainText);
  lblState->setWordWrap(true);
  lstPlan = Named(new ReportList, "lstPlan", tr("Preview"),
                  tr("A mission without its tick stays as it is; Space takes the tick away"));
  lstPlan->setModel(&Model);
  lstPlan->header()->setSectionsClickable(false);
  lstPlan->installEventFilter(this);
  txtReport = Named(new QPlainTextEdit, "txtReport", tr("How the run ended"));
  txtReport->setReadOnly(true);
  txtReport->setTabChangesFocus(true);
  cmd = {Button("cmd(0)", tr("&Apply"), tr("Write the missions that are ticked")),
         Button("cmd(1)", tr("Cop&y as Text"), tr("Put what is shown on the clipboard")),
         Button("cmd(2)", tr("&Close"), tr("Close window and Exit"))};
  for (auto* button : cmd) button->setAutoDefault(false);
  cmdPreview->setAutoDefault(false);
  PlaceControls();
}

void frmEditMany::BuildRows() {
  fraRows = Named(new QGroupBox(tr("Give these values")), "fraRows");
  scrRows = Named(new QScrollArea, "scrRows", tr("Fields and values"));
  scrRows->setWidgetResizable(true);
  scrRows->setFrameShape(QFrame::NoFrame);
  scrRows->setFocusPolicy(Qt::NoFocus);
  auto* inside = new QWidget;
  rowLayout_ = new QVBoxLayout(inside);
  rowLayout_->setContentsMargins(0, 0, 0, 0);
  rowLayout_->addStretch();
  scrRows->setWidget(inside);
  // The frame's own shade shows through.
  for (auto* part : {scrRows->viewport(), inside}) part->setAutoFillBackground(false);
  cmdAdd = Button("cmdAdd", tr("Add a &Row"), tr("Another field and value"));
  cmdAdd->setAutoDefault(false);
}

void frmEditMany::PlaceControls() {
  constexpr int kLetters = 150, kLines = 42, kRowLines = 9;
  auto* scope = new QHBoxLayout;
  scope->addWidget(lblScope);
  scope->addWidget(cboScope, 1);
  auto* rows = new QVBoxLayout(fraRows);
  rows->addWidget(scrRows);
  rows->addLayout(ButtonRow({}, {cmdAdd}));
  fraRows->setFixedHeight(fontMetrics().height() * (kRowLines + 5));
  auto* order = new QHBoxLayout;
  order->addWidget(chkWhole);
  order->addStretch();
  order->addWidget(cmdPreview);
  auto* above = new QHBoxLayout;
  above->addWidget(lblFilter);
  above->addWidget(cboFilter);
  above->addWidget(lblState, 1);
  parts_ = new QStackedLayout;
  parts_->addWidget(lstPlan);
  parts_->addWidget(txtReport);
  auto* below = new QHBoxLayout;
  for (const auto command : {kApply, kCopy}) below->addWidget(cmd[command]);
  below->addStretch();
  below->addWidget(cmd[kClose]);
  auto* whole = new QVBoxLayout(this);
  whole->addLayout(scope);
  whole->addWidget(fraRows);
  whole->addLayout(order);
  whole->addLayout(above);
  whole->addLayout(parts_, 1);
  whole->addLayout(below);
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  constexpr int kWidths[] = {26, 14, 20, 18, 18, 40, 60};
  for (int i = 0; i < EditManyModel::kColumns; ++i)
    lstPlan->setColumnWidth(i, kWidths[i] * fontMetrics().averageCharWidth());
  resize(fontMetrics().averageCharWidth() * kLetters, fontMetrics().height() * kLines);
}

/** The rows stand between the missions and the button that adds one. */
void frmEditMany::NumberRows() {
  QWidget* before = cboScope;
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    EditManyRow& row = *rows_[i];
    row.SetNumber(static_cast<int>(i));
    TabOrder({before, row.cboField, row.cboValue, row.spnValue, row.dtValue, row.chkValue,
              row.cboLoadout, row.txtValue, row.cboFlights, row.cboChosen, row.cmdRemove});
    before = row.cmdRemove;
    row.cmdRemove->setEnabled(rows_.size() > 1);
  }
  TabOrder({before, cmdAdd, chkWhole, cmdPreview, cboFilter, lstPlan, txtReport, cmd[kApply],
            cmd[kCopy], cmd[kClose]});
}

}  // namespace rws
