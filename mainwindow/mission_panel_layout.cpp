#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "controls/group_frame.h"
#include "controls/layouts.h"
#include "mainwindow/mission_panel.h"
#include "platform/icons.h"

namespace rws {

void MissionPanel::Build() {
  auto* outer = new QVBoxLayout(this);
  outer->setContentsMargins(0, 0, 0, 0);
  fraMission = new GroupFrame(this);
  fraMission->setObjectName(QStringLiteral("fraMission"));
  outer->addWidget(fraMission);
  fraMission->setLayout(new QVBoxLayout);
  lbl = {{0, new QLabel(tr("Mission &Weather"))},
         {1, new QLabel(tr("Cloud &Height"))},
         {2, new QLabel(tr("Mission T&ime"))},
         {14, new QLabel(tr("Mission &Aircraft Count"))},
         {9, new QLabel(tr("Modify Stationary Aircraft"))}};
  BuildValues();
  BuildCounts();
  NameControls();
}

void MissionPanel::BuildValues() {
  cboWeather = new DropDown;
  txtWeather = new GuardedEdit;
  udClouds = new UpDown(50, 2500, 100, 50);
  udClouds->SetBuddy(txtWeather);
  dtMission = new TimePicker;
  dtMission->setWrapping(true);
  chkST = new CheckBox(tr("&Static Time"));
  chkWL = new CheckBox(tr("No User &Loadout"));
  imgSnd = new QToolButton;
  imgSnd->setIcon(ProgramIcon(QStringLiteral("sound")));
  imgSnd->setAutoRaise(true);

  auto* grid = new QGridLayout;
  grid->setHorizontalSpacing(12);
  int row = 0;
  grid->addWidget(lbl[0], row, 0);
  grid->addWidget(cboWeather, row++, 1);
  grid->addWidget(lbl[1], row, 0);
  grid->addLayout(Joined(txtWeather, udClouds), row++, 1);
  grid->addWidget(lbl[2], row, 0);
  grid->addWidget(dtMission, row++, 1);
  grid->addWidget(chkST, row, 0);
  grid->addWidget(chkWL, row++, 1);
  grid->setColumnStretch(1, 1);
  static_cast<QVBoxLayout*>(fraMission->layout())->addLayout(grid);
}

void MissionPanel::BuildCounts() {
  cmdCount = new QToolButton;
  cmdModSA = new QToolButton;
  for (auto* button : {cmdCount, cmdModSA}) {
    button->setText(QStringLiteral("..."));
    button->setFocusPolicy(Qt::StrongFocus);
  }
  imgSnd->setFocusPolicy(Qt::StrongFocus);
  auto* grid = new QGridLayout;
  grid->addWidget(lbl[14], 0, 0);
  grid->addWidget(cmdCount, 0, 1);
  grid->addWidget(lbl[9], 1, 0);
  grid->addWidget(cmdModSA, 1, 1);
  grid->addWidget(imgSnd, 0, 2, 2, 1);
  grid->setColumnStretch(0, 1);
  // The sound comes and goes; the buttons beside it stay where they are.
  auto policy = imgSnd->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  imgSnd->setSizePolicy(policy);
  const int side = imgSnd->fontMetrics().height() * 2;
  imgSnd->setIconSize(QSize(side, side));
  static_cast<QVBoxLayout*>(fraMission->layout())->addLayout(grid);
}

void MissionPanel::NameControls() {
  Describe(cboWeather, "cboWeather", tr("Mission Weather"), tr("Set the mission's weather"));
  Describe(txtWeather, "txtWeather", tr("Cloud Height"), tr("Current cloud height"));
  Describe(udClouds, "udClouds", tr("Cloud Height"), tr("Set the cloud height"));
  udClouds->Up->setAccessibleName(tr("Raise the clouds"));
  udClouds->Down->setAccessibleName(tr("Lower the clouds"));
  Describe(dtMission, "dtMission", tr("Mission Time"), tr("Set the mission time"));
  Describe(chkST, "chkST", tr("Static Time"),
           tr("Prevent time advancement in the selected mission"));
  Describe(chkWL, "chkWL", tr("No User Loadout"),
           tr("Locks the weapons load out for the selected mission"));
  Describe(cmdCount, "cmdCount", tr("Mission Aircraft Count"),
           tr("Displays aircraft count for this mission"));
  Describe(cmdModSA, "cmdModSA", tr("Modify Stationary Aircraft"),
           tr("Modify Stationary ground aircraft"));
  Describe(imgSnd, "imgSnd", tr("Mission sound"), QString());
  lbl[0]->setBuddy(cboWeather);
  lbl[1]->setBuddy(txtWeather);
  lbl[2]->setBuddy(dtMission);
  lbl[14]->setBuddy(cmdCount);
  lbl[9]->setBuddy(cmdModSA);
  for (const auto& [index, label] : lbl) label->setObjectName(QStringLiteral("lbl(%1)").arg(index));
}

}  // namespace rws
