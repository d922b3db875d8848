#include "tests/robot/checks.h"

#include <algorithm>

#include "catalogues/aircraft.h"
#include "catalogues/weapons.h"
#include "mission/carry_edits.h"
#include "mission/line_ends.h"
#include "mission/untouched.h"
#include "mission/update.h"
#include "mission/writer.h"
#include "platform/qt_text.h"
#include "services/clock.h"
#include "services/numbers.h"
#include "services/paths.h"
#include "services/text.h"
#include "session/current.h"
#include "session/frozen.h"
#include "session/recording.h"
#include "session/saving.h"
#include "session/undo.h"

namespace rws::robot {

namespace {

/** Lines of the log that are no fault, "*" for any text; some only after a question, or when others
    write to the folder. */
struct Accepted {
  const char *Line, *Why;
  const char* Asked = "";
  bool IsOfOthers = false;
};

constexpr Accepted kMayLog[] = {
    {"Subscript out of rangeLoadFlight, which is not there",
     "showing a mission sets its time, whose handler loads the flight that was on show before"},
    {"Subscript out of rangeLoadPlaneList", "the row of a flight is asked for when one was removed",
     "Are you sure?"},
    {"Type mismatchLoadBornPlace",
     "a numbered header runs it once more, over what is no home base"},
    {"Subscript out of rangeLoadWayPoint", "a line of a route is too short"},
    {"Subscript out of rangeLoadPlane", "a file was cut short", "", true},
    {"Subscript out of rangeLoadBornPlace", "it was cut within a home base", "", true},
    {"Subscript out of rangeDisplayWeps", "it was cut ahead of a flight's aircraft", "", true},
    {"*SkinsDoes not exist! RWS will not run!", "the game's folder that was chosen is none"},
    {"Path not found: *not there\"GetMissionFiles", "a folder that is not there counts as empty"},
    {"The values of *BuildKeptFile", "the user is told, and asked what to do", "cannot be written"},
    {"File not found: *WriteMissionFile", "the user is told, and the edits stay",
     "could not be restored"},
    {"File not found: *UpdateChanges", "that ends the run", "could not be restored"},
    {"Cannot rename: *: Is a directoryfrmCheck.Export", "a folder was chosen for a file"},
    {"File not found: *frmCheck.Export", "a file was chosen in a folder that is not there"},
};

/** What showing a mission writes into its records, and the sound, whose line is never taken away.
 */
constexpr char kShownKeys[] = " time starttime fuel weapons briefsound ";
/** What stands at the end of the head when it comes back. */
constexpr char kMovingKeys[] = " player playernum timeconstant weaponsconstant ";

bool IsLike(const std::string& line, const std::string& pattern) {
  const auto star = pattern.find('*');
  if (star == pattern.npos) return line == pattern;
  return line.starts_with(pattern.substr(0, star)) && line.ends_with(pattern.substr(star + 1));
}

/** Sections in their order, their lines sorted but for routes: what comes back when it has been
   away stands elsewhere. Without what showing a mission writes. */
std::vector<std::string> Sorted(const LineArray& lines) {
  std::vector<std::string> sorted, moving;
  std::size_t first = 0;
  const auto isRoute = [&] {
    return first > 0 && first <= sorted.size() && sorted[first - 1].ends_with("_way]");
  };
  const auto endSection = [&] {
    if (!isRoute()) std::sort(sorted.begin() + static_cast<std::ptrdiff_t>(first), sorted.end());
    first = sorted.size() + 1;
  };
  for (std::size_t i = 0; i < lines.size(); ++i) {
    std::string line = FoldName(Trim(lines[i]));
    const std::string key = ' ' + line.substr(0, line.find(' ')) + ' ';
    const auto is = [&](std::string_view keys) { return keys.find(key) != keys.npos; };
    // The path of a sound outside of the game's folder has no key; Custom for a group is a 4.
    if (line.empty() || is(kShownKeys) || line.starts_with("/") || line == "skill 4") continue;
    if (line.starts_with("[")) endSection();
    // Each writing may add a word behind the target of a waypoint, or change its marker's spelling.
    while (isRoute() && std::count(line.begin(), line.end(), ' ') > 5 &&
           (line.ends_with(" 0") || line.ends_with(" &0")))
      line.resize(line.rfind(' '));
    if (line.starts_with("cloudheight ")) line = "cloudheight " + NumberText(Val(line.substr(12)));
    (is(kMovingKeys) ? moving : sorted).push_back(line);
  }
  endSection();
  std::sort(moving.begin(), moving.end());
  sorted.insert(sorted.end(), moving.begin(), moving.end());
  return sorted;
}

/** The first line in which two texts differ, but for those that showing writes. */
std::string FirstDifference(const LineArray& a, const LineArray& b) {
  const auto ours = Sorted(a), others = Sorted(b);
  const auto lineOf = [](const std::vector<std::string>& lines, std::size_t i) {
    return i < lines.size() ? lines[i] : "<end>";
  };
  for (std::size_t i = 0; i < std::max(ours.size(), others.size()); ++i)
    if (lineOf(ours, i) != lineOf(others, i))
      return " has \"" + lineOf(ours, i) + "\", not \"" + lineOf(others, i) + "\"";
  return "";
}

}  // namespace

void Checks::Find(const std::string& fault) {
  if (found_.empty()) found_ = fault;
}

void Checks::Same(const char* what, const std::string& shown, const std::string& held) {
  if (shown != held) Find(std::string(what) + ": shown \"" + shown + "\", held \"" + held + "\"");
}

void Checks::Same(const char* what, double shown, double held) {
  Same(what, NumberText(shown), NumberText(held));
}

void Checks::Log() {
  const std::string asked = test::Joined(stage_.Asked);
  for (const auto& line : std::exchange(stage_.World.Log, {}))
    if (std::none_of(std::begin(kMayLog), std::end(kMayLog), [&](const Accepted& row) {
          return IsLike(line, row.Line) && asked.find(row.Asked) != asked.npos &&
                 (!row.IsOfOthers || !stage_.IsPrivate());
        }))
      Find("log: " + line);
}

void Checks::Lit() {
  const Document& doc = stage_.World.Doc;
  const auto& list = *stage_.Window->lstMission;
  if (doc.Missions.empty()) return Same("rows without a mission", list.RowCount(), 0);
  if (doc.CurMission < 0 || doc.CurMission >= std::ssize(doc.Missions))
    return Find("no mission on show");
  if (list.RowOf(doc.CurMission) < 0) return;
  // Cancel, which may be the answer by choice, leaves the light where the user has put it.
  cancelled_ |= test::Joined(stage_.Asked).find("save the changes") != std::string::npos;
  cancelled_ |=
      stage_.World.Prefs.SavePromptMode == kSaveNever && CurrentMission(stage_.World).Modified;
  if (list.SelectedMission() == doc.CurMission) cancelled_ = false;
  if (!cancelled_) Same("mission that is lit", list.SelectedMission(), doc.CurMission);
}

void Checks::Commands() {
  const Session& session = stage_.World;
  const frmRWS& window = *stage_.Window;
  const Document& doc = session.Doc;
  const auto unsaved = UnsavedMissions(session);
  const auto listed = std::count_if(unsaved.begin(), unsaved.end(),
                                    [&](const auto& path) { return MissionAt(doc, path) >= 0; });
  const bool modified = !doc.Missions.empty() && CurrentMission(session).Modified;
  Same("count of unsaved", ToPath(window.lblUnsaved->text()),
       listed ? std::to_string(listed) + " unsaved" : "");
  Same("mark in the title", window.isWindowModified(), listed > 0);
  Same("Save", window.mnuSave->isEnabled(),
       IsUnsaved(session, static_cast<std::size_t>(doc.CurMission)));
  Same("Save all", window.mnuSaveAll->isEnabled(), !unsaved.empty());
  Same("Undo", window.mnuUndo->isEnabled(), !UndoTitle(session).empty());
  Same("Redo", window.mnuRedo->isEnabled(), !RedoTitle(session).empty());
  Same("Update", window.cmd[frmRWS::kUpdate]->isEnabled(), modified);
}

void Checks::Mission() {
  const rws::Mission& record = CurrentMission(stage_.World);
  const MissionPanel& panel = *stage_.Window->missionPanel;
  const double weather = Val(record.CloudType), clouds = Val(record.CloudHeight);
  const std::string height = ToPath(panel.txtWeather->text());
  if (weather >= 0 && weather < panel.cboWeather->count())
    Same("weather", panel.cboWeather->currentIndex(), CInt(weather));
  if (IsNumeric(height) && clouds >= panel.udClouds->Minimum() &&
      clouds <= panel.udClouds->Maximum())
    Same("clouds", Val(height), clouds);
  // A time that is none is not shown.
  std::string clock;
  ResumeNext([&] { clock = HoursToClock(record.Time); });
  const auto time = QTime::fromString(FromPath(clock), "H:mm");
  if (time.isValid())
    Same("time", ToPath(panel.dtMission->time().toString()), ToPath(time.toString()));
  for (const auto& [box, held] : {std::pair(panel.chkST, record.TimeConstant),
                                  std::pair(panel.chkWL, record.WeaponsConstant)})
    if (held == 0 || held == 1) Same("constant", box->checkState() == Qt::Checked, held);
}

void Checks::Flight() {
  Session& session = stage_.World;
  const Document& doc = session.Doc;
  const FlightArea& area = *stage_.Window->flightArea;
  const auto& flights = CurrentMission(session).Flights;
  const auto selection = area.lstPlanes->Selection();
  if (flights.empty()) return Same("rows without a flight", area.lstPlanes->RowCount(), 0);
  // A flight that cannot be listed leaves the list empty.
  if (doc.CurFlight < 0) return;
  if (doc.CurFlight >= std::ssize(flights)) return Find("flight: none is on show");
  // What is compared for Update, and by some handlers.
  const auto shown = static_cast<std::size_t>(doc.CurMission);
  if (shown >= doc.MissionShadow.size() || doc.MissionShadow[shown].Flights.size() < flights.size())
    return Find("flight: the shadow lacks some");
  if (selection.Flights.empty()) return Find("flight: none is lit");
  // A group shows what was shown before.
  if (selection.Several || selection.Flights.size() > 1) return;
  const FlightPanel& panel = *area.fraFlight;
  const rws::Flight& flight = CurrentFlight(session);
  Same("flight that is lit", selection.Focused, doc.CurFlight);
  const std::string fuel = ToPath(panel.txtFuel->text()), delay = ToPath(panel.txtDStart->text());
  const double planes = Val(flight.Planes), skill = Val(flight.Skill);
  if (planes >= 1 && planes <= 4) Same("planes", panel.cboPlanes->currentIndex() + 1, CInt(planes));
  if (IsNumeric(flight.Skill) && skill >= 0 && skill <= 3)
    Same("skill", panel.cboSkill->currentIndex(), CInt(flight.Skill));
  if (flight.Skill == "Custom") Same("skill", panel.cboSkill->currentIndex(), 4);
  if (IsNumeric(fuel)) Same("fuel", Val(fuel), Val(flight.Fuel));
  if (IsNumeric(delay)) Same("delay", Val(delay), Val(flight.StartTime));
  Same("parachute", panel.chkPara->isChecked(), flight.Parachute.empty());
  // The list of an aircraft that is not in the table cannot spell its loadout.
  if (!IsKnownPlane(session.Tables, flight.Class)) return;
  if (IsFlyable(session.Tables, flight.Class))
    Same("AI only", panel.chkAI->isChecked(), !flight.OnlyAI.empty());
  if (!flight.Weapons.empty())
    Same("loadout",
         GetWeaponName(session.Tables, session.Services, flight.Class,
                       ToBytes(session.Services.Page, panel.cboWeap->currentText())),
         flight.Weapons);
  for (std::size_t plane = 0; plane < 4 && plane < planes; ++plane) Plane(plane);
}

void Checks::Plane(std::size_t plane) {
  const Session& session = stage_.World;
  const CodePage& page = session.Services.Page;
  const rws::Mission& mission = CurrentMission(session);
  const rws::Flight& flight = mission.Flights[static_cast<std::size_t>(session.Doc.CurFlight)];
  const PlaneSlot& slot = flight.PlaneSlots[plane];
  const PlanePanel& panel = *stage_.Window->flightArea->planes->fraPlane[plane];
  Same("markings", panel.chkMark->isChecked(), slot.NumberOn.empty());
  Same("player", panel.chkPlayer->isChecked(),
       mission.Player == flight.Name && Val(mission.PlayerNum) == double(plane));
  const std::string& skill = flight.Skill == "Custom" ? slot.Skill : flight.Skill;
  if (!skill.empty() && Val(skill) >= 0 && Val(skill) <= 3)
    Same("skill of a plane", panel.cboSL->currentIndex(), CInt(Val(skill)));
  const auto paint = [&](const EditDropDown& list, const LabelButton& label,
                         const std::string& file) {
    if (list.hasFocus() || label.Color() == LabelColor::Red) return;
    const std::string shown = page.LCase(ToBytes(page, list.Value()));
    if (shown.empty() && file.empty()) return;
    Same("paint", shown.empty() ? "default" : shown,
         file.empty() ? "default" : page.LCase(GetBaseName(file)));
  };
  paint(*panel.cboAPSkin, *panel.lbl2, slot.Skin);
  paint(*panel.cboPSkin, *panel.lbl3, slot.Pilot);
}

/** Lit as the comparison tells; otherwise only from where an edit has left it as it was, showing
   has written, or a step or an Update has set it. */
void Checks::Light() {
  const Session& session = stage_.World;
  const rws::Mission& record = CurrentMission(session);
  const auto steps = std::pair(session.History.Done, session.History.Readings);
  const bool isTold = std::exchange(stage_.Unlit, false) || record.NotWritten ||
                      std::exchange(steps_, steps) != steps;
  if (record.Modified ==
      MissionChanged(session.Doc, static_cast<std::size_t>(session.Doc.CurMission)))
    unlit_.erase(PathOf(record));
  else if (isTold)
    unlit_.insert(PathOf(record));
  else if (!unlit_.contains(PathOf(record)))
    Find(record.Modified ? "Update: lit, but nothing is changed" : "Update: dark over a change");
}

std::string Checks::Look() {
  const Session& session = stage_.World;
  const Document& doc = session.Doc;
  Log();
  // Undone, the edits that the dialog dropped are back, and theirs are no steps any more.
  if (RedoTitle(session) == "Edits dropped by closing the home bases")
    for (const auto& mission : session.History.Steps[session.History.Done].Missions)
      stage_.Start.erase(mission.Path);
  if (!found_.empty() || doc.Closing) return found_;
  Lit();
  Commands();
  stage_.Asked.clear();
  if (!found_.empty() || doc.Missions.empty() || !CurrentMission(session).Loaded) return found_;
  Mission();
  Flight();
  Light();
  Memory(static_cast<std::size_t>(doc.CurMission));
  return found_;
}

/** What is not unsaved is what its file would be read as, but for what showing writes. */
void Checks::Memory(std::size_t mission) {
  const Session& session = stage_.World;
  const Services silent = Silent(session.Services);
  const rws::Mission& record = session.Doc.Missions[mission];
  const std::string path = PathOf(record);
  if (!record.Loaded || silent.Files.IsGone(path)) return;
  if (!IsAsRead(record, silent.Files.ReadFile(path))) return;
  Document own = session.Doc, fresh = session.Doc;
  fresh.Missions[mission] = FreshlyRead(own, silent, record);
  const bool isUnsaved = IsUnsaved(session, mission);
  if (SameContent(*Freeze(record, nullptr), *Freeze(fresh.Missions[mission], nullptr)))
    return isUnsaved ? Find("unsaved: " + path + " is as its file") : void();
  LineArray ours, others;
  if (isUnsaved || !BuildMissionFile(own, silent, ours, mission, {}) ||
      !BuildMissionFile(fresh, silent, others, mission, {}))
    return;
  if (const auto differs = FirstDifference(ours, others); !differs.empty())
    Find("saved: " + path + differs);
}

void Checks::Memory() {
  for (std::size_t i = 0; i < stage_.World.Doc.Missions.size(); ++i) Memory(i);
}

/** Takes back all steps, saves what that has changed, and compares the files with those of the
    start. */
void Checks::BackToStart() {
  Session& session = stage_.World;
  while (found_.empty() && stage_.Window->mnuUndo->isEnabled()) {
    const std::string title = UndoTitle(session);
    const std::size_t done = session.History.Done;
    stage_.Window->mnuUndo->trigger();
    // What has changed on disk since keeps a step from being undone, and the user is told.
    const auto bars = stage_.Window->bars->Texts().join(u' ');
    if (bars.contains("cannot be undone") || bars.contains("is undone, but for")) return;
    if (session.History.Done >= done) Find("undo: not done and not told: " + title);
    Look();
  }
  Memory();
  session.AskLines = nullptr;
  for (const auto& path : UnsavedMissions(session)) {
    if (!stage_.Start.contains(path) || SaveOne(session, path, {})) continue;
    // The user was asked, and has said no.
    if (stage_.Asked.empty()) Find("undo: " + path + " cannot be saved");
    stage_.Start.erase(path);
  }
  for (const auto& [path, bytes] : stage_.Start) File(path, bytes);
}

/** A file is what it was; or what the writer makes of that, but for what showing writes. */
void Checks::File(const std::string& path, const std::string& bytes) {
  const Services silent = Silent(stage_.World.Services);
  if (silent.Files.IsGone(path)) return Find("undo: " + path + " is not there");
  const auto now = LinesOfFile(silent.Files.ReadFile(path));
  // Written without flights and home bases it has got its head twice.
  const auto sorted = Sorted(now);
  if (std::count(sorted.begin(), sorted.end(), "[main]") > 1) return;
  LineArray then = LinesOfFile(bytes);
  Document doc = DocumentOf(stage_.World.Doc, {});
  NameMission(doc.Missions[0], path);
  std::string found;
  // As it was, as it is written, and as that is read and written again.
  for (int times = 0; times < 3; ++times) {
    const std::string differs = FirstDifference(now, then);
    if (differs.empty()) return;
    found += differs;
    doc.Missions[0].AsRead = std::exchange(then, {});
    doc.Missions[0] = FreshlyRead(doc, silent, doc.Missions[0]);
    BuildMissionFile(doc, silent, then, 0, {});
  }
  Find("undo: " + path + found);
}

std::string Checks::LookAtTheEnd() {
  if (stage_.World.Doc.Closing) return "";
  Memory();
  if (found_.empty()) BackToStart();
  return found_;
}

}  // namespace rws::robot
