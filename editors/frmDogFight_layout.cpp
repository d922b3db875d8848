#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QVBoxLayout>

#include "controls/layouts.h"
#include "editors/frmDogFight.h"

namespace rws {

void frmDogFight::Build() {
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
  TabOrder({upd->Up, cbo, slide, lstAC[kReserve], cmd1[kReserve], lstAC[kAvailable],
            cmd1[kAvailable], cmd2, cmd[kApply], cmd[kCancel]});
}

void frmDogFight::BuildBase() {
  constexpr int kStep = 1, kPageStep = 5, kTickInterval = 1000;
  fra = new QGroupBox(tr("Home Base"));
  Label4 = Named(new QLabel(tr("Home Base &Number")), "Label4");
  Label1 = Named(new QLabel(tr("Home &Base Color")), "Label1");
  Label2 = Named(new QLabel(tr("Home Base Si&ze")), "Label2");
  lbl = Named(new QLabel, "lbl");
  lbl->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
  lbl->setAlignment(Qt::AlignCenter);
  lbl->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("00000")));
  upd = Named(new UpDown(0, 0, 1, 0), "upd", tr("Home Base Number"),
              tr("Cycle through the available Bases"));
  upd->Up->setAccessibleName(tr("Next Home Base"));
  upd->Down->setAccessibleName(tr("Previous Home Base"));
  upd->SetReachable();
  cbo = Named(new DropDown, "cbo", tr("Home Base Color"), tr("Selects color for this Home Base"));
  cbo->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  lblColor = Named(new QLabel(tr("Color")), "lblColor");
  lblColor->setFrameStyle(QFrame::Panel | QFrame::Sunken);
  lblColor->setAutoFillBackground(true);
  lblColor->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("00000000")));
  slide = Named(new QSlider(Qt::Horizontal), "slide", tr("Home Base Size"), tr("Adjust area size"));
  lblSize = Named(new QLabel, "lblSize");
  lblSize->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  lblSize->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("000000 m")));
  slide->setRange(kLeastRadius, kLargestRadius);
  slide->setTickInterval(kTickInterval);
  slide->setTickPosition(QSlider::TicksBelow);
  slide->setSingleStep(kStep);
  slide->setPageStep(kPageStep);
  Label4->setBuddy(upd);
  Label1->setBuddy(cbo);
  Label2->setBuddy(slide);

  auto* grid = new QGridLayout(fra);
  for (auto* label : {Label4, Label1, Label2}) grid->addWidget(label, grid->count(), 0);
  auto* number = Joined(lbl, upd);
  number->addStretch();
  grid->addLayout(number, 0, 1, 1, 2);
  grid->addWidget(cbo, 1, 1);
  grid->addWidget(lblColor, 1, 2, Qt::AlignLeft);
  auto* size = new QHBoxLayout;
  size->addWidget(slide, 1);
  size->addWidget(lblSize);
  grid->addLayout(size, 2, 1, 1, 2);
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
    lstAC[i] = Named(new ReportList, lists[i], captions[i]);
    lstAC[i]->setModel(&models_[i]);
    lstAC[i]->header()->setStretchLastSection(false);
    lstAC[i]->header()->setSectionsClickable(false);
    lstAC[i]->setMinimumWidth(fontMetrics().averageCharWidth() * kLetters);
    lstAC[i]->setMinimumHeight(fontMetrics().height() * kRows);
    (new QVBoxLayout(fraList[i]))->addWidget(lstAC[i]);
    cmd1[i] = Named(new ArrowButton(arrows[i]), buttons[i], moves[i], moves[i]);
    cmd1[i]->setEnabled(false);
  }
  NameEach(fraList, "fraList");
}

QLayout* frmDogFight::BuildButtons() {
  cmd2 = Button("cmd2", tr("&Default"), tr("Sets all flyable aircraft to the Home Base"));
  cmd = {Button("cmd(0)", tr("&Apply"), tr("Apply the changes and exit")),
         Button("cmd(1)", tr("&Cancel"), tr("Discard changes and exit"))};
  cmd[kApply]->setDefault(true);
  return ButtonRow({cmd[kApply], cmd[kCancel]}, {cmd2});
}

}  // namespace rws
