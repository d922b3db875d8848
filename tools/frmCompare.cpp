#include "tools/frmCompare.h"

#include <QVBoxLayout>

#include "controls/layouts.h"
#include "controls/list_colors.h"
#include "platform/form_placement.h"
#include "platform/qt_text.h"

namespace rws {

frmCompare::frmCompare(Session& session, QWidget* parent)
    : Dialog(session.Services, "frmCompare", parent), session_(session) {
  Build();
  connect(cmd[kClose], &QPushButton::clicked, this, &QDialog::reject);
}

void frmCompare::Build() {
  lblSubject = Named(new QLabel, "lblSubject");
  lblSubject->setTextFormat(Qt::PlainText);
  lblSubject->setWordWrap(true);
  cmpTexts = Named(new CompareView(services_.Page), "cmpTexts");
  cmd = {Button("cmd(0)", tr("&Close"), tr("Close window and Exit"))};
  auto* whole = new QVBoxLayout(this);
  whole->addWidget(lblSubject);
  whole->addWidget(cmpTexts, 1);
  whole->addLayout(ButtonRow({cmd[kClose]}));
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  constexpr int kLetters = 130, kRows = 36;
  resize(fontMetrics().averageCharWidth() * kLetters, fontMetrics().height() * kRows);
}

void frmCompare::LoadForm() {
  ApplyListColors(*this, session_.Prefs);
  Load(
      "Form_Load", [&] { LoadFormPlace(services_, *this); },
      [&] {
        lblSubject->setText(FromPath(Subject));
        lblSubject->setVisible(!Subject.empty());
        cmpTexts->SetCaptions(FromPath(BeforeCaption), FromPath(AfterCaption));
        cmpTexts->SetTexts(Before, After);
      });
  cmpTexts->lstSide[0]->setFocus();
}

void frmCompare::done(int result) {
  LogAndLeave(services_, "Form_Unload", [&] { SaveFormPlace(services_, *this); });
  Dialog::done(result);
}

}  // namespace rws
