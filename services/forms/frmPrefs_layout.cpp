#include <QGridLayout>
#include <QStyle>
#include <QVBoxLayout>

#include "controls/layouts.h"
#include "services/forms/frmPrefs.h"

namespace rws {

void frmPrefs::Build() {
  fra = Named(new QGroupBox(tr("Unsaved Changes")), "fra");
  fra1 = Named(new QGroupBox(tr("Options")), "fra1");
  fra2 = Named(new QGroupBox(tr("List Colors")), "fra2");
  fra3 = Named(new QGroupBox(tr("Game Path")), "fra3");
  fraNames = Named(new QGroupBox(tr("Names and Lists")), "fraNames");
  optSave = {new QRadioButton(tr("Prompt to save before exiting mission")),
             new QRadioButton(tr("Do not prompt and auto save before exiting mission")),
             new QRadioButton(tr("Do not prompt and do not save before exiting mission"))};
  spnKept = Named(new QSpinBox, "spnKept", tr("Backups of each mission to keep"),
                  tr("The first backup of a mission stays in any case"));
  spnKept->setRange(0, kMostBackupsKept);
  spnKept->setSpecialValueText(tr("all"));
  lblKept = Named(new QLabel(tr("Backups of each mission to &keep:")), "lblKept");
  lblKept->setBuddy(spnKept);
  lblSpace = Named(new QLabel, "lblSpace");
  spnDays = Named(new QSpinBox, "spnDays", tr("Days to keep deleted and replaced files"),
                  tr("Undo brings these files back"));
  spnDays->setRange(1, kMostStoreDays);
  spnDays->setSuffix(tr(" days"));
  lblDays = Named(new QLabel(tr("Deleted and replaced files are kept &for:")), "lblDays");
  lblDays->setBuddy(spnDays);
  spnStore = Named(new QSpinBox, "spnStore", tr("Most space for deleted and replaced files"),
                   tr("The oldest files go first"));
  spnStore->setRange(1, kMostStoreMegabytes);
  spnStore->setSuffix(tr(" MB"));
  lblStore = Named(new QLabel(tr("and take at &most:")), "lblStore");
  lblStore->setBuddy(spnStore);
  lblStored = Named(new QLabel, "lblStored");
  cboLines = Named(new QComboBox, "cboLines", tr("Lines that I did not change"),
                   tr("What an Update does with the lines of a mission that were not edited"));
  cboLines->addItems({tr("Ask"), tr("Keep them as they are"), tr("Write them anew")});
  lblLines = Named(new QLabel(tr("&Lines that I did not change:")), "lblLines");
  lblLines->setBuddy(cboLines);
  const auto box = [](const char* name, const QString& caption) {
    return Named(new QCheckBox(caption), name, Spoken(caption));
  };
  chkBackup = box("chkBackup", tr("Create Backups"));
  chkWA = box("chkWA", tr("Associate RWS to mission files"));
  chkLock = box("chkLock", tr("Lock Weapons && Time controls"));
  chkSnd = box("chkSnd", tr("Use Windows default media player to play sound"));
  chkDesktop = box("chkDesktop", tr("As the &desktop"));
  chkDesktop->setToolTip(tr("Lists take the colors of the desktop"));
  cmdColor = {
      Named(new QPushButton(tr("&Text...")), "cmdColor(0)", tr("Text color"), tr("Set text color")),
      Named(new QPushButton(tr("&Background...")), "cmdColor(1)", tr("Background color"),
            tr("Set background color"))};
  lblColor = {new QLabel(tr("1JG51 Bf-109")), new QLabel(tr("4GvIAP La-5"))};
  lblPath = Named(new ElidedLabel, "lblPath", tr("Game path"));
  cmdChg = Named(new QPushButton(tr("&Change...")), "cmdChg", tr("Change the game path"),
                 tr("Browse to the installed game path"));
  lblNames = Named(new WrappedLabel, "lblNames");
  cmdNames = Button("cmdNames", tr("&Names and Lists..."),
                    tr("Choose where names of aircraft, maps and squadrons come from"));
  cmd = {Button("cmd(0)", tr("&Apply"), tr("Apply the changes and exit")),
         Button("cmd(1)", tr("&Exit"), tr("Disregard changes and exit"))};
  stBar = Named(new QStatusBar, "stBar");
  stPath_ = new ElidedLabel;
  PlaceControls();
  NameControls();
}

void frmPrefs::PlaceControls() {
  const int letter = fontMetrics().averageCharWidth();
  auto* saving = new QVBoxLayout(fra);
  for (auto* option : optSave) saving->addWidget(option);
  auto* switches = new QVBoxLayout(fra1);
  switches->addWidget(chkBackup);
  auto* kept = new QGridLayout;
  kept->addWidget(lblKept, 0, 0);
  kept->addWidget(spnKept, 0, 1);
  kept->addWidget(lblSpace, 1, 0, 1, 2);
  kept->addWidget(lblDays, 2, 0);
  kept->addWidget(spnDays, 2, 1);
  kept->addWidget(lblStore, 3, 0);
  kept->addWidget(spnStore, 3, 1);
  kept->addWidget(lblStored, 4, 0, 1, 2);
  kept->setColumnStretch(2, 1);
  // Below the caption of the box that makes them.
  const int mark = style()->pixelMetric(QStyle::PM_IndicatorWidth) +
                   style()->pixelMetric(QStyle::PM_CheckBoxLabelSpacing);
  kept->setContentsMargins(mark, 0, 0, 0);
  switches->addLayout(kept);
  for (auto* box : {chkWA, chkLock, chkSnd}) switches->addWidget(box);
  auto* lines = new QHBoxLayout;
  lines->addWidget(lblLines);
  lines->addWidget(cboLines);
  lines->addStretch();
  switches->addLayout(lines);

  auto* colors = new QGridLayout(fra2);
  for (int i = 0; i < std::ssize(lblColor); ++i) {
    QLabel* sample = lblColor[static_cast<std::size_t>(i)];
    sample->setAutoFillBackground(true);
    sample->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    sample->setMargin(letter / 2);
    colors->addWidget(sample, i, 0);
    colors->addWidget(cmdColor[static_cast<std::size_t>(i)], i, 1);
  }
  colors->addWidget(chkDesktop, static_cast<int>(lblColor.size()), 0, 1, 2);
  colors->setColumnStretch(0, 1);

  auto* path = new QHBoxLayout(fra3);
  lblPath->setIndent(0);
  path->addWidget(lblPath, 1);
  path->addWidget(cmdChg);
  auto* names = new QHBoxLayout(fraNames);
  names->addWidget(lblNames, 1);
  names->addWidget(cmdNames);
  stPath_->setIndent(letter);
  stBar->setSizeGripEnabled(false);
  stBar->addWidget(stPath_, 1);

  auto* inner = new QVBoxLayout;
  const int margin = style()->pixelMetric(QStyle::PM_LayoutLeftMargin);
  inner->setContentsMargins(margin, margin, margin, 0);
  // Beside each other: one below the other they would be too high for a small screen.
  auto* top = new QHBoxLayout;
  top->addWidget(fra);
  top->addWidget(fra2, 1);
  inner->addLayout(top);
  for (auto* frame : {fra1, fra3, fraNames}) inner->addWidget(frame);
  inner->addStretch();
  inner->addLayout(ButtonRow({cmd[kApply], cmd[kExit]}));
  auto* whole = new QVBoxLayout(this);
  whole->setContentsMargins(0, 0, 0, 0);
  whole->addLayout(inner);
  whole->addWidget(stBar);
  cmd[kApply]->setDefault(true);
  for (auto* button : {cmd[kExit], cmdChg, cmdNames, cmdColor[kText], cmdColor[kBackground]})
    button->setAutoDefault(false);
}

void frmPrefs::NameControls() {
  for (auto* option : optSave) option->setAccessibleName(option->text());
  for (auto* sample : lblColor) sample->setAccessibleName(tr("Sample of the list colors"));
  NameEach(optSave, "optSave");
  NameEach(lblColor, "lblColor");
  stPath_->setAccessibleName(tr("Current game path"));
}

}  // namespace rws
