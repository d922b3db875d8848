#include <QVBoxLayout>

#include "controls/layouts.h"
#include "tools/frmChanges.h"

namespace rws {

void frmChanges::Build() {
  lblSubject = Named(new QLabel, "lblSubject");
  lblWay = Named(new QLabel(tr("Lines that I did not change:")), "lblWay");
  lblRule = Named(new QLabel, "lblRule");
  lblNote = Named(new QLabel, "lblNote");
  for (auto* label : {lblSubject, lblRule, lblNote}) {
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
  }
  optWay = {new QRadioButton(tr("&Keep them as they are")),
            new QRadioButton(tr("&Write them anew"))};
  NameEach(optWay, "optWay");
  for (auto* option : optWay) {
    option->setAccessibleName(lblWay->text() + QLatin1Char(' ') + Spoken(option->text()));
    option->setToolTip(tr("Shows what this way would change; the mission stays as it is"));
  }
  cmpTexts = Named(new CompareView(services_.Page), "cmpTexts");
  txtFault = Named(new QPlainTextEdit, "txtFault", tr("Why this way cannot write the mission"));
  txtFault->setReadOnly(true);
  txtFault->setTabChangesFocus(true);
  cmd = {Button("cmd(0)", tr("&Use for This Mission"),
                tr("Write this mission in the way that is shown, until the program ends")),
         Button("cmd(1)", tr("&Take This Change Back"),
                tr("Make the line what the file has; Ctrl+Backspace")),
         Button("cmd(2)", tr("Cop&y as Text"), tr("Put all changes on the clipboard, as a diff")),
         Button("cmd(3)", tr("&Close"), tr("Close window and Exit"))};
  for (auto* button : cmd) button->setAutoDefault(false);
  mnuTakeBack = new QAction(tr("Take This Change Back"), this);
  mnuTakeBack->setShortcut(Qt::CTRL | Qt::Key_Backspace);
  mnuCopy = new QAction(tr("Copy as Text"), this);
  addActions({mnuTakeBack, mnuCopy});
  for (auto* list : cmpTexts->lstSide) {
    list->addActions({mnuTakeBack, mnuCopy});
    list->setContextMenuPolicy(Qt::ActionsContextMenu);
  }
  PlaceControls();
}

void frmChanges::PlaceControls() {
  auto* ways = new QHBoxLayout;
  ways->addWidget(lblWay);
  for (auto* option : optWay) ways->addWidget(option);
  ways->addWidget(cmd[kUse]);
  ways->addWidget(lblRule, 1);
  parts_ = new QStackedLayout;
  parts_->addWidget(cmpTexts);
  parts_->addWidget(txtFault);
  auto* below = new QHBoxLayout;
  for (const auto command : {kTakeBack, kCopy}) below->addWidget(cmd[command]);
  below->addWidget(lblNote, 1);
  below->addWidget(cmd[kClose]);
  auto* whole = new QVBoxLayout(this);
  whole->addWidget(lblSubject);
  whole->addLayout(ways);
  whole->addLayout(parts_, 1);
  whole->addLayout(below);
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  TabOrder({optWay[kKeep], optWay[kAnew], cmd[kUse], cmpTexts->lstSide[0], cmpTexts->lstSide[1],
            cmpTexts->cmdGo[CompareView::kPrevious], cmpTexts->cmdGo[CompareView::kNext], txtFault,
            cmd[kTakeBack], cmd[kCopy], cmd[kClose]});
  constexpr int kLetters = 165, kRows = 40;
  resize(fontMetrics().averageCharWidth() * kLetters, fontMetrics().height() * kRows);
}

}  // namespace rws
