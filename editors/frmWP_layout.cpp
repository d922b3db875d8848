#include <QHBoxLayout>
#include <QVBoxLayout>

#include "controls/layouts.h"
#include "controls/menu_entries.h"
#include "editors/frmWP.h"

namespace rws {

void frmWP::Build() {
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  auto* column = new QVBoxLayout(this);
  column->setMenuBar(BuildMenus());
  column->addWidget(BuildUnits());
  fra = Named(new QGroupBox(tr("Edit"), this), "fra", tr("Edit"));
  grd = Named(new Grid(fra), "grd", tr("Waypoints"));
  auto* inside = new QVBoxLayout(fra);
  inside->addWidget(grd);
  column->addWidget(fra, 1);
  column->addLayout(BuildButtons());
  grd->setFocus();
}

QMenuBar* frmWP::BuildMenus() {
  auto* bar = new QMenuBar(this);
  mnuMain = Named(bar->addMenu(tr("&File")), "mnuMain");
  mnuMain1 = AddEntry(mnuMain, tr("E&xit"), QStringLiteral("mnuMain1"));
  mnuPop = Named(new QMenu(tr("Pop"), this), "mnuPop");
  AddEntries<4>(mnuPop, mnuPop1, "mnuPop1",
                {tr("&Take Off"), tr("&Normal Fly"), tr("&Ground Attack"), tr("&Land")});
  for (auto* kind : mnuPop1) kind->setEnabled(false);
  return bar;
}

QGroupBox* frmWP::BuildUnits() {
  Frame1 = Named(new QGroupBox(tr("Measurements"), this), "Frame1", tr("Measurements"));
  opt = {Named(new QRadioButton(tr("&Metric"), Frame1), "opt(0)", tr("Metric")),
         Named(new QRadioButton(tr("&Non Metric"), Frame1), "opt(1)", tr("Non Metric"))};
  auto* row = new QHBoxLayout(Frame1);
  for (auto* button : opt) row->addWidget(button);
  row->addStretch();
  return Frame1;
}

QLayout* frmWP::BuildButtons() {
  cmd = {Button("cmd(0)", tr("&Apply")),
         Button("cmd(1)", tr("&Exit"), tr("Click here to exit the waypoint editor"))};
  // Return ends the edit of a cell and must not close the form.
  for (auto* button : cmd) button->setAutoDefault(false);
  return ButtonRow({cmd[kApply], cmd[kExit]});
}

}  // namespace rws
