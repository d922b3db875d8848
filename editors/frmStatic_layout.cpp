#include <QHBoxLayout>
#include <QVBoxLayout>

#include "controls/layouts.h"
#include "editors/frmStatic.h"

namespace rws {

void frmStatic::Build() {
  constexpr int kRows = 20;
  setObjectName(QStringLiteral("frmStatic"));
  fra = new ElidedFrame(this);
  fra->setObjectName(QStringLiteral("fra"));
  lstStatic = new StaticList(session_.Services.Page);
  Describe(lstStatic, "lstStatic", tr("Stationary aircraft"), QString());
  (new QVBoxLayout(fra))->addWidget(lstStatic);
  cmd = {new QPushButton(tr("E&xit")), new QPushButton(tr("&Change")),
         new QPushButton(tr("&Apply"))};
  Describe(cmd[0], "cmd(0)", tr("Exit"), tr("Close window and Exit"));
  Describe(cmd[1], "cmd(1)", tr("Change"), tr("Choose the aircraft type"));
  Describe(cmd[2], "cmd(2)", tr("Apply"), tr("Apply changes and Exit"));
  // Return in the list changes the aircraft, as a double click does.
  cmd[1]->setDefault(true);

  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  for (auto* button : cmd) buttons->addWidget(button);
  auto* whole = new QVBoxLayout(this);
  whole->addWidget(fra, 1);
  whole->addLayout(buttons);
  resize(lstStatic->minimumWidth(), fontMetrics().height() * (kRows + 6));
}

}  // namespace rws
