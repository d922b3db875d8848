#include "tests/robot/checks.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>

#include "catalogues/aircraft.h"
#include "catalogues/weapons.h"
#include "mission/carry_edits.h"
#include "mission/line_ends.h"
#include "mission/reader.h"
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
#include "tests/robot/hand.h"

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
    {"*SkinsDoes not exist! RWS will not run!", "the game's folder that was chosen is none"},
    {"Path not found: *not there\"GetMissionFiles", "a folder that is not there counts as empty"},
    {"The values of *BuildKeptFile", "the user is told, and asked what to do", "cannot be written"},
    {"File not found: *WriteMissionFile", "the user is told, and the edits stay",
     "could not be restored"},
    {"File not found: *UpdateChanges", "that ends the run", "could not be restored"},
    {"Cannot rename: *: Is a directoryfrmCheck.Export", "a folder was chosen for a file"},
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

std::string Differ(const char* what, const std::string& shown, const std::string& held) {
  return shown == held ? ""
                       : std::string(what) + ": shown \"" + shown + "\", held \"" + held + "\"";
}

std::string Differ(const char* what, int shown, int held) {
  return Differ(what, std::to_string(shown), std::to_string(held));
}

/** The first line in which two texts differ, but for those that showing writes. */
std::string Differ(const char* what, const LineArray& a, const LineArray& b) {
  const auto ours = Sorted(a), others = Sorted(b);
  for (std::size_t i = 0; i < std::max(ours.size(), others.size()); ++i) {
    const std::string line = i < ours.size() ? ours[i] : "<end>";
    const std::string other = i < others.size() ? others[i] : "<end>";
    if (line != other) return std::string(what) + " has \"" + line + "\", not \"" + other + "\"";
  }
  return "";
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
  if (const char* survey = std::getenv("ROBOT_SURVEY")) {
    std::ofstream out(survey, std::ios::app);
    for (const auto& line : stage_.World.Log)
      out << line << "  <<" << asked << ">>  " << LastDeed() << "\n";
  }
  for (const auto& line : std::exchange(stage_.World.Log, {}))
    if (std::none_of(std::begin(kMayLog), std::end(kMayLog), [&](const Accepted& row) {
          return IsLike(line, row.Line) && asked.find(row.Asked) != asked.npos &&
                 (!row.IsOfOthers || !stage_.IsPrivate());
        }))
      return "log: " + line;
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

std::string Checks::Light() {
  const Session& session = stage_.World;
  const auto current = static_cast<std::size_t>(session.Doc.CurMission);
  const rws::Mission& record = CurrentMission(session);
  const History& history = session.History;
  const auto steps = std::pair(history.Done, history.Readings);
  const bool isTold = std::exchange(stage_.Unlit, false) || record.NotWritten ||
                      std::exchange(steps_, steps) != steps;
  if (record.Modified == MissionChanged(session.Doc, current))
    unlit_.erase(PathOf(record));
  else if (isTold)
    unlit_.insert(PathOf(record));
  else if (!unlit_.contains(PathOf(record)))
    return record.Modified ? "Update: lit, but nothing is changed" : "Update: dark over a change";
  return "";
}

std::string Checks::Look() {
  std::string found = Log();
  const Document& doc = stage_.World.Doc;
  const History& history = stage_.World.History;
  // Undone, the edits that the dialog dropped are back, and theirs are no steps any more.
  if (RedoTitle(stage_.World) == "Edits dropped by closing the home bases")
    for (const auto& mission : history.Steps[history.Done].Missions)
      stage_.Start.erase(mission.Path);
  if (!found.empty() || doc.Closing) return found;
  found = First({Lit(), Commands()});
  stage_.Asked.clear();
  if (!found.empty() || doc.Missions.empty() || !CurrentMission(stage_.World).Loaded) return found;
  return First({Mission(), Flight(), Light(), Memory(static_cast<std::size_t>(doc.CurMission))});
}

/** What is not unsaved is what its file would be read as, but for what showing writes. */
std::string Checks::Memory(std::size_t mission) {
  const Session& session = stage_.World;
  const Document& doc = session.Doc;
  const rws::Mission& record = doc.Missions[mission];
  const std::string path = PathOf(record);
  if (!record.Loaded || session.Services.Files.IsGone(path)) return "";
  if (!IsAsRead(record, session.Services.Files.ReadFile(path))) return "";
  Document fresh = doc;
  const Services silent = Silent(session.Services);
  const rws::Mission read = FreshlyRead(fresh, silent, record);
  const bool same = SameContent(*Freeze(record, nullptr), *Freeze(read, nullptr));
  const bool isUnsaved = IsUnsaved(session, mission);
  if (same && isUnsaved) return "unsaved: " + path + " is as its file";
  if (same || isUnsaved) return "";
  fresh.Missions[mission] = read;
  Document own = doc;
  LineArray a, b;
  if (!BuildMissionFile(own, silent, a, mission, {}) ||
      !BuildMissionFile(fresh, silent, b, mission, {}))
    return "";
  return Differ(("saved: " + path).c_str(), a, b);
}

std::string Checks::Memory() {
  std::string found;
  const auto& missions = stage_.World.Doc.Missions;
  for (std::size_t i = 0; i < missions.size() && found.empty(); ++i) found = Memory(i);
  return found;
}

/** Takes back all steps, saves what that has changed, and compares the files with those of the
    start. */
std::string Checks::BackToStart() {
  Session& session = stage_.World;
  for (int i = 0; i < 2000 && stage_.Window->mnuUndo->isEnabled(); ++i) {
    const std::string title = UndoTitle(session);
    const std::size_t done = session.History.Done;
    stage_.Window->mnuUndo->trigger();
    if (std::getenv("ROBOT_TELL")) {
      fprintf(stderr, "undo %s: %zu -> %zu; %s; unsaved", title.c_str(), done, session.History.Done,
              stage_.Window->bars->Texts().join(u' ').toStdString().c_str());
      for (auto& u : UnsavedMissions(session)) fprintf(stderr, " %s", u.c_str());
      fprintf(stderr, "\n");
    }
    // What has changed on disk since keeps a step from being undone, and the user is told.
    const auto bars = stage_.Window->bars->Texts().join(u' ');
    if (session.History.Done >= done && bars.contains("cannot be undone")) return "";
    if (bars.contains("is undone, but for")) return "";
    if (session.History.Done >= done) return "undo: not done and not told: " + title;
    if (const auto found = Look(); !found.empty()) return "after undo of " + title + ", " + found;
  }
  if (const auto found = Memory(); !found.empty()) return "after undo of all, " + found;
  session.AskLines = nullptr;
  if (std::getenv("ROBOT_TELL"))
    for (const auto& path : UnsavedMissions(session)) {
      auto& m = session.Doc.Missions[(size_t)MissionAt(session.Doc, path)];
      fprintf(stderr, "save %s cloud %s loaded %d keeps %d saved %s\n", path.c_str(),
              m.CloudHeight.c_str(), m.Loaded, m.KeepsLines,
              session.History.Known[path].Saved->Head.CloudHeight.c_str());
    }
  for (const auto& path : UnsavedMissions(session))
    if (stage_.Start.contains(path) && !SaveOne(session, path, {}))
      return "undo: " + path + " cannot be saved";
  for (const auto& [path, bytes] : stage_.Start)
    if (const auto found = File(path, bytes); !found.empty()) return found;
  return "";
}

/** A file is what it was; or what the writer makes of that, but for what showing writes. */
std::string Checks::File(const std::string& path, const std::string& bytes) {
  const Services& services = stage_.World.Services;
  if (services.Files.IsGone(path)) return "undo: " + path + " is not there";
  const std::string now = services.Files.ReadFile(path);
  if (now == bytes) return "";
  const auto lines = LinesOfFile(now);
  // Written without flights and home bases it has got its head twice.
  const auto sorted = Sorted(lines);
  if (std::count(sorted.begin(), sorted.end(), "[main]") > 1) return "";
  std::string found = Differ(("undo: " + path).c_str(), lines, LinesOfFile(bytes));
  Document doc = DocumentOf(stage_.World.Doc, {});
  NameMission(doc.Missions[0], path);
  LineArray anew = LinesOfFile(bytes);
  // What was written is read again.
  for (int i = 0; i < 2 && !found.empty(); ++i) {
    doc.Missions[0].AsRead = std::exchange(anew, {});
    doc.Missions[0] = FreshlyRead(doc, Silent(services), doc.Missions[0]);
    if (!BuildMissionFile(doc, Silent(services), anew, 0, {})) break;
    const std::string differs = Differ(", anew", lines, anew);
    found = differs.empty() ? "" : found + differs;
  }
  if (!found.empty() && std::getenv("ROBOT_TELL")) {
    std::ofstream("/tmp/w/rb/now.mis", std::ios::binary) << now;
    std::ofstream("/tmp/w/rb/start.mis", std::ios::binary) << bytes;
  }
  return found;
}

std::string Checks::LookAtTheEnd() {
  if (stage_.World.Doc.Closing) return "";
  return First({Memory(), BackToStart()});
}

}  // namespace rws::robot
