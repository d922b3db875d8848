#include <QHBoxLayout>
#include <QVBoxLayout>

#include "controls/layouts.h"
#include "editors/frmStatic.h"

namespace rws {

void frmStatic::Build() {
  constexpr int kRows = 20;
  fra = Named(new ElidedFrame(this), "fra");
  lstStatic = Named(new StaticList(services_.Page), "lstStatic", tr("Stationary aircraft"));
  (new QVBoxLayout(fra))->addWidget(lstStatic);
  cmd = {Button("cmd(0)", tr("E&xit"), tr("Close window and Exit")),
         Button("cmd(1)", tr("&Change"), tr("Choose the aircraft type")),
         Button("cmd(2)", tr("&Apply"), tr("Apply changes and Exit"))};
  // Return in the list changes the aircraft, as a double click does.
  cmd[kChange]->setDefault(true);

  auto* whole = new QVBoxLayout(this);
  whole->addWidget(fra, 1);
  whole->addLayout(ButtonRow({cmd[kExit], cmd[kChange], cmd[kApply]}));
  resize(lstStatic->minimumWidth(), fontMetrics().height() * (kRows + 6));
}

}  // namespace rws
