#include "mainwindow/frmUnsaved.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "controls/layouts.h"
#include "platform/qt_text.h"
#include "services/paths.h"

namespace rws {

frmUnsaved::frmUnsaved(const Services& services, QWidget* parent)
    : Dialog(services, "frmUnsaved", parent) {
  Build();
  const auto choose = [this](UnsavedChoice choice) {
    return [this, choice] {
      Choice = choice;
      accept();
    };
  };
  On(cmd[kSaveAll], &QPushButton::clicked, "cmd_Click", choose(UnsavedChoice::SaveAll));
  On(cmd[kDiscard], &QPushButton::clicked, "cmd_Click", choose(UnsavedChoice::Discard));
  On(cmd[kCancel], &QPushButton::clicked, "cmd_Click", [this] { reject(); });
}

void frmUnsaved::Build() {
  lbl = Named(new QLabel(tr("These missions have edits that are not saved:")), "lbl");
  lst = Named(new QListWidget, "lst", tr("Missions that are not saved"));
  lst->setSelectionMode(QAbstractItemView::NoSelection);
  lbl->setBuddy(lst);
  cmd = {Button("cmd(0)", tr("&Save All")), Button("cmd(1)", tr("&Discard")),
         Button("cmd(2)", tr("&Cancel"))};
  auto* column = new QVBoxLayout(this);
  column->addWidget(lbl);
  column->addWidget(lst, 1);
  column->addLayout(ButtonRow({cmd[kSaveAll], cmd[kDiscard], cmd[kCancel]}));
  for (auto* button : cmd) button->setAutoDefault(false);
  cmd[kSaveAll]->setDefault(true);
}

void frmUnsaved::LoadForm() {
  Load("Form_Load", [this] {
    for (const auto& path : Missions) {
      auto* item = new QListWidgetItem(FromPath(GetBaseName(path)), lst);
      item->setToolTip(FromPath(path));
    }
  });
  cmd[kSaveAll]->setFocus();
}

}  // namespace rws
