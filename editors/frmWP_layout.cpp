#include <QHBoxLayout>
#include <QVBoxLayout>

#include "controls/layouts.h"
#include "editors/frmWP.h"

namespace rws {

void frmWP::Build() {
  setObjectName(QStringLiteral("frmWP"));
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  auto* column = new QVBoxLayout(this);
  column->setMenuBar(BuildMenus());
  column->addWidget(BuildUnits());
  fra = new QGroupBox(tr("Edit"), this);
  grd = new Grid(fra);
  auto* inside = new QVBoxLayout(fra);
  inside->addWidget(grd);
  column->addWidget(fra, 1);
  column->addLayout(BuildButtons());
  NameControls();
  grd->setFocus();
}

QMenuBar* frmWP::BuildMenus() {
  auto* bar = new QMenuBar(this);
  mnuMain = bar->addMenu(tr("&File"));
  mnuMain->setObjectName(QStringLiteral("mnuMain"));
  mnuMain1 = mnuMain->addAction(tr("E&xit"));
  mnuMain1->setObjectName(QStringLiteral("mnuMain1"));
  mnuPop = new QMenu(tr("Pop"), this);
  mnuPop->setObjectName(QStringLiteral("mnuPop"));
  const std::array<QString, 4> captions{tr("&Take Off"), tr("&Normal Fly"), tr("&Ground Attack"),
                                        tr("&Land")};
  for (std::size_t i = 0; i < mnuPop1.size(); ++i) {
    mnuPop1[i] = mnuPop->addAction(captions[i]);
    mnuPop1[i]->setObjectName(QStringLiteral("mnuPop1(%1)").arg(i));
    mnuPop1[i]->setEnabled(false);
  }
  return bar;
}

QGroupBox* frmWP::BuildUnits() {
  Frame1 = new QGroupBox(tr("Measurements"), this);
  opt = {new QRadioButton(tr("&Metric"), Frame1), new QRadioButton(tr("&Non Metric"), Frame1)};
  auto* row = new QHBoxLayout(Frame1);
  for (auto* button : opt) row->addWidget(button);
  row->addStretch();
  return Frame1;
}

QLayout* frmWP::BuildButtons() {
  cmd = {new QPushButton(tr("&Apply"), this), new QPushButton(tr("&Exit"), this)};
  auto* row = new QHBoxLayout;
  row->addStretch();
  for (auto* button : cmd) {
    // Return ends the edit of a cell and must not close the form.
    button->setAutoDefault(false);
    row->addWidget(button);
  }
  return row;
}

void frmWP::NameControls() {
  Describe(Frame1, "Frame1", tr("Measurements"), QString());
  Describe(opt[0], "opt(0)", tr("Metric"), QString());
  Describe(opt[1], "opt(1)", tr("Non Metric"), QString());
  Describe(fra, "fra", tr("Edit"), QString());
  Describe(grd, "grd", tr("Waypoints"), QString());
  Describe(cmd[0], "cmd(0)", tr("Apply"), QString());
  Describe(cmd[1], "cmd(1)", tr("Exit"), tr("Click here to exit the waypoint editor"));
}

}  // namespace rws
