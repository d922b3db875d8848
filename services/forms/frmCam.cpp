#include "services/forms/frmCam.h"

#include "platform/form_placement.h"
#include "platform/qt_text.h"

namespace rws {

frmCam::frmCam(Session& session, QWidget* parent)
    : Dialog(session.Services, "frmCam", parent), session_(session) {
  Build();
  connect(cmd, &QPushButton::clicked, this, &QDialog::reject);
  for (std::size_t i = 0; i < imgWarn.size(); ++i)
    On(imgWarn[i], &QToolButton::clicked, "imgWarn_Click", [this, i] { ShowWarning(i); });
}

void frmCam::LoadForm() {
  Load(
      "Form_Load", [&] { LoadFormPos(services_, *this); }, [&] { FillReport(); });
}

void frmCam::FillReport() {
  if (!Report) return;
  const std::array<QLabel*, 3> texts{lblSq, lblAC, lblMap};
  for (std::size_t i = 0; i < texts.size(); ++i) {
    const CamRow& row = (*Report)[i];
    texts[i]->setText(FromPath(row.Text));
    imgWarn[i]->setVisible(!row.Warning.empty());
  }
}

void frmCam::ShowWarning(std::size_t row) const {
  if (!Report || (*Report)[row].Warning.empty()) return;
  services_.Ask.MsgBox((*Report)[row].Warning, Buttons::Ok, Icon::Exclamation, kProgramTitle);
}

void frmCam::done(int result) {
  LogAndLeave(services_, "Form_Unload", [&] { SaveFormPos(services_, *this); });
  Dialog::done(result);
}

}  // namespace rws
