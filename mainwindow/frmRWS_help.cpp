#include "mainwindow/frmRWS.h"
#include "services/help_file.h"
#include "services/trapped.h"
#include "services/update_check.h"
#include "services/version.h"

namespace rws {

void frmRWS::ConnectHelp() {
  const auto command = [this](std::size_t entry, void (frmRWS::*run)()) {
    connect(mnuH[entry], &QAction::triggered, this,
            Trapped(session_.Services, "mnuH_Click", [this, run](bool) { (this->*run)(); }));
  };
  command(0, &frmRWS::ClickContents);
  command(1, &frmRWS::ClickAbout);
  command(2, &frmRWS::ClickCheckForUpdates);
}

void frmRWS::ClickContents() { OpenHelp(session_.Services); }

void frmRWS::ClickAbout() {
  session_.Services.Ask.MsgBox(AboutText(), Buttons::Ok, Icon::Information, kProgramTitle);
}

/** Every other command stays free while the answer is out; closing the window cancels the check. */
void frmRWS::ClickCheckForUpdates() {
  mnuH[2]->setEnabled(false);
  const std::string fetched = GetVersionText(session_.Services);
  mnuH[2]->setEnabled(true);
  if (!session_.Doc.Closing) TellVersion(session_.Services, fetched);
}

}  // namespace rws
