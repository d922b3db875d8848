#include "catalogues/paint_schemes.h"
#include "controls/list_colors.h"
#include "mainwindow/frmRWS.h"
#include "services/association.h"
#include "services/forms/frmPrefs.h"
#include "services/setting_values.h"
#include "services/trapped.h"
#include "session/file_store.h"
#include "session/loading.h"

namespace rws {

namespace {

void StoreFlag(const Services& services, const SettingValue& value, bool on) {
  WriteSetting(services.Settings, value, on ? "True" : "False");
}

/** Associates mission files or no longer; what counts afterwards is what the desktop took. */
void ChangeAssociation(Preferences& prefs, const Services& services, bool on) {
  if (on == prefs.bAssociate) return;
  on ? AssociateOn(services) : AssociateOff(services);
  prefs.bAssociate = IsAssociated(services);
}

}  // namespace

void frmRWS::ConnectPrefs() {
  connect(mnuTools[kPreferences], &QAction::triggered, this,
          Trapped(session_.Services, "SetPrefs", [this](bool) { SetPrefs(); }));
}

void frmRWS::SetPrefs() {
  LogAndLeave(session_.Services, "SetPrefs", [&] {
    const Document& doc = session_.Doc;
    const Preferences& prefs = session_.Prefs;
    frmPrefs form(session_, this);
    form.Backup = prefs.bBackup;
    form.BackupsKept = prefs.BackupsKept;
    form.StoreDays = prefs.StoreDays;
    form.StoreMegabytes = prefs.StoreMegabytes;
    form.Associate = prefs.bAssociate;
    form.LockWT = prefs.bLockWT;
    form.SndPlayer = prefs.bSndPlayer;
    form.SavePromptMode = prefs.SavePromptMode;
    form.LaterVersions = static_cast<int>(doc.Untouched);
    // A wrong folder chosen in the form last time is in use until the setting is read again: now.
    form.GamePath = ReadSetting(session_.Services.Settings, setting::GamePath);
    if (form.GamePath.empty()) form.GamePath = doc.GamePath;
    form.ForeColor = prefs.ForeColor;
    form.BackColor = prefs.BackColor;
    form.DesktopColors = prefs.bDesktopColors;
    const auto namesText = [this] {
      return NamesText(Names, ReadNameChoices(session_.Services.Settings));
    };
    form.NamesText = namesText;
    form.OpenNames = [&, this] { ClickNames(form); };
    form.LoadForm();
    Popups.ShowDialog(form);
    if (!form.Applied) return;
    // All is reread at the end: edits are settled first, as the user has it until now.
    if (SettleEdits()) ApplyPrefs(form);
  });
}

void frmRWS::ApplyPrefs(const frmPrefs& form) {
  Document& doc = session_.Doc;
  Preferences& prefs = session_.Prefs;
  const Services& services = session_.Services;
  if (form.ForeColor != prefs.ForeColor || form.BackColor != prefs.BackColor ||
      form.DesktopColors != prefs.bDesktopColors) {
    prefs.ForeColor = form.ForeColor;
    prefs.BackColor = form.BackColor;
    prefs.bDesktopColors = form.DesktopColors;
    StoreFlag(services, setting::DesktopColors, prefs.bDesktopColors);
    ApplyListColors(*this, prefs);
  }
  ChangeAssociation(prefs, services, form.Associate);
  if (form.LockWT != prefs.bLockWT) {
    prefs.bLockWT = form.LockWT;
    StoreFlag(services, setting::LockWT, prefs.bLockWT);
    flightArea->fraFlight->LockFlightControls(!prefs.bLockWT);
  }
  if (form.SndPlayer != prefs.bSndPlayer) {
    prefs.bSndPlayer = form.SndPlayer;
    StoreFlag(services, setting::SndPlayer, prefs.bSndPlayer);
  }
  prefs.SavePromptMode = form.SavePromptMode;
  WriteSetting(services.Settings, setting::SaveWarn, std::to_string(prefs.SavePromptMode));
  StoreUntouched(static_cast<UntouchedLines>(form.LaterVersions));
  prefs.bBackup = form.Backup;
  StoreFlag(services, setting::Backup, prefs.bBackup);
  prefs.BackupsKept = form.BackupsKept;
  WriteSetting(services.Settings, setting::BackupsKept, std::to_string(prefs.BackupsKept));
  prefs.StoreDays = form.StoreDays;
  WriteSetting(services.Settings, setting::StoreDays, std::to_string(prefs.StoreDays));
  prefs.StoreMegabytes = form.StoreMegabytes;
  WriteSetting(services.Settings, setting::StoreMegabytes, std::to_string(prefs.StoreMegabytes));
  LimitStore(services, LimitsOf(prefs));
  doc.GamePath = form.GamePath;
  WriteSetting(services.Settings, setting::GamePath, doc.GamePath);
  ReloadPaintSchemes();
  if (!doc.Closing) ReloadChangedNames();
  if (!doc.Closing) Start();
}

/** All that lies below the game directory, and the lists that show it. */
void frmRWS::ReloadPaintSchemes() {
  LoadPilotSkins(session_.Doc, session_.Tables, session_.Services);
  LoadNoseArt(session_.Doc, session_.Tables, session_.Services);
  LoadPlaneSkins(session_.Doc, session_.Tables, session_.Services);
  if (session_.Doc.Closing) return;
  const Loading filling(session_.Doc);
  flightArea->FillFixedLists();
}

}  // namespace rws
