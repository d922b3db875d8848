#include <QHeaderView>
#include <QVBoxLayout>

#include "controls/layouts.h"
#include "tools/frmBackups.h"

namespace rws {

void frmBackups::Build() {
  lblMission = Named(new QLabel, "lblMission");
  lblState = Named(new QLabel, "lblState");
  lblEmpty = Named(new QLabel, "lblEmpty");
  lblEmpty->setAlignment(Qt::AlignCenter);
  for (auto* label : {lblMission, lblState, lblEmpty}) {
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
  }
  lstBackups = Named(new ReportList, "lstBackups", tr("Backups"));
  lstBackups->setModel(&Model);
  lstBackups->setSelectionMode(QAbstractItemView::SingleSelection);
  lstBackups->header()->setSectionsClickable(false);
  cmpTexts = Named(new CompareView(services_.Page), "cmpTexts");
  cmd = {Button("cmd(0)", tr("&Restore"),
                tr("Give the mission this text; what stands there now is kept as a backup")),
         Button("cmd(1)", tr("&Close"), tr("Close window and Exit"))};
  cmd[kRestore]->setAutoDefault(false);
  PlaceControls();
}

void frmBackups::PlaceControls() {
  constexpr int kLetters = 130, kRows = 44, kListedRows = 6;
  parts_ = new QSplitter(Qt::Vertical);
  lstBackups->setMinimumHeight(fontMetrics().height() * kListedRows);
  parts_->addWidget(lstBackups);
  parts_->addWidget(cmpTexts);
  parts_->setStretchFactor(1, 1);
  parts_->setChildrenCollapsible(false);
  auto* whole = new QVBoxLayout(this);
  whole->addWidget(lblMission);
  whole->addWidget(parts_, 1);
  whole->addWidget(lblEmpty, 1);
  auto* below = new QHBoxLayout;
  below->addWidget(lblState, 1);
  below->addWidget(cmd[kRestore]);
  below->addWidget(cmd[kClose]);
  whole->addLayout(below);
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  TabOrder({lstBackups, cmpTexts->lstSide[0], cmpTexts->lstSide[1],
            cmpTexts->cmdGo[CompareView::kPrevious], cmpTexts->cmdGo[CompareView::kNext],
            cmd[kRestore], cmd[kClose]});
  parts_->setSizes({fontMetrics().height() * (kListedRows + 4), fontMetrics().height() * kRows});
  resize(fontMetrics().averageCharWidth() * kLetters, fontMetrics().height() * kRows);
}

}  // namespace rws
