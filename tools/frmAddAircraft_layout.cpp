#include <QGridLayout>

#include "controls/layouts.h"
#include "controls/wrapped_label.h"
#include "tools/frmAddAircraft.h"

namespace rws {

void frmAddAircraft::Build() {
  constexpr int kLongestName = 60;
  const auto label = [](const char* name, const QString& caption, QWidget* buddy) {
    auto* made = Named(new QLabel(caption), name);
    made->setBuddy(buddy);
    return made;
  };
  lblSeen = Named(new WrappedLabel, "lblSeen");
  txtClass = Named(new QLineEdit, "txtClass", tr("Class"), tr("As missions name the aircraft"));
  txtClass->setReadOnly(true);
  txtName = Named(new QLineEdit, "txtName", tr("Name"), tr("As RWS Edit is to show the aircraft"));
  txtKey = Named(new QLineEdit, "txtKey", tr("Name in home bases"),
                 tr("As home bases of multiplayer missions list it; may stay empty"));
  txtMore = Named(new QLineEdit, "txtMore", tr("Another loadout"),
                  tr("Its key, as it stands behind \"weapons\" in a mission"));
  for (auto* box : {txtName, txtKey, txtMore}) box->setMaxLength(kLongestName);
  cboSide = Named(new QComboBox, "cboSide", tr("Side"), tr("In the list of aircraft"));
  cboSide->addItems({tr("Red"), tr("Blue")});
  chkFlyable = Named(new QCheckBox(tr("The player can &fly it")), "chkFlyable",
                     tr("The player can fly it"), tr("It has a cockpit"));
  lstLoadouts = Named(new QListWidget, "lstLoadouts", tr("Loadouts"),
                      tr("Those that are ticked; Default and Empty are there always"));
  lblClass = label("lblClass", tr("C&lass:"), txtClass);
  lblName = label("lblName", tr("&Name:"), txtName);
  lblSide = label("lblSide", tr("&Side:"), cboSide);
  lblKey = label("lblKey", tr("Name in home &bases:"), txtKey);
  lblLoadouts = label("lblLoadouts", tr("Loa&douts:"), lstLoadouts);
  lblMore = label("lblMore", tr("Ano&ther loadout:"), txtMore);
  lblWhyNot = Named(new WrappedLabel, "lblWhyNot");
  // So that the form keeps its size while one types.
  lblWhyNot->setMinimumHeight(fontMetrics().lineSpacing() * 2);
  cmd = {Button("cmd(0)", tr("&Add"), tr("Put the loadout into the list")),
         Button("cmd(1)", tr("&OK"), tr("Keep the aircraft in RWS_Own.txt and show it")),
         Button("cmd(2)", tr("&Cancel"), tr("Close; nothing is kept"))};
  for (auto* button : cmd) button->setAutoDefault(false);
  cmd[kOk]->setDefault(true);
  PlaceControls();
}

void frmAddAircraft::PlaceControls() {
  constexpr int kLetters = 70, kShownLoadouts = 6;
  auto* whole = new QGridLayout(this);
  whole->addWidget(lblSeen, 0, 0, 1, 3);
  int row = 1;
  for (const auto& [caption, control] :
       {std::pair<QLabel*, QWidget*>{lblClass, txtClass}, {lblName, txtName}, {lblSide, cboSide}}) {
    whole->addWidget(caption, row, 0);
    whole->addWidget(control, row++, 1, 1, 2);
  }
  whole->addWidget(chkFlyable, row++, 1, 1, 2);
  whole->addWidget(lblKey, row, 0);
  whole->addWidget(txtKey, row++, 1, 1, 2);
  whole->addWidget(lblLoadouts, row, 0, Qt::AlignTop);
  whole->addWidget(lstLoadouts, row, 1, 1, 2);
  whole->setRowStretch(row++, 1);
  whole->addWidget(lblMore, row, 0);
  whole->addWidget(txtMore, row, 1);
  whole->addWidget(cmd[kAdd], row++, 2);
  whole->addWidget(lblWhyNot, row++, 0, 1, 3, Qt::AlignTop);
  whole->addLayout(ButtonRow({cmd[kOk], cmd[kCancel]}), row, 0, 1, 3);
  whole->setColumnStretch(1, 1);
  lstLoadouts->setMinimumHeight(fontMetrics().lineSpacing() * kShownLoadouts);
  TabOrder({txtName, cboSide, chkFlyable, txtKey, lstLoadouts, txtMore, cmd[kAdd], cmd[kOk],
            cmd[kCancel], txtClass});
  resize(fontMetrics().averageCharWidth() * kLetters, sizeHint().height());
}

}  // namespace rws
