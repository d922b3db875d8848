#include "services/forms/frmCam.h"

#include "platform/form_placement.h"

namespace rws {

frmCam::frmCam(Session& session, QWidget* parent)
    : Dialog(session.Services, "frmCam", parent), session_(session) {
  Build();
  connect(cmd, &QPushButton::clicked, this, &QDialog::reject);
}

void frmCam::LoadForm() {
  Load("Form_Load", [&] { LoadFormPos(services_, *this); });
}

void frmCam::done(int result) {
  LogAndLeave(services_, "Form_Unload", [&] { SaveFormPos(services_, *this); });
  Dialog::done(result);
}

}  // namespace rws
