#include "services/forms/frmCam.h"

#include "platform/form_placement.h"
#include "platform/qt_text.h"
#include "services/error_log.h"

namespace rws {

frmCam::frmCam(Session& session, QWidget* parent) : QDialog(parent), session_(session) {
  Build();
  connect(cmd, &QPushButton::clicked, this, &QDialog::reject);
}

void frmCam::LoadForm() {
  LogAndLeave(session_.Services, "Form_Load", [&] {
    setWindowTitle(FromPath(kProgramTitle));
    LoadFormPos(session_.Services, *this);
  });
}

void frmCam::done(int result) {
  LogAndLeave(session_.Services, "Form_Unload", [&] { SaveFormPos(session_.Services, *this); });
  QDialog::done(result);
}

}  // namespace rws
