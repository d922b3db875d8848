#include <QGridLayout>

#include "controls/layouts.h"
#include "editors/frmWPEdit.h"

namespace rws {

void frmWPEdit::Build() {
  constexpr int kFarthest = 100, kFastest = 25, kMostCopies = 25;
  constexpr int kStep = 10, kSpeedStep = 5, kStart = 10;
  setObjectName(QStringLiteral("frmWPEdit"));
  fra1 = new QGroupBox(tr("Duplicate Flight"));
  Fra3 = new QGroupBox(tr("Flight Waypoint Offsets"));
  fra2 = new QGroupBox(tr("Landing Waypoint"));
  lbl = {{0, new QLabel(tr("&Distance:"))}, {1, new QLabel(tr("[M]"))},
         {2, new QLabel(tr("&Speed:"))},    {3, new QLabel(tr("&Number of duplicate flights:"))},
         {8, new QLabel(tr("&Height:"))},   {11, new QLabel(tr("[M]"))},
         {12, new QLabel(tr("[Km/h]"))}};
  for (auto& box : txtInput) box = new QLineEdit;
  udWP = {new UpDown(-kFarthest, kFarthest, kStep, kStart),
          new UpDown(-kFarthest, kFarthest, kStep, kStart),
          new UpDown(-kFastest, kFastest, kSpeedStep, kStart), new UpDown(0, kMostCopies, 1, 1)};
  for (std::size_t i = 0; i < txtInput.size(); ++i) udWP[i]->SetBuddy(txtInput[i]);
  lbl[8]->setBuddy(txtInput[0]);
  lbl[0]->setBuddy(txtInput[1]);
  lbl[2]->setBuddy(txtInput[2]);
  lbl[3]->setBuddy(txtInput[3]);
  cmd = {new QPushButton(tr("&Cancel")), new QPushButton(tr("&Apply"))};
  cmd[0]->setAutoDefault(false);
  cmd[1]->setDefault(true);
  PlaceControls();
  NameControls();
}

void frmWPEdit::PlaceControls() {
  const int digit = fontMetrics().horizontalAdvance(QLatin1Char('0'));
  // One width of the words, so that the boxes of all frames stand below each other.
  const auto word = lbl[3]->sizeHint().width();
  const auto unit = lbl[12]->sizeHint().width();
  const auto addRow = [&](QGroupBox* frame, int words, std::size_t box, int units) {
    auto* grid = qobject_cast<QGridLayout*>(frame->layout());
    if (!grid) {
      grid = new QGridLayout(frame);
      grid->setColumnMinimumWidth(0, word);
      grid->setColumnMinimumWidth(2, unit);
      grid->setHorizontalSpacing(digit);
      grid->setColumnStretch(3, 1);
    }
    const int row = grid->rowCount();
    txtInput[box]->setFixedWidth(digit * 9);
    grid->addWidget(lbl[words], row, 0);
    grid->addLayout(Joined(txtInput[box], udWP[box]), row, 1);
    if (units >= 0) grid->addWidget(lbl[units], row, 2);
  };
  constexpr int kNoUnit = -1;
  addRow(fra1, 3, 3, kNoUnit);
  addRow(Fra3, 8, 0, 11);
  addRow(Fra3, 0, 1, 1);
  addRow(fra2, 2, 2, 12);

  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(cmd[1]);
  buttons->addWidget(cmd[0]);
  auto* whole = new QVBoxLayout(this);
  for (auto* frame : {fra1, Fra3, fra2}) whole->addWidget(frame);
  whole->addStretch();
  whole->addLayout(buttons);
}

void frmWPEdit::NameControls() {
  fra1->setObjectName(QStringLiteral("fra1"));
  Fra3->setObjectName(QStringLiteral("Fra3"));
  fra2->setObjectName(QStringLiteral("fra2"));
  for (const auto& [index, label] : lbl) label->setObjectName(QStringLiteral("lbl(%1)").arg(index));
  Describe(txtInput[0], "txtInput(0)", tr("Height, metres"), {});
  Describe(txtInput[1], "txtInput(1)", tr("Distance, metres"), {});
  Describe(txtInput[2], "txtInput(2)", tr("Landing speed, kilometres per hour"),
           tr("Current flight's altitude for this waypoint"));
  Describe(txtInput[3], "txtInput(3)", tr("Number of duplicate flights"),
           tr("The number of flights to be created "));
  Describe(udWP[0], "udWP(0)", tr("Height"), tr("Set group's altitude increment"));
  Describe(udWP[1], "udWP(1)", tr("Distance"), tr("Set group's distance increment"));
  Describe(udWP[2], "udWP(2)", tr("Landing speed"), tr("Set group's speed increment for landing"));
  Describe(udWP[3], "udWP(3)", tr("Number of duplicate flights"),
           tr("Set the number of duplicate flights"));
  for (auto* arrows : udWP) {
    arrows->Up->setAccessibleName(tr("%1: more").arg(arrows->accessibleName()));
    arrows->Down->setAccessibleName(tr("%1: less").arg(arrows->accessibleName()));
  }
  Describe(cmd[0], "cmd(0)", tr("Cancel"), tr("Disregard changes and exit"));
  Describe(cmd[1], "cmd(1)", tr("Apply"), tr("Accept changes and exit"));
  const std::array<QWidget*, 6> order = {txtInput[3], txtInput[0], txtInput[1],
                                         txtInput[2], cmd[1],      cmd[0]};
  for (std::size_t i = 1; i < order.size(); ++i) setTabOrder(order[i - 1], order[i]);
}

}  // namespace rws
