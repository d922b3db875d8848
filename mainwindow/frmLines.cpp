#include "mainwindow/frmLines.h"

#include <QVBoxLayout>

#include "controls/layouts.h"
#include "platform/qt_text.h"
#include "services/paths.h"

namespace rws {

frmLines::frmLines(const Services& services, QWidget* parent)
    : Dialog(services, "frmLines", parent) {
  Build();
  const auto choose = [this](UntouchedLines choice) {
    return [this, choice] {
      Choice = choice;
      accept();
    };
  };
  On(cmd[kKeep], &QPushButton::clicked, "cmd_Click", choose(UntouchedLines::Keep));
  On(cmd[kAnew], &QPushButton::clicked, "cmd_Click", choose(UntouchedLines::Anew));
  On(cmd[kShow], &QPushButton::clicked, "cmd_Click", [this] { Show(); });
  On(cmd[kCancel], &QPushButton::clicked, "cmd_Click", [this] { reject(); });
}

void frmLines::Build() {
  lbl = Named(new QLabel(tr("These missions hold more than RWS Edit's own rules know. Writing them "
                            "anew would also change lines that you did not edit.")),
              "lbl");
  lbl->setWordWrap(true);
  lst = Named(new QListWidget, "lst", tr("Missions that hold more than is known"));
  lst->setSelectionMode(QAbstractItemView::NoSelection);
  lbl->setBuddy(lst);
  chkAlways = Named(new QCheckBox(tr("&Always do so")), "chkAlways", tr("Always do so"),
                    tr("The preferences hold this choice"));
  cmd = {Button("cmd(0)", tr("&Keep them"), tr("Write the edits alone")),
         Button("cmd(1)", tr("&Write anew"), tr("Make the whole file anew")),
         Button("cmd(2)", tr("&Show..."), tr("Show what would change in the mission on show")),
         Button("cmd(3)", tr("&Cancel"), tr("Write nothing"))};
  auto* column = new QVBoxLayout(this);
  column->addWidget(lbl);
  column->addWidget(lst, 1);
  column->addWidget(chkAlways);
  column->addLayout(ButtonRow({cmd[kKeep], cmd[kAnew], cmd[kShow], cmd[kCancel]}));
  for (auto* button : cmd) button->setAutoDefault(false);
  cmd[kKeep]->setDefault(true);
}

void frmLines::LoadForm() {
  Load("Form_Load", [this] {
    for (const auto& path : Missions) {
      auto* item = new QListWidgetItem(FromPath(GetBaseName(path)), lst);
      item->setToolTip(FromPath(path));
    }
  });
  cmd[kKeep]->setFocus();
}

}  // namespace rws
