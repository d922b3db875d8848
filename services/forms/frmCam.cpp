#include "services/forms/frmCam.h"

#include "services/error_log.h"
#include "services/platform/form_placement.h"
#include "services/platform/qt_text.h"

namespace rws {

frmCam::frmCam(WindowContext context, QWidget* parent) : QDialog(parent), context_(context) {
  Build();
  connect(cmd, &QPushButton::clicked, this, &QDialog::reject);
}

void frmCam::LoadForm() {
  LogAndLeave(context_.Services, "Form_Load", [&] {
    setWindowTitle(FromPath(kProgramTitle));
    LoadFormPos(context_.Services, *this);
  });
}

void frmCam::done(int result) {
  LogAndLeave(context_.Services, "Form_Unload", [&] { SaveFormPos(context_.Services, *this); });
  QDialog::done(result);
}

}  // namespace rws
