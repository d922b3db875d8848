#include <QGridLayout>

#include "controls/layouts.h"
#include "mainwindow/flight_panel.h"

namespace rws {

void FlightPanel::Build() {
  constexpr int kMaximumFuel = 100, kFuelStart = 25, kMaximumDelay = 120, kStep = 5;
  setObjectName(QStringLiteral("fraFlight"));
  cboPlanes = new DropDown;
  cboSkill = new DropDown;
  cboWeap = new DropDown;
  txtFuel = new GuardedEdit;
  txtDStart = new GuardedEdit;
  udFuel = new UpDown(0, kMaximumFuel, kStep, kFuelStart);
  udDStart = new UpDown(0, kMaximumDelay, kStep, 0);
  udFuel->SetBuddy(txtFuel);
  udDStart->SetBuddy(txtDStart);
  lblDelayStart = new QLabel(tr("Time"));
  chkAI = new QCheckBox(tr("AI Onl&y"));
  chkPara = new QCheckBox(tr("Para&chute"));
  BuildLabels();
  PlaceControls();
  NameControls();
}

void FlightPanel::BuildLabels() {
  lbl = {{3, new QLabel(tr("# &of Planes"))},  {4, new QLabel(tr("S&kill Level"))},
         {5, new QLabel(tr("Fuel Load"))},     {6, new QLabel(tr("Weapon Load"))},
         {7, new QLabel(tr("Delay Sta&rt:"))}, {13, new QLabel(tr("Min"))}};
  for (const auto& [index, label] : lbl) label->setObjectName(QStringLiteral("lbl(%1)").arg(index));
  lbl[3]->setBuddy(cboPlanes);
  lbl[4]->setBuddy(cboSkill);
  lbl[5]->setBuddy(txtFuel);
  lbl[6]->setBuddy(cboWeap);
  lbl[7]->setBuddy(txtDStart);
}

/** Two rows: what the flight is, what it carries and when it starts. */
void FlightPanel::PlaceControls() {
  const int digit = fontMetrics().horizontalAdvance(QLatin1Char('0'));
  auto* delay = Joined(txtDStart, udDStart);
  delay->addSpacing(digit);
  delay->addWidget(lbl[13]);
  delay->addSpacing(digit * 2);
  delay->addWidget(lblDelayStart);
  auto* fuel = Joined(txtFuel, udFuel);
  fuel->addStretch();
  for (auto* box : {txtFuel, txtDStart}) box->setFixedWidth(digit * 8);
  // Wide enough for what they will hold: the lists are filled later.
  constexpr int kSkillLetters = 12, kCountLetters = 2;
  cboPlanes->setMinimumContentsLength(kCountLetters);
  cboSkill->setMinimumContentsLength(kSkillLetters);
  for (auto* list : {cboPlanes, cboSkill, cboWeap})
    list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);

  auto* grid = new QGridLayout(this);
  grid->setHorizontalSpacing(digit);
  grid->addWidget(lbl[3], 0, 0);
  grid->addWidget(cboPlanes, 0, 1);
  grid->addWidget(lbl[4], 0, 2);
  grid->addWidget(cboSkill, 0, 3);
  grid->addWidget(lbl[5], 0, 5);
  grid->addLayout(fuel, 0, 6);
  grid->addWidget(chkAI, 0, 8);
  grid->addWidget(lbl[6], 1, 0);
  grid->addWidget(cboWeap, 1, 1, 1, 3);
  grid->addWidget(lbl[7], 1, 5);
  grid->addLayout(delay, 1, 6);
  grid->addWidget(chkPara, 1, 8);
  for (const int gap : {4, 7}) grid->setColumnMinimumWidth(gap, digit * 2);
  grid->setColumnStretch(3, 1);
}

void FlightPanel::NameControls() {
  Describe(cboPlanes, "cboPlanes", tr("Number of planes"), tr("Number of planes in this flight"));
  Describe(cboSkill, "cboSkill", tr("Skill Level"), tr("Skill level for this flight"));
  Describe(txtFuel, "txtFuel", tr("Fuel Load"), tr("Current fuel load"));
  Describe(udFuel, "udFuel", tr("Fuel Load"), tr("Set the fuel load"));
  Describe(cboWeap, "cboWeap", tr("Weapon Load"), tr("Current weapon load for this flight"));
  Describe(txtDStart, "txtDStart", tr("Delay Start, minutes"), tr("Delayed start for this group"));
  Describe(udDStart, "udDStart", tr("Delay Start"), tr("Set delayed start for this flight"));
  Describe(chkAI, "chkAI", tr("AI Only"), tr("Sets the flight to AI only"));
  Describe(chkPara, "chkPara", tr("Parachute"),
           tr("Allows you to remove the parachute from selected flights"));
  lblDelayStart->setObjectName(QStringLiteral("lblDelayStart"));
  udFuel->Up->setAccessibleName(tr("More fuel"));
  udFuel->Down->setAccessibleName(tr("Less fuel"));
  udDStart->Up->setAccessibleName(tr("Start later"));
  udDStart->Down->setAccessibleName(tr("Start earlier"));
}

}  // namespace rws
