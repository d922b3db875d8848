#include "tools/frmAddMap.h"

#include <QGridLayout>

#include "catalogues/own_entries.h"
#include "catalogues/own_names.h"
#include "controls/layouts.h"
#include "controls/list_colors.h"
#include "controls/wrapped_label.h"
#include "platform/qt_text.h"

namespace rws {

frmAddMap::frmAddMap(Session& session, QWidget* parent)
    : Dialog(session.Services, "frmAddMap", parent), session_(session) {
  Build();
  On(txtName, &QLineEdit::textChanged, "txtName_Change", [this] { Judge(); });
  On(cmd[kOk], &QPushButton::clicked, "cmd_Click", [this] { ClickOk(); });
  connect(cmd[kCancel], &QPushButton::clicked, this, &QDialog::reject);
}

void frmAddMap::Build() {
  constexpr int kLetters = 60, kLongestName = 80;
  txtPath = Named(new QLineEdit, "txtPath", tr("Path"), tr("As missions name the map"));
  txtPath->setReadOnly(true);
  txtName = Named(new QLineEdit, "txtName", tr("Name"), tr("As RWS Edit is to show the map"));
  txtName->setMaxLength(kLongestName);
  lblPath = Named(new QLabel(tr("&Path:")), "lblPath");
  lblPath->setBuddy(txtPath);
  lblName = Named(new QLabel(tr("&Name:")), "lblName");
  lblName->setBuddy(txtName);
  lblWhyNot = Named(new WrappedLabel, "lblWhyNot");
  lblWhyNot->setMinimumHeight(fontMetrics().lineSpacing() * 2);
  cmd = {Button("cmd(0)", tr("&OK"), tr("Keep the name in RWS_Own.txt and show it")),
         Button("cmd(1)", tr("&Cancel"), tr("Close; nothing is kept"))};
  cmd[kCancel]->setAutoDefault(false);
  cmd[kOk]->setDefault(true);
  auto* whole = new QGridLayout(this);
  whole->addWidget(lblPath, 0, 0);
  whole->addWidget(txtPath, 0, 1);
  whole->addWidget(lblName, 1, 0);
  whole->addWidget(txtName, 1, 1);
  whole->addWidget(lblWhyNot, 2, 0, 1, 2, Qt::AlignTop);
  whole->addLayout(ButtonRow({cmd[kOk], cmd[kCancel]}), 3, 0, 1, 2);
  whole->setRowStretch(2, 1);
  TabOrder({txtName, txtPath, cmd[kOk], cmd[kCancel]});
  resize(fontMetrics().averageCharWidth() * kLetters, sizeHint().height());
}

void frmAddMap::LoadForm() {
  ApplyListColors(*this, session_.Prefs);
  Load("Form_Load", [&] {
    txtPath->setText(FromBytes(services_.Page, MapPath));
    txtName->setText(FromPath(ProposedMapName(session_.Doc, services_, MapPath)));
  });
  proposed_ = txtName->text();
  Judge();
  txtName->selectAll();
  txtName->setFocus();
  setWindowTitle(tr("%1 - Add This Map").arg(QLatin1String(kProgramTitle)));
}

void frmAddMap::Judge() {
  const QString why =
      FromPath(WhyNotMapName(session_.Doc, services_, MapPath, ToPath(txtName->text())));
  lblWhyNot->setText(why.isEmpty() ? why : QStringLiteral("\u26A0 ") + why);
  txtName->setAccessibleDescription(why);
  cmd[kOk]->setEnabled(why.isEmpty());
}

void frmAddMap::ClickOk() {
  const OwnMap entry{services_.Page.ToUtf8(MapPath), ToPath(txtName->text().simplified()), From};
  IsAdded = Trap([&] { AddOwnMap(services_, entry); },
                 [&](const Fault& caught) {
                   LogError(services_, caught.Text, "frmAddMap.ClickOk");
                   services_.Ask.MsgBox("The map could not be added.\n" + caught.Text, Buttons::Ok,
                                        Icon::Critical, kProgramTitle);
                 });
  if (IsAdded) accept();
}

}  // namespace rws
