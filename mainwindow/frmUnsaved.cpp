#include "mainwindow/frmUnsaved.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

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
  auto* column = new QVBoxLayout(this);
  lbl = new QLabel(tr("These missions have edits that are not saved:"));
  lst = new QListWidget;
  lst->setObjectName(QStringLiteral("lst"));
  lst->setAccessibleName(tr("Missions that are not saved"));
  lst->setSelectionMode(QAbstractItemView::NoSelection);
  lbl->setBuddy(lst);
  column->addWidget(lbl);
  column->addWidget(lst, 1);
  auto* row = new QHBoxLayout;
  row->addStretch(1);
  const std::array<QString, 3> captions{tr("&Save All"), tr("&Discard"), tr("&Cancel")};
  for (std::size_t i = 0; i < cmd.size(); ++i) {
    cmd[i] = new QPushButton(captions[i]);
    cmd[i]->setObjectName(QStringLiteral("cmd(%1)").arg(i));
    cmd[i]->setAutoDefault(false);
    row->addWidget(cmd[i]);
  }
  column->addLayout(row);
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
