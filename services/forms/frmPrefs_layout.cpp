#include <QGridLayout>
#include <QStyle>
#include <QVBoxLayout>

#include "controls/layouts.h"
#include "platform/qt_text.h"
#include "services/forms/frmPrefs.h"

namespace rws {

void frmPrefs::Build() {
  setObjectName(QStringLiteral("frmPrefs"));
  setWindowTitle(FromPath(kProgramTitle));
  fra = new QGroupBox(tr("Unsaved Changes"));
  fra1 = new QGroupBox(tr("Options"));
  fra2 = new QGroupBox(tr("List Colors"));
  fra3 = new QGroupBox(tr("Game Path"));
  optSave = {new QRadioButton(tr("Prompt to save before exiting mission")),
             new QRadioButton(tr("Do not prompt and auto save before exiting mission")),
             new QRadioButton(tr("Do not prompt and do not save before exiting mission"))};
  chkBackup = new QCheckBox(tr("Create Backups"));
  chkWA = new QCheckBox(tr("Associate RWS to mission files"));
  chkLock = new QCheckBox(tr("Lock Weapons && Time controls"));
  chkSnd = new QCheckBox(tr("Use Windows default media player to play sound"));
  cmdColor = {new QPushButton(tr("&Text...")), new QPushButton(tr("&Background..."))};
  lblColor = {new QLabel(tr("1JG51 Bf-109")), new QLabel(tr("4GvIAP La-5"))};
  lblPath = new ElidedLabel;
  cmdChg = new QPushButton(tr("&Change..."));
  cmd = {new QPushButton(tr("&Apply")), new QPushButton(tr("&Exit"))};
  stBar = new QStatusBar;
  stPath_ = new ElidedLabel;
  PlaceControls();
  NameControls();
}

void frmPrefs::PlaceControls() {
  const int letter = fontMetrics().averageCharWidth();
  auto* saving = new QVBoxLayout(fra);
  for (auto* option : optSave) saving->addWidget(option);
  auto* switches = new QVBoxLayout(fra1);
  for (auto* box : {chkBackup, chkWA, chkLock, chkSnd}) switches->addWidget(box);

  auto* colors = new QGridLayout(fra2);
  for (int i = 0; i < std::ssize(lblColor); ++i) {
    QLabel* sample = lblColor[static_cast<std::size_t>(i)];
    sample->setAutoFillBackground(true);
    sample->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    sample->setMargin(letter / 2);
    colors->addWidget(sample, i, 0);
    colors->addWidget(cmdColor[static_cast<std::size_t>(i)], i, 1);
  }
  colors->setColumnStretch(0, 1);

  auto* path = new QHBoxLayout(fra3);
  lblPath->setIndent(0);
  path->addWidget(lblPath, 1);
  path->addWidget(cmdChg);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  for (auto* button : cmd) buttons->addWidget(button);
  stPath_->setIndent(letter);
  stBar->setSizeGripEnabled(false);
  stBar->addWidget(stPath_, 1);

  auto* inner = new QVBoxLayout;
  const int margin = style()->pixelMetric(QStyle::PM_LayoutLeftMargin);
  inner->setContentsMargins(margin, margin, margin, 0);
  for (auto* frame : {fra, fra1, fra2, fra3}) inner->addWidget(frame);
  inner->addStretch();
  inner->addLayout(buttons);
  auto* whole = new QVBoxLayout(this);
  whole->setContentsMargins(0, 0, 0, 0);
  whole->addLayout(inner);
  whole->addWidget(stBar);
  cmd[0]->setDefault(true);
  for (auto* button : {cmd[1], cmdChg, cmdColor[0], cmdColor[1]}) button->setAutoDefault(false);
}

void frmPrefs::NameControls() {
  const std::pair<QGroupBox*, const char*> frames[] = {
      {fra, "fra"}, {fra1, "fra1"}, {fra2, "fra2"}, {fra3, "fra3"}};
  for (const auto& [frame, name] : frames) frame->setObjectName(QLatin1String(name));
  for (std::size_t i = 0; i < optSave.size(); ++i) {
    optSave[i]->setObjectName(QStringLiteral("optSave(%1)").arg(i));
    optSave[i]->setAccessibleName(optSave[i]->text());
  }
  const std::pair<QCheckBox*, const char*> boxes[] = {
      {chkBackup, "chkBackup"}, {chkWA, "chkWA"}, {chkLock, "chkLock"}, {chkSnd, "chkSnd"}};
  for (const auto& [box, name] : boxes)
    Describe(box, name, box->text().replace(QStringLiteral("&&"), QStringLiteral("&")), {});
  for (std::size_t i = 0; i < lblColor.size(); ++i) {
    lblColor[i]->setObjectName(QStringLiteral("lblColor(%1)").arg(i));
    lblColor[i]->setAccessibleName(tr("Sample of the list colors"));
  }
  Describe(cmdColor[0], "cmdColor(0)", tr("Text color"), tr("Set text color"));
  Describe(cmdColor[1], "cmdColor(1)", tr("Background color"), tr("Set background color"));
  Describe(lblPath, "lblPath", tr("Game path"), {});
  Describe(cmdChg, "cmdChg", tr("Change the game path"), tr("Browse to the installed game path"));
  Describe(cmd[0], "cmd(0)", tr("Apply"), tr("Apply the changes and exit"));
  Describe(cmd[1], "cmd(1)", tr("Exit"), tr("Disregard changes and exit"));
  stBar->setObjectName(QStringLiteral("stBar"));
  stPath_->setAccessibleName(tr("Current game path"));
}

}  // namespace rws
