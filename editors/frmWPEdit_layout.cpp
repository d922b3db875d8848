#include <QGridLayout>

#include "controls/layouts.h"
#include "editors/frmWPEdit.h"

namespace rws {

void frmWPEdit::Build() {
  constexpr int kFarthest = 100, kFastest = 25, kMostCopies = 25;
  constexpr int kStep = 10, kSpeedStep = 5, kStart = 10;
  fra1 = Named(new QGroupBox(tr("Duplicate Flight")), "fra1");
  Fra3 = Named(new QGroupBox(tr("Flight Waypoint Offsets")), "Fra3");
  fra2 = Named(new QGroupBox(tr("Landing Waypoint")), "fra2");
  lbl = {{0, new QLabel(tr("&Distance:"))}, {1, new QLabel(tr("[M]"))},
         {2, new QLabel(tr("&Speed:"))},    {3, new QLabel(tr("&Number of duplicate flights:"))},
         {8, new QLabel(tr("&Height:"))},   {11, new QLabel(tr("[M]"))},
         {12, new QLabel(tr("[Km/h]"))}};
  const auto box = [](const char* name, const QString& accessibleName, const QString& toolTip) {
    return Named(new QLineEdit, name, accessibleName, toolTip);
  };
  txtInput = {box("txtInput(0)", tr("Height, metres"), {}),
              box("txtInput(1)", tr("Distance, metres"), {}),
              box("txtInput(2)", tr("Landing speed, kilometres per hour"),
                  tr("Current flight's altitude for this waypoint")),
              box("txtInput(3)", tr("Number of duplicate flights"),
                  tr("The number of flights to be created "))};
  udWP = {Named(new UpDown(-kFarthest, kFarthest, kStep, kStart), "udWP(0)", tr("Height"),
                tr("Set group's altitude increment")),
          Named(new UpDown(-kFarthest, kFarthest, kStep, kStart), "udWP(1)", tr("Distance"),
                tr("Set group's distance increment")),
          Named(new UpDown(-kFastest, kFastest, kSpeedStep, kStart), "udWP(2)", tr("Landing speed"),
                tr("Set group's speed increment for landing")),
          Named(new UpDown(0, kMostCopies, 1, 1), "udWP(3)", tr("Number of duplicate flights"),
                tr("Set the number of duplicate flights"))};
  for (std::size_t i = 0; i < txtInput.size(); ++i) {
    udWP[i]->SetBuddy(txtInput[i]);
    udWP[i]->Up->setAccessibleName(tr("%1: more").arg(udWP[i]->accessibleName()));
    udWP[i]->Down->setAccessibleName(tr("%1: less").arg(udWP[i]->accessibleName()));
  }
  for (const auto& [index, label] : lbl) label->setObjectName(QStringLiteral("lbl(%1)").arg(index));
  lbl[8]->setBuddy(txtInput[kHeight]);
  lbl[0]->setBuddy(txtInput[kDistance]);
  lbl[2]->setBuddy(txtInput[kSpeed]);
  lbl[3]->setBuddy(txtInput[kNumber]);
  cmd = {Button("cmd(0)", tr("&Cancel"), tr("Disregard changes and exit")),
         Button("cmd(1)", tr("&Apply"), tr("Accept changes and exit"))};
  cmd[kCancel]->setAutoDefault(false);
  cmd[kApply]->setDefault(true);
  PlaceControls();
  TabOrder({txtInput[kNumber], txtInput[kHeight], txtInput[kDistance], txtInput[kSpeed],
            cmd[kApply], cmd[kCancel]});
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
  addRow(fra1, 3, kNumber, kNoUnit);
  addRow(Fra3, 8, kHeight, 11);
  addRow(Fra3, 0, kDistance, 1);
  addRow(fra2, 2, kSpeed, 12);

  auto* whole = new QVBoxLayout(this);
  for (auto* frame : {fra1, Fra3, fra2}) whole->addWidget(frame);
  whole->addStretch();
  whole->addLayout(ButtonRow({cmd[kApply], cmd[kCancel]}));
}

}  // namespace rws
