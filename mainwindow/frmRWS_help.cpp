#include <QShortcut>

#include "mainwindow/frmRWS.h"
#include "services/help_file.h"
#include "services/trapped.h"
#include "services/update_check.h"
#include "services/version.h"

namespace rws {

void frmRWS::ConnectHelp() {
  const auto command = [this](HelpEntry entry, void (frmRWS::*run)()) {
    connect(mnuH[entry], &QAction::triggered, this,
            Trapped(session_.Services, "mnuH_Click", [this, run](bool) { (this->*run)(); }));
  };
  connect(
      new QShortcut(Qt::Key_F1, this), &QShortcut::activated, this,
      Trapped(session_.Services, "mnuH_Click", [this] { OpenHelp(session_.Services, "frmRWS"); }));
  command(kContents, &frmRWS::ClickContents);
  command(kAbout, &frmRWS::ClickAbout);
  command(kCheckForUpdates, &frmRWS::ClickCheckForUpdates);
}

void frmRWS::ClickContents() { OpenHelp(session_.Services); }

void frmRWS::ClickAbout() {
  session_.Services.Ask.MsgBox(AboutText(), Buttons::Ok, Icon::Information, kProgramTitle);
}

/** Every other command stays free while the answer is out; closing the window cancels the check. */
void frmRWS::ClickCheckForUpdates() {
  mnuH[kCheckForUpdates]->setEnabled(false);
  const std::string fetched = GetVersionText(session_.Services);
  mnuH[kCheckForUpdates]->setEnabled(true);
  if (!session_.Doc.Closing) TellVersion(session_.Services, fetched);
}

}  // namespace rws
