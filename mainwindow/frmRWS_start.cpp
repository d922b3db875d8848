#include "catalogues/aircraft.h"
#include "catalogues/countries.h"
#include "catalogues/maps.h"
#include "catalogues/paint_schemes.h"
#include "catalogues/squadrons.h"
#include "controls/list_colors.h"
#include "mainwindow/frmRWS.h"
#include "platform/form_placement.h"
#include "platform/qt_text.h"
#include "services/error_log.h"
#include "services/paths.h"
#include "services/setting_values.h"
#include "services/version.h"

namespace rws {

namespace {

/** Deletes the log, which holds one run only. */
void DeleteLog(const Services& services) {
  const std::string log = BuildPath(services.AppPath, "Error.txt");
  if (services.Files.FileExists(log)) ResumeNext([&] { services.Files.DeleteFile(log); });
}

}  // namespace

/** False for a second instance. It has written and deleted nothing then and ends at once. */
bool frmRWS::TakeInstance() {
  const Services& services = session_.Services;
  if (!services.System.TakeInstance || services.System.TakeInstance()) return true;
  services.Ask.MsgBox("Only one instance may be running at one time.", Buttons::Ok,
                      Icon::Information, kProgramTitle);
  unloaded_ = true;
  session_.Doc.Closing = true;
  return false;
}

void frmRWS::PrepareControls() {
  flightArea->fraFlight->chkPara->setChecked(false);
  missionPanel->chkWL->setChecked(false);
  missionPanel->chkST->setChecked(false);
  mnuMissionPop[3]->setChecked(false);
  missionPanel->imgSnd->setVisible(true);
}

void frmRWS::LoadTables() {
  Document& doc = session_.Doc;
  Catalogues& tables = session_.Tables;
  const Services& services = session_.Services;
  LoadPilotSkins(doc, tables, services);
  LoadNoseArt(doc, tables, services);
  LoadPlaneSkins(doc, tables, services);
  if (doc.Closing) return;
  LoadRegiments(tables, services);
  InitForm();
  flightArea->mnuAC[0]->setEnabled(LoadAC(tables, services));
  LoadMaps(doc, services);
  LoadAircraftArray(doc, tables, services);
}

void frmRWS::LoadForm(const std::string& commandLine) {
  // Before anything is written: a refused start must leave the first run untouched.
  if (!TakeInstance()) return;
  Document& doc = session_.Doc;
  Preferences& prefs = session_.Prefs;
  Services& services = session_.Services;
  const Settings& settings = services.Settings;
  LogAndLeave(services, "LoadForm", [&] {
    DeleteLog(services);
    services.Settings.BaseKey = kSettingsBaseKey;
    WriteSetting(settings, setting::WorkDir, services.ProgramPath);
    ReadStartSettings(prefs, services);
    LogStartUp(services);
    PrepareControls();
    if (prefs.bLockWT) flightArea->fraFlight->LockFlightControls(false);
    LoadFormPos(services, *this);
    doc.bLoading = true;
    setWindowTitle(FromPath(kProgramTitle + std::string(" - ") + VersionText()));
    prefs.bBackup = ReadFlag(settings, setting::Backup);
    doc.GamePath = ReadSetting(settings, setting::GamePath);
    LogError(services, doc.GamePath, "Start Up");
    if (!FindGamePath(doc, services)) return Unload();
    doc.ImagesPath = BuildPath(services.AppPath, "Aircraft Images");
    if (!services.Files.FolderExists(doc.ImagesPath)) services.Files.CreateFolder(doc.ImagesPath);
    ChkComLine(doc, prefs, Arguments, services, commandLine);
    doc.Missions.assign(1, Mission());
    doc.MissionDir = Arguments.ComLinePath.empty()
                         ? ReadSetting(settings, setting::LastDirPath, doc.GamePath)
                         : Arguments.ComLinePath;
    ApplyListColors(*this, prefs);
    // The window is there while long scans run; the pump keeps it alive and commands out.
    show();
    LoadTables();
    if (doc.Closing) return;
    doc.CurMission = 0;
    doc.CurFlight = 0;
    Start();
    if (Arguments.ComLineProperties && comLineMissionFound_) ClickEditBrief();
  });
}

}  // namespace rws
