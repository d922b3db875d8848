#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QVBoxLayout>

#include "controls/layouts.h"
#include "editors/frmDogFight.h"

namespace rws {

void frmDogFight::Build() {
  setObjectName(QStringLiteral("frmDogFight"));
  BuildBase();
  BuildLists();
  auto* arrows = new QVBoxLayout;
  arrows->addStretch();
  arrows->addWidget(cmd1[kReserve]);
  arrows->addWidget(cmd1[kAvailable]);
  arrows->addStretch();
  auto* lists = new QHBoxLayout;
  lists->addWidget(fraList[kReserve], 1);
  lists->addLayout(arrows);
  lists->addWidget(fraList[kAvailable], 1);
  auto* whole = new QVBoxLayout(this);
  whole->addWidget(fra);
  whole->addLayout(lists, 1);
  whole->addLayout(BuildButtons());
  SetTabOrders();
}

void frmDogFight::BuildBase() {
  constexpr int kStep = 1, kPageStep = 5, kTickInterval = 1000;
  fra = new QGroupBox(tr("Home Base"));
  Label4 = new QLabel(tr("Home Base &Number"));
  Label1 = new QLabel(tr("Home &Base Color"));
  Label2 = new QLabel(tr("Home Base Si&ze"));
  lbl = new QLabel;
  lbl->setObjectName(QStringLiteral("lbl"));
  lbl->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
  lbl->setAlignment(Qt::AlignCenter);
  lbl->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("00000")));
  upd = new UpDown(0, 0, 1, 0);
  Describe(upd, "upd", tr("Home Base Number"), tr("Cycle through the available Bases"));
  upd->Up->setAccessibleName(tr("Next Home Base"));
  upd->Down->setAccessibleName(tr("Previous Home Base"));
  upd->SetReachable();
  cbo = new DropDown;
  Describe(cbo, "cbo", tr("Home Base Color"), tr("Selects color for this Home Base"));
  cbo->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  lblColor = new QLabel(tr("Color"));
  lblColor->setObjectName(QStringLiteral("lblColor"));
  lblColor->setFrameStyle(QFrame::Panel | QFrame::Sunken);
  lblColor->setAutoFillBackground(true);
  lblColor->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("00000000")));
  slide = new QSlider(Qt::Horizontal);
  Describe(slide, "slide", tr("Home Base Size"), tr("Adjust area size"));
  slide->setRange(kLeastRadius, kLargestRadius);
  slide->setTickInterval(kTickInterval);
  slide->setTickPosition(QSlider::TicksBelow);
  slide->setSingleStep(kStep);
  slide->setPageStep(kPageStep);
  Label4->setBuddy(upd);
  Label1->setBuddy(cbo);
  Label2->setBuddy(slide);

  auto* grid = new QGridLayout(fra);
  const std::array<QLabel*, 3> labels{Label4, Label1, Label2};
  const std::array<const char*, 3> names{"Label4", "Label1", "Label2"};
  for (std::size_t row = 0; row < labels.size(); ++row) {
    labels[row]->setObjectName(QLatin1String(names[row]));
    grid->addWidget(labels[row], static_cast<int>(row), 0);
  }
  auto* number = Joined(lbl, upd);
  number->addStretch();
  grid->addLayout(number, 0, 1, 1, 2);
  grid->addWidget(cbo, 1, 1);
  grid->addWidget(lblColor, 1, 2, Qt::AlignLeft);
  grid->addWidget(slide, 2, 1, 1, 2);
  grid->setColumnStretch(2, 1);
}

void frmDogFight::BuildLists() {
  constexpr int kLetters = 34, kRows = 18;
  const std::array<const char*, 2> lists{"lstAC(0)", "lstAC(1)"}, buttons{"cmd1(0)", "cmd1(1)"};
  const std::array<QString, 2> captions{tr("Available Aircraft at Home Base"),
                                        tr("Reserve Aircraft Pool")};
  const std::array<QString, 2> moves{tr("Move selected aircraft to the Reserve Pool"),
                                     tr("Move selected aircraft to the Home Base")};
  const std::array<QStyle::PrimitiveElement, 2> arrows{QStyle::PE_IndicatorArrowLeft,
                                                       QStyle::PE_IndicatorArrowRight};
  for (std::size_t i = 0; i < lstAC.size(); ++i) {
    fraList[i] = new QGroupBox(captions[i]);
    fraList[i]->setObjectName(QStringLiteral("fraList(%1)").arg(i));
    lstAC[i] = new ReportList;
    Describe(lstAC[i], lists[i], captions[i], QString());
    lstAC[i]->setModel(&models_[i]);
    lstAC[i]->header()->setStretchLastSection(false);
    lstAC[i]->header()->setSectionsClickable(false);
    lstAC[i]->setMinimumWidth(fontMetrics().averageCharWidth() * kLetters);
    lstAC[i]->setMinimumHeight(fontMetrics().height() * kRows);
    (new QVBoxLayout(fraList[i]))->addWidget(lstAC[i]);
    cmd1[i] = new ArrowButton(arrows[i]);
    Describe(cmd1[i], buttons[i], moves[i], moves[i]);
    cmd1[i]->setEnabled(false);
  }
}

QLayout* frmDogFight::BuildButtons() {
  cmd2 = new QPushButton(tr("&Default"));
  Describe(cmd2, "cmd2", tr("Default"), tr("Sets all flyable aircraft to the Home Base"));
  cmd = {new QPushButton(tr("&Apply")), new QPushButton(tr("&Cancel"))};
  Describe(cmd[0], "cmd(0)", tr("Apply"), tr("Apply the changes and exit"));
  Describe(cmd[1], "cmd(1)", tr("Cancel"), tr("Discard changes and exit"));
  cmd[0]->setDefault(true);
  auto* row = new QHBoxLayout;
  row->addWidget(cmd2);
  row->addStretch();
  for (auto* button : cmd) row->addWidget(button);
  return row;
}

void frmDogFight::SetTabOrders() {
  const std::array<QWidget*, 10> order{
      upd->Up,          cbo,  slide,  lstAC[kReserve], cmd1[kReserve], lstAC[kAvailable],
      cmd1[kAvailable], cmd2, cmd[0], cmd[1]};
  for (std::size_t i = 1; i < order.size(); ++i) setTabOrder(order[i - 1], order[i]);
}

}  // namespace rws
