#include "tests/robot/checks.h"

#include <algorithm>

#include "catalogues/aircraft.h"
#include "catalogues/weapons.h"
#include "mission/carry_edits.h"
#include "mission/reader.h"
#include "mission/untouched.h"
#include "mission/writer.h"
#include "platform/qt_text.h"
#include "services/clock.h"
#include "services/numbers.h"
#include "services/paths.h"
#include "session/current.h"
#include "session/frozen.h"
#include "session/recording.h"
#include "session/undo.h"

namespace rws::robot {

namespace {

/** Lines of the log that are no fault, and why; some only after a question. */
struct Accepted {
  const char* Part;
  const char* Why;
  const char* Asked = "";
};

constexpr Accepted kMayLog[] = {
    {"Subscript out of rangeLoadFlight",
     "showing a mission sets its time, whose handler loads the flight that was on show before"},
    {"Subscript out of rangeLoadPlaneList", "the row of a flight is asked for when one was removed",
     "Are you sure?"},
    {"BuildKeptFile", "the user is told, and asked what to do", "cannot be written"},
    {"LoadMissionParams", "a file that was cut short is read as far as it goes"},
    {"LoadPlane", "so is a flight without a name"},
    {"LoadWayPoint", "so does a line of a route that is too short"},
    {"LoadBornPlace", "a numbered header runs it once more, over what is no home base"},
    {"Does not exist! RWS will not run!", "the game's folder that was chosen is none"},
    {"GetMissionFiles", "a folder that cannot be read counts as empty"},
    {"WriteMissionFile", "the user is told, and the edits stay"},
};

/** What showing a mission writes into its records. */
constexpr const char* kShownKeys[] = {"  TIME ", "  StartTime ", "  Fuel ", "  weapons "};

bool MayLog(const std::string& line, const std::string& asked) {
  // A path was chosen that cannot be read or written.
  for (const char* disk : {"Cannot ", "Path not found", "File not found"})
    if (line.starts_with(disk) && !asked.empty()) return true;
  return std::any_of(std::begin(kMayLog), std::end(kMayLog), [&](const Accepted& row) {
    return line.ends_with(row.Part) && asked.find(row.Asked) != asked.npos;
  });
}

/** Lines without those of values that showing a mission writes. */
std::vector<std::string> WithoutShown(const LineArray& lines) {
  std::vector<std::string> left;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const std::string line(lines[i]);
    if (std::none_of(std::begin(kShownKeys), std::end(kShownKeys),
                     [&](const char* key) { return line.starts_with(key); }))
      left.push_back(line);
  }
  return left;
}

std::string Differ(const char* what, const std::string& shown, const std::string& held) {
  return shown == held ? ""
                       : std::string(what) + ": shown \"" + shown + "\", held \"" + held + "\"";
}

std::string Differ(const char* what, int shown, int held) {
  return Differ(what, std::to_string(shown), std::to_string(held));
}

/** The first that is wrong. */
std::string First(std::initializer_list<std::string> found) {
  for (const auto& text : found)
    if (!text.empty()) return text;
  return "";
}

}  // namespace

std::string Checks::Log() {
  const std::string asked = test::Joined(stage_.Asked);
  for (const auto& line : std::exchange(stage_.World.Log, {}))
    if (!MayLog(line, asked)) return "log: " + line;
  return "";
}

std::string Checks::Lit() {
  const Document& doc = stage_.World.Doc;
  const auto& list = *stage_.Window->lstMission;
  if (doc.Missions.empty()) return Differ("rows without a mission", list.RowCount(), 0);
  if (doc.CurMission < 0 || doc.CurMission >= std::ssize(doc.Missions)) return "no mission on show";
  if (list.RowOf(doc.CurMission) < 0) return "";
  // Cancel, which may be the answer by choice, leaves the light where the user has put it.
  for (const auto& asked : stage_.Asked)
    if (asked.find("save the changes") != asked.npos) cancelled_ = true;
  if (stage_.World.Prefs.SavePromptMode == kSaveNever && CurrentMission(stage_.World).Modified)
    cancelled_ = true;
  if (list.SelectedMission() == doc.CurMission) cancelled_ = false;
  if (cancelled_) return "";
  return Differ("mission that is lit", list.SelectedMission(), doc.CurMission);
}

std::string Checks::Commands() {
  const Session& session = stage_.World;
  const frmRWS& window = *stage_.Window;
  const Document& doc = session.Doc;
  const auto unsaved = UnsavedMissions(session);
  const auto listed = std::count_if(unsaved.begin(), unsaved.end(),
                                    [&](const auto& path) { return MissionAt(doc, path) >= 0; });
  const std::string count = listed ? std::to_string(listed) + " unsaved" : "";
  const bool current = IsUnsaved(session, static_cast<std::size_t>(doc.CurMission));
  const bool modified = !doc.Missions.empty() && CurrentMission(session).Modified;
  return First({Differ("count of unsaved", ToPath(window.lblUnsaved->text()), count),
                Differ("mark in the title", window.isWindowModified(), listed > 0),
                Differ("Save", window.mnuSave->isEnabled(), current),
                Differ("Save all", window.mnuSaveAll->isEnabled(), !unsaved.empty()),
                Differ("Undo", window.mnuUndo->isEnabled(), !UndoTitle(session).empty()),
                Differ("Redo", window.mnuRedo->isEnabled(), !RedoTitle(session).empty()),
                Differ("Update", window.cmd[frmRWS::kUpdate]->isEnabled(), modified)});
}

std::string Checks::Mission() {
  const rws::Mission& record = CurrentMission(stage_.World);
  const MissionPanel& panel = *stage_.Window->missionPanel;
  const double weather = Val(record.CloudType), clouds = Val(record.CloudHeight);
  const std::string height = ToPath(panel.txtWeather->text());
  std::string found;
  if (weather >= 0 && weather < panel.cboWeather->count())
    found = Differ("weather", panel.cboWeather->currentIndex(), CInt(weather));
  if (IsNumeric(height) && clouds >= panel.udClouds->Minimum() &&
      clouds <= panel.udClouds->Maximum())
    found += Differ("clouds", NumberText(Val(height)), NumberText(clouds));
  // A time that is none is not shown.
  std::string clock;
  ResumeNext([&] { clock = HoursToClock(record.Time); });
  const auto time = QTime::fromString(FromPath(clock), QStringLiteral("H:mm"));
  if (time.isValid())
    found += Differ("time", ToPath(panel.dtMission->time().toString()), ToPath(time.toString()));
  for (const auto& [box, held] : {std::pair(panel.chkST, record.TimeConstant),
                                  std::pair(panel.chkWL, record.WeaponsConstant)})
    if (held == 0 || held == 1)
      found += Differ("constant", box->checkState() == Qt::Checked ? 1 : 0, held);
  return found;
}

std::string Checks::Flight() {
  Session& session = stage_.World;
  const FlightArea& area = *stage_.Window->flightArea;
  const auto& flights = CurrentMission(session).Flights;
  const auto selection = area.lstPlanes->Selection();
  if (flights.empty()) return Differ("rows without a flight", area.lstPlanes->RowCount(), 0);
  // A flight that cannot be listed leaves the list empty.
  if (session.Doc.CurFlight < 0) return "";
  if (session.Doc.CurFlight >= std::ssize(flights))
    return Differ("flight: on show", session.Doc.CurFlight, static_cast<int>(flights.size()) - 1);
  // What is compared for Update, and by some handlers.
  const auto& shadows = session.Doc.MissionShadow;
  const auto shown = static_cast<std::size_t>(session.Doc.CurMission);
  if (shown >= shadows.size() || shadows[shown].Flights.size() < flights.size())
    return "flight: the shadow lacks some";
  if (selection.Flights.empty()) return "flight: none is lit";
  // A group shows what was shown before.
  if (selection.Several || selection.Flights.size() > 1) return "";
  const FlightPanel& panel = *area.fraFlight;
  const rws::Flight& flight = CurrentFlight(session);
  std::string found = Differ("flight that is lit", selection.Focused, session.Doc.CurFlight);
  const std::string fuel = ToPath(panel.txtFuel->text()), delay = ToPath(panel.txtDStart->text());
  const double planes = Val(flight.Planes);
  if (planes >= 1 && planes <= 4)
    found += Differ("planes", panel.cboPlanes->currentIndex() + 1, CInt(planes));
  if (IsNumeric(flight.Skill) && Val(flight.Skill) >= 0 && Val(flight.Skill) <= 3)
    found += Differ("skill", panel.cboSkill->currentIndex(), CInt(flight.Skill));
  if (flight.Skill == "Custom") found += Differ("skill", panel.cboSkill->currentIndex(), 4);
  if (IsNumeric(fuel)) found += Differ("fuel", NumberText(Val(fuel)), NumberText(Val(flight.Fuel)));
  if (IsNumeric(delay))
    found += Differ("delay", NumberText(Val(delay)), NumberText(Val(flight.StartTime)));
  found += Differ("parachute", panel.chkPara->isChecked(), flight.Parachute.empty());
  // The list of an aircraft that is not in the table cannot spell its loadout.
  if (!IsKnownPlane(session.Tables, flight.Class)) return found;
  if (IsFlyable(session.Tables, flight.Class))
    found += Differ("AI only", panel.chkAI->isChecked(), !flight.OnlyAI.empty());
  if (!flight.Weapons.empty())
    found += Differ("loadout",
                    GetWeaponName(session.Tables, session.Services, flight.Class,
                                  ToBytes(session.Services.Page, panel.cboWeap->currentText())),
                    flight.Weapons);
  for (std::size_t plane = 0; plane < 4 && found.empty() && plane < planes; ++plane)
    found = Plane(plane);
  return found;
}

std::string Checks::Plane(std::size_t plane) {
  const Session& session = stage_.World;
  const CodePage& page = session.Services.Page;
  const rws::Mission& mission = CurrentMission(session);
  const rws::Flight& flight = mission.Flights[static_cast<std::size_t>(session.Doc.CurFlight)];
  const PlaneSlot& slot = flight.PlaneSlots[plane];
  const PlanePanel& panel = *stage_.Window->flightArea->planes->fraPlane[plane];
  const bool player = mission.Player == flight.Name && Val(mission.PlayerNum) == double(plane);
  std::string found = Differ("markings", panel.chkMark->isChecked(), slot.NumberOn.empty());
  found += Differ("player", panel.chkPlayer->isChecked(), player);
  const std::string& skill = flight.Skill == "Custom" ? slot.Skill : flight.Skill;
  if (!skill.empty() && Val(skill) >= 0 && Val(skill) <= 3)
    found += Differ("skill of a plane", panel.cboSL->currentIndex(), CInt(Val(skill)));
  const auto paint = [&](const EditDropDown& list, const LabelButton& label,
                         const std::string& file) {
    if (list.hasFocus() || label.Color() == LabelColor::Red) return;
    const std::string shown = page.LCase(ToBytes(page, list.Value()));
    const std::string held = file.empty() ? "default" : page.LCase(GetBaseName(file));
    if (!shown.empty() || !file.empty())
      found += Differ("paint", shown.empty() ? "default" : shown, held);
  };
  paint(*panel.cboAPSkin, *panel.lbl2, slot.Skin);
  paint(*panel.cboPSkin, *panel.lbl3, slot.Pilot);
  return found;
}

std::string Checks::Look() {
  std::string found = Log();

  const Document& doc = stage_.World.Doc;
  if (!found.empty() || doc.Closing) return found;
  found = First({Lit(), Commands()});
  stage_.Asked.clear();
  if (!found.empty() || doc.Missions.empty() || !CurrentMission(stage_.World).Loaded) return found;
  return First({Mission(), Flight()});
}

/** What is not unsaved is what its file would be read as, but for what showing writes. */
std::string Checks::Memory() {
  const Session& session = stage_.World;
  const Document& doc = session.Doc;
  for (std::size_t i = 0; i < doc.Missions.size(); ++i) {
    const rws::Mission& record = doc.Missions[i];
    const std::string path = PathOf(record);
    if (!record.Loaded || session.Services.Files.IsGone(path)) continue;
    if (!IsAsRead(record, session.Services.Files.ReadFile(path))) continue;
    Document fresh = doc;
    const rws::Mission read = FreshlyRead(fresh, session.Services, record);
    const bool same = SameContent(*Freeze(record, nullptr), *Freeze(read, nullptr));
    if (same && IsUnsaved(session, i)) return "unsaved: " + path + " is as its file";
    if (same || IsUnsaved(session, i)) continue;
    fresh.Missions[i] = read;
    Document own = doc;
    LineArray a, b;
    const Services silent = Silent(session.Services);
    if (!BuildMissionFile(own, silent, a, i, {}) || !BuildMissionFile(fresh, silent, b, i, {}))
      continue;
    const auto ours = WithoutShown(a), others = WithoutShown(b);
    for (std::size_t line = 0; line < std::min(ours.size(), others.size()); ++line)
      if (ours[line] != others[line])
        return "saved: " + path + " has \"" + ours[line] + "\", its file \"" + others[line] + "\"";
  }
  return "";
}

std::string Checks::BackToStart() {
  Session& session = stage_.World;
  for (int i = 0; i < 2000 && stage_.Window->mnuUndo->isEnabled(); ++i) {
    const std::string title = UndoTitle(session);
    const std::size_t done = session.History.Done;
    stage_.Window->mnuUndo->trigger();
    // What has changed on disk since keeps a step from being undone, and the user is told.
    if (session.History.Done >= done &&
        stage_.Window->bars->Texts().join(u' ').contains("cannot be undone"))
      return "";
    if (session.History.Done >= done) return "undo: not done and not told: " + title;
    if (const auto found = Look(); !found.empty()) return "after undo of " + title + ", " + found;
  }
  return "";
}

std::string Checks::LookAtTheEnd() {
  if (stage_.World.Doc.Closing) return "";
  return First({Memory(), BackToStart(), Memory()});
}

}  // namespace rws::robot
