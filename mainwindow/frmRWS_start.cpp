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
#include "session/doors.h"

namespace rws {

namespace {

/** Deletes the log, which holds one run only. */
void DeleteLog(const Services& services) {
  const std::string log = BuildPath(services.AppPath, "Error.txt");
  if (services.Files.FileExists(log)) ResumeNext([&] { services.Files.DeleteFile(log); });
}

void MakeImagesFolder(Document& doc, const Services& services) {
  doc.ImagesPath = BuildPath(services.AppPath, "Aircraft Images");
  // Without it no image can be linked; that is no reason not to start.
  LogAndLeave(services, "LoadForm", [&] {
    if (!services.Files.FolderExists(doc.ImagesPath)) services.Files.CreateFolder(doc.ImagesPath);
  });
}

}  // namespace

/** False for a second instance. It has written and deleted nothing then and ends at once; the
    first one is told what it was to open. */
bool frmRWS::TakeInstance(const std::string& commandLine) {
  const Services& services = session_.Services;
  if (!services.System.TakeInstance || services.System.TakeInstance()) return true;
  if (services.System.TellInstance)
    ResumeNext([&] {
      const std::string path = PathAskedFor(services, commandLine);
      if (!path.empty()) services.System.TellInstance(path);
    });
  services.Ask.MsgBox("Only one instance may be running at one time.", Buttons::Ok,
                      Icon::Information, kProgramTitle);
  unloaded_ = true;
  session_.Doc.Closing = true;
  return false;
}

void frmRWS::PrepareControls() {
  const Showing showing(session_);
  flightArea->fraFlight->chkPara->setChecked(false);
  missionPanel->chkWL->setChecked(false);
  missionPanel->chkST->setChecked(false);
  mnuMissionPop[kAddSound]->setChecked(false);
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
  flightArea->mnuAC[FlightArea::kChangeAircraft]->setEnabled(LoadAC(tables, services));
  LoadMaps(doc, services);
  LoadAircraftArray(doc, tables, services);
  if (!doc.Closing) LoadNames();
}

void frmRWS::LoadForm(const std::string& commandLine) {
  // Before anything is written: a refused start must leave the first run untouched.
  if (!TakeInstance(commandLine)) return;
  HearOtherStarts();
  const Services& services = session_.Services;
  Trap([&] { FillForm(commandLine); },
       [&](const Fault& caught) {
         LogError(services, caught.Text, "LoadForm");
         // Nobody could end a program that has no window.
         if (isVisible()) return;
         services.Ask.MsgBox(kProgramTitle + std::string(" cannot start.\n") + caught.Text,
                             Buttons::Ok, Icon::Critical, kProgramTitle);
         session_.Doc.Closing = true;
       });
  // What asked for the end on the way could not wait for the event loop, which is not entered.
  if (session_.Doc.Closing) Unload();
}

void frmRWS::FillForm(const std::string& commandLine) {
  Document& doc = session_.Doc;
  Preferences& prefs = session_.Prefs;
  Services& services = session_.Services;
  const Settings& settings = services.Settings;
  DeleteLog(services);
  services.Settings.BaseKey = kSettingsBaseKey;
  WriteSetting(settings, setting::WorkDir, services.ProgramPath);
  ReadStartSettings(doc, prefs, services);
  LogStartUp(services);
  PrepareControls();
  LoadPlacement();
  doc.bLoading = true;
  setWindowTitle(FromPath(kProgramTitle + std::string(" - ") + VersionText() + "[*]"));
  prefs.bBackup = ReadFlag(settings, setting::Backup);
  doc.GamePath = ReadSetting(settings, setting::GamePath);
  LogError(services, doc.GamePath, "Start Up");
  if (!FindGamePath(doc, services)) return Unload();
  MakeImagesFolder(doc, services);
  ChkComLine(doc, prefs, Arguments, services, commandLine);
  // Only now: "-restore" takes the lock away.
  if (prefs.bLockWT) flightArea->fraFlight->LockFlightControls(false);
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
  RememberFolder();
  OfferRecovered();
  if (!Arguments.Unfound.empty())
    Notice("\"" + Arguments.Unfound + "\" was not found; \"" + doc.MissionDir +
           "\" is shown instead.");
  if (Arguments.IsBriefing && comLineMissionFound_) ClickEditBrief();
}

/** Place, size and what else of the window's looks is remembered. */
void frmRWS::LoadPlacement() {
  const Services& services = session_.Services;
  LoadWindowSize(services, *this);
  LoadFormPos(services, *this);
  LoadMaximized(services, *this);
  LoadSplitter(services, *splSides);
  tlbMain->setVisible(ReadFlag(services.Settings, setting::ToolBar));
}

void frmRWS::SavePlacement() {
  const Services& services = session_.Services;
  SaveFormPos(services, *this);
  SaveWindowSize(services, *this);
  SaveSplitter(services, *splSides);
}

}  // namespace rws
