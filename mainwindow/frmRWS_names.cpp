#include <QApplication>
#include <optional>

#include "catalogues/aircraft.h"
#include "catalogues/countries.h"
#include "catalogues/maps.h"
#include "catalogues/squadrons.h"
#include "catalogues/table.h"
#include "controls/work_progress.h"
#include "mainwindow/frmRWS.h"
#include "mission/line_values.h"
#include "platform/qt_text.h"
#include "services/error_log.h"
#include "services/notice.h"
#include "services/trapped.h"
#include "session/reading.h"
#include "tools/frmCheck.h"
#include "tools/frmLists.h"

namespace rws {

namespace {

/** Maps are named as a mission is read. */
void NameMaps(const Document& doc, const Services& services, std::vector<Mission>& missions) {
  for (auto& mission : missions)
    if (mission.Loaded) mission.MapName = GetMapName(doc, services, mission.MapPath);
}

/** The tables before their lists; false where the one is missing without which the program would
    have to end. */
bool ReadTables(Session& session, QAction& changesAircraft) {
  const Services& services = session.Services;
  bool isThere = false;
  const bool wasRead = NoticeAndLeave(
      services, [&] { isThere = ReadTable(services, "RWS_Weapons.txt").has_value(); });
  if (wasRead && !isThere && services.Ask.Notice)
    services.Ask.Notice("\"RWS_Weapons.txt\" is missing; the names stay as they are.");
  if (!isThere) return false;
  session.Tables.Squadrons.clear();
  LoadRegiments(session.Tables, services);
  changesAircraft.setEnabled(LoadAC(session.Tables, services));
  LoadMaps(session.Doc, services);
  LoadAircraftArray(session.Doc, session.Tables, services);
  return !session.Doc.Closing;
}

}  // namespace

GameNames frmRWS::FindNames(ReadLists how) {
  const Services& services = session_.Services;
  GameNames found;
  // Made when there is work: lists that were kept are read at once.
  std::optional<WorkProgress> progress;
  const auto told = [&](const WorkStep& step) {
    QWidget* over = QApplication::activeModalWidget();
    if (!progress) progress.emplace(over ? *over : *this, staBar, Popups.ToolStep);
    return progress->Told(step);
  };
  LogAndLeave(services, "FindNames", [&] {
    found = FindGameNames(services, session_.Doc.GamePath, ReadNameChoices(services.Settings),
                          KeptListsFile(services), told, how);
  });
  if (found.IsCancelled) staBar->clearMessage();
  return found;
}

void frmRWS::LoadNames() {
  Names = FindNames(ReadLists::IfChanged);
  ApplyGameNames(session_.Doc, session_.Tables, session_.Services, Names,
                 ReadNameChoices(session_.Services.Settings));
  TellNames();
}

/** All tables anew, with the lists in place of them. Given up, the names stay as they are. */
bool frmRWS::ReloadNames(ReadLists how) {
  Document& doc = session_.Doc;
  const Services& services = session_.Services;
  GameNames found = FindNames(how);
  if (found.IsCancelled && Names.Kept) {
    Notice("Reading the lists of the game was stopped; the names stay as they are.");
    return false;
  }
  if (!ReadTables(session_, *flightArea->mnuAC[FlightArea::kChangeAircraft])) return false;
  Names = std::move(found);
  ApplyGameNames(doc, session_.Tables, services, Names, ReadNameChoices(services.Settings));
  NameMaps(doc, services, doc.Missions);
  NameMaps(doc, services, doc.MissionShadow);
  if (check_) check_->ForgetTables();
  // Missions are found by their names: they are read again.
  Library->Follow({});
  TellNames();
  return true;
}

void frmRWS::ReloadChangedNames() {
  const Services& services = session_.Services;
  bool areCurrent = true;
  LogAndLeave(services, "ReloadChangedNames", [&] {
    areCurrent =
        AreCurrent(services, session_.Doc.GamePath, ReadNameChoices(services.Settings), Names);
  });
  if (!areCurrent) ReloadNames(ReadLists::IfChanged);
}

/** The mission on show, with the names of now; edits stay. */
void frmRWS::ShowNamesAgain() {
  const Document& doc = session_.Doc;
  if (doc.Closing || doc.Missions.empty()) return;
  FollowMissions();
  ShowMission(Baseline::Keep, doc.CurFlight);
}

/** Why the game's lists are not in use, where the user may not expect it. */
void frmRWS::TellNames() {
  QString text;
  if (Names.MustChoose)
    text = tr("The game has %1 packs of mods and does not tell which is on. Choose the one whose "
              "names are to be shown, here or in the preferences, Names and Lists.")
               .arg(Names.Packs.size());
  else if (Names.IsCancelled)
    text =
        tr("Reading the lists of the game was stopped: names come from the built-in tables. "
           "Preferences, Names and Lists, reads them again.");
  else if (!Names.Kept && !Names.Troubles.empty())
    text = tr("The lists of the game are not in use: %1 See Preferences, Names and Lists.")
               .arg(FromPath(Names.Troubles.front()));
  if (text.isEmpty()) return bars->Hide(kNamesBar);
  bars->Show(
      kNamesBar,
      {BarKind::Warning,
       text,
       {{tr("Names and Lists..."),
         [this] { LogAndLeave(session_.Services, "ClickNames", [&] { ClickNames(*this); }); }}},
       {}});
}

void frmRWS::ClickNames(QWidget& parent) {
  frmLists form(session_, &parent);
  form.Names = Names;
  form.Choices = ReadNameChoices(session_.Services.Settings);
  form.Use = [this](const NameChoices& choices, ReadLists how) { return UseNames(choices, how); };
  form.LoadForm();
  Popups.ShowDialog(form);
}

/** Stores what the user has chosen and shows the names of it. */
GameNames frmRWS::UseNames(const NameChoices& choices, ReadLists how) {
  WriteNameChoices(session_.Services.Settings, choices);
  if (ReloadNames(how)) ShowNamesAgain();
  return Names;
}

}  // namespace rws
