#include "catalogues/paint_schemes.h"
#include "mainwindow/frmRWS.h"
#include "mainwindow/loading.h"
#include "mainwindow/trapped.h"
#include "services/association.h"
#include "services/controls/list_colors.h"
#include "services/forms/frmPrefs.h"
#include "services/setting_values.h"

namespace rws {

namespace {

void StoreFlag(const Services& services, const SettingValue& value, bool on) {
  WriteSetting(services.Settings, value, on ? "True" : "False");
}

/** Associates mission files or no longer; what counts afterwards is what the desktop took. */
void ChangeAssociation(RunState& run, const Services& services, bool on) {
  if (on == run.bAssociate) return;
  on ? AssociateOn(services) : AssociateOff(services);
  run.bAssociate = IsAssociated(services);
}

}  // namespace

void frmRWS::ConnectPrefs() {
  connect(mnuTools[5], &QAction::triggered, this,
          Trapped(context_.Services, "SetPrefs", [this](bool) { SetPrefs(); }));
}

void frmRWS::SetPrefs() {
  LogAndLeave(context_.Services, "SetPrefs", [&] {
    const Document& doc = context_.Doc;
    const RunState& run = context_.Run;
    frmPrefs form(context_, this);
    form.Backup = doc.bBackup;
    form.Associate = run.bAssociate;
    form.LockWT = run.bLockWT;
    form.SndPlayer = run.bSndPlayer;
    form.SavePromptMode = doc.SavePromptMode;
    form.GamePath = doc.GamePath;
    form.ForeColor = run.ForeColor;
    form.BackColor = run.BackColor;
    form.LoadForm();
    ShowDialog(form);
    if (!form.Applied) return;
    // All is reread at the end: edits are settled first, as the user has it until now.
    if (SettleEdits()) ApplyPrefs(form);
  });
}

void frmRWS::ApplyPrefs(const frmPrefs& form) {
  Document& doc = context_.Doc;
  RunState& run = context_.Run;
  const Services& services = context_.Services;
  if (form.ForeColor != run.ForeColor || form.BackColor != run.BackColor) {
    run.ForeColor = form.ForeColor;
    run.BackColor = form.BackColor;
    ApplyListColors(*this, run.ForeColor, run.BackColor);
  }
  ChangeAssociation(run, services, form.Associate);
  if (form.LockWT != run.bLockWT) {
    run.bLockWT = form.LockWT;
    StoreFlag(services, setting::LockWT, run.bLockWT);
    flightArea->fraFlight->LockFlightControls(!run.bLockWT);
  }
  if (form.SndPlayer != run.bSndPlayer) {
    run.bSndPlayer = form.SndPlayer;
    StoreFlag(services, setting::SndPlayer, run.bSndPlayer);
  }
  doc.SavePromptMode = form.SavePromptMode;
  WriteSetting(services.Settings, setting::SaveWarn, std::to_string(doc.SavePromptMode));
  doc.bBackup = form.Backup;
  StoreFlag(services, setting::Backup, doc.bBackup);
  doc.GamePath = form.GamePath;
  WriteSetting(services.Settings, setting::GamePath, doc.GamePath);
  ReloadPaintSchemes();
  if (!doc.Closing) Start();
}

/** All that lies below the game directory, and the lists that show it. */
void frmRWS::ReloadPaintSchemes() {
  LoadPilotSkins(context_.Doc, context_.Tables, context_.Services);
  LoadNoseArt(context_.Doc, context_.Tables, context_.Services);
  LoadPlaneSkins(context_.Doc, context_.Tables, context_.Services);
  if (context_.Doc.Closing) return;
  const Loading filling(context_.Doc);
  flightArea->FillFixedLists();
}

}  // namespace rws
