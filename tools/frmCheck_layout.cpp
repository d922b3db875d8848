#include <QHeaderView>
#include <QStyle>
#include <QVBoxLayout>

#include "controls/layouts.h"
#include "tools/frmCheck.h"

namespace rws {

void frmCheck::Build() {
  BuildSubjects();
  BuildList();
  BuildCommands();
  PlaceControls();
}

void frmCheck::BuildSubjects() {
  optWhat = {new QRadioButton(tr("The &mission on show")), new QRadioButton(tr("The &folder")),
             new QRadioButton(tr("The missions fo&und"))};
  NameEach(optWhat, "optWhat");
  for (auto* option : optWhat) option->setAccessibleName(Spoken(option->text()));
  optWhat[kShown]->setToolTip(tr("As an Update would write it, with its unsaved edits"));
  optWhat[kFolder]->setToolTip(tr("All missions of the folder that is open"));
  optWhat[kShown]->setChecked(true);
  chkSeverity = {new QCheckBox(tr("&Notes")), new QCheckBox(tr("&Warnings")),
                 new QCheckBox(tr("&Errors"))};
  NameEach(chkSeverity, "chkSeverity");
  const std::array<QString, 3> tips{
      tr("What is worth knowing; the mission plays as it is written"),
      tr("What the game plays in another way than is written, and files that are missing"),
      tr("What the game refuses, or drops a part of the mission for")};
  for (std::size_t i = 0; i < tips.size(); ++i) {
    chkSeverity[i]->setChecked(true);
    chkSeverity[i]->setAccessibleName(Spoken(chkSeverity[i]->text()));
    chkSeverity[i]->setToolTip(tips[i]);
  }
  txtFilter = Named(new QLineEdit, "txtFilter", tr("Only findings that hold"),
                    tr("Shows only findings that hold this text"));
  txtFilter->setPlaceholderText(tr("Only findings that hold ..."));
  txtFilter->setClearButtonEnabled(true);
}

void frmCheck::BuildList() {
  constexpr std::array kPictures{QStyle::SP_MessageBoxInformation, QStyle::SP_MessageBoxWarning,
                                 QStyle::SP_MessageBoxCritical};
  for (std::size_t i = 0; i < kPictures.size(); ++i)
    Model.Icons[i] = style()->standardIcon(kPictures[i], nullptr, this);
  lstFindings = Named(new ReportList, "lstFindings", tr("Findings"));
  lstFindings->setModel(&Model);
  const int letter = fontMetrics().averageCharWidth();
  QHeaderView* header = lstFindings->header();
  header->setSectionsClickable(false);
  header->setStretchLastSection(false);
  header->setSectionResizeMode(FindingModel::kText, QHeaderView::Stretch);
  header->resizeSection(FindingModel::kSeverity, letter * 11);
  header->resizeSection(FindingModel::kPlace, letter * 30);
  header->resizeSection(FindingModel::kMend, letter * 14);
  lblText = Named(new QLabel, "lblText");
  lblState = Named(new QLabel, "lblState");
  for (auto* label : {lblText, lblState}) {
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
  }
  lblText->setAlignment(Qt::AlignTop);
  // Room for a sentence of two lines, so that the list stays where it is.
  lblText->setMinimumHeight(fontMetrics().lineSpacing() * 2);
  prgState = Named(new QProgressBar, "prgState", tr("Progress"));
  prgState->hide();
}

void frmCheck::BuildCommands() {
  cmd = {Button("cmd(0)", tr("&Check"), tr("Check again")),
         Button("cmd(1)", tr("&Stop"), tr("End the check; what was found stays")),
         Button("cmd(2)", tr("&Go To"), tr("Show the mission and the flight of the finding")),
         Button("cmd(3)", tr("Men&d"), tr("Mend what is selected; Undo takes it back")),
         Button("cmd(4)", tr("Mend &All"),
                tr("Mend all of the mission on show that can be mended, as one step")),
         Button("cmd(5)", tr("Compati&bility..."),
                tr("Whether the mission on show suits the game installed")),
         Button("cmd(6)", tr("E&xport..."), tr("Write what is listed to a file")),
         Button("cmd(7)", tr("C&lose"), tr("Close window and Exit"))};
  // Return goes to the finding.
  for (auto* button : cmd) button->setAutoDefault(false);
}

void frmCheck::PlaceControls() {
  constexpr int kLetters = 140, kRows = 34;
  auto* subjects = new QHBoxLayout;
  for (auto* option : optWhat) subjects->addWidget(option);
  subjects->addStretch();
  subjects->addWidget(cmd[kCheck]);
  subjects->addWidget(cmd[kStop]);
  auto* filters = new QHBoxLayout;
  for (std::size_t i = chkSeverity.size(); i-- > 0;) filters->addWidget(chkSeverity[i]);
  filters->addWidget(txtFilter, 1);
  auto* state = new QHBoxLayout;
  state->addWidget(lblState, 1);
  state->addWidget(prgState);
  auto* whole = new QVBoxLayout(this);
  whole->addLayout(subjects);
  whole->addLayout(filters);
  whole->addWidget(lstFindings, 1);
  whole->addWidget(lblText);
  whole->addLayout(state);
  whole->addLayout(ButtonRow({cmd[kExport], cmd[kClose]},
                             {cmd[kGoTo], cmd[kMend], cmd[kMendAll], cmd[kCompatibility]}));
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  TabOrder({optWhat[kShown], optWhat[kFolder], optWhat[kFound], cmd[kCheck], cmd[kStop],
            chkSeverity[2], chkSeverity[1], chkSeverity[0], txtFilter, lstFindings, cmd[kGoTo],
            cmd[kMend], cmd[kMendAll], cmd[kCompatibility], cmd[kExport], cmd[kClose]});
  lstFindings->setFocus();
  resize(fontMetrics().averageCharWidth() * kLetters, fontMetrics().height() * kRows);
}

}  // namespace rws
