#include "session/recording.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "services/paths.h"
#include "session/doors.h"

namespace rws {

namespace {

/** A state that an edit or showing has left, as far as both arrays hold the mission. */
MissionState StateNow(const Document& doc, std::size_t mission, const MissionState& known) {
  MissionState now = known;
  now.Own = Freeze(doc.Missions[mission], known.Own);
  if (mission < doc.MissionShadow.size())
    now.Shadow = Freeze(doc.MissionShadow[mission], known.Shadow);
  return now;
}

bool SameStates(const MissionState& a, const MissionState& b) {
  return a.Own == b.Own && a.Shadow == b.Shadow;
}

bool SameContents(const MissionState& a, const MissionState& b) {
  return SameContent(*a.Own, *b.Own) && SameContent(*a.Shadow, *b.Shadow);
}

bool Differs(const MissionState& state) {
  return state.Own && state.Own != state.Saved && !SameContent(*state.Own, *state.Saved);
}

/** "Fuel of I_SchG01", "Skill of 3 flights", "Weather of Night raid". */
std::string TitleOf(const Session& session, std::size_t mission, const EditKind& kind,
                    const MissionState& before, const MissionState& after) {
  const auto flights = ChangedFlights(*before.Own, *after.Own);
  std::string of = session.Doc.Missions[mission].BaseName;
  if (flights.size() == 1) of = session.Services.Page.ToUtf8(flights[0]);
  if (flights.size() > 1) of = std::to_string(flights.size()) + " flights";
  return std::string(kind.What) + " of " + of;
}

/** A state costs what it does not share with the one before it, which may be null. */
std::size_t BytesOf(const MissionState& state, const MissionState* like) {
  static const MissionState kNone;
  if (!like) like = &kNone;
  std::size_t bytes = 0;
  if (state.Own) bytes += OwnBytes(*state.Own, like->Own.get());
  for (const auto part : {&MissionState::Shadow, &MissionState::Saved})
    if (state.*part && state.*part != like->*part && state.*part != state.Own)
      bytes += OwnBytes(*(state.*part), state.Own.get());
  return bytes;
}

/** How the last step before this one has left a mission; null if none knows it. */
const MissionState* LeftBefore(const History& history, const Step& step, const std::string& path) {
  const MissionState* left = nullptr;
  bool before = false;
  for (auto earlier = history.Steps.rbegin(); !left && earlier != history.Steps.rend(); ++earlier) {
    if (before)
      for (const auto& mission : earlier->Missions)
        if (mission.Path == path) left = &mission.After;
    before = before || &*earlier == &step;
  }
  return left;
}

/** What the oldest step shares with the next one of its mission stays with that one. */
void DropOldest(History& history) {
  while (history.Bytes > history.MostBytes && history.Done > 1) {
    const Step oldest = std::move(history.Steps.front());
    history.Bytes -= oldest.Bytes;
    history.Steps.pop_front();
    --history.Done;
    WeighNext(history, 0, oldest);
  }
}

void DropUndone(History& history) {
  while (history.Steps.size() > history.Done) {
    history.Bytes -= history.Steps.back().Bytes;
    history.Steps.pop_back();
  }
}

/** The step that stands last, if an edit of this kind and place goes on with it. */
Step* Continued(History& history, const std::string& merges, const std::string& path) {
  if (history.Closed || history.Done == 0 || history.Done != history.Steps.size()) return nullptr;
  Step& last = history.Steps.back();
  const bool same = last.Merges == merges && last.Missions.size() == 1 && last.Files.empty() &&
                    last.Missions[0].Path == path;
  return same ? &last : nullptr;
}

void Merge(Session& session, Step& step, const MissionState& now) {
  step.Missions[0].After = now;
  step.FlightAfter = session.Doc.CurFlight;
  // Back at what it was: nothing has been done.
  if (SameContents(step.Missions[0].Before, now)) {
    --session.History.Done;
    DropUndone(session.History);
    session.History.Closed = true;
    return;
  }
  Weigh(session.History, step);
}

void RecordEdit(Session& session, std::size_t mission, const EditKind& kind,
                const MissionState& before, const MissionState& after) {
  History& history = session.History;
  const std::string& path = session.Doc.MissionFiles[mission];
  Step step;
  step.Title = TitleOf(session, mission, kind, before, after);
  step.Merges = step.Title + '\n' + (kind.Handler ? kind.Handler : "");
  step.Files = std::exchange(history.Journal.Changes, {});
  if (Step* last = step.Files.empty() ? Continued(history, step.Merges, path) : nullptr)
    return Merge(session, *last, after);
  step.Missions.push_back({path, before, after});
  step.FlightBefore = step.FlightAfter = session.Doc.CurFlight;
  AddStep(session, std::move(step));
  history.Closed = false;
}

/** What showing or the lighting of Update has changed is part of the last step's end. */
void FollowLast(History& history, const std::string& path, const MissionState& before,
                const MissionState& after) {
  if (history.Done == 0) return;
  for (auto& mission : history.Steps[history.Done - 1].Missions)
    if (mission.Path == path && mission.After.Own == before.Own &&
        SameContent(*before.Own, *after.Own))
      mission.After.Own = after.Own;
}

/** Null where the mission follows the choice for all. */
std::optional<UntouchedLines> ChoiceFor(const Document& doc, const std::string& path) {
  const auto own = doc.UntouchedOf.find(path);
  return own == doc.UntouchedOf.end() ? std::nullopt : std::optional(own->second);
}

}  // namespace

std::ptrdiff_t MissionAt(const Document& doc, const std::string& path) {
  const auto found = std::find(doc.MissionFiles.begin(), doc.MissionFiles.end(), path);
  return found == doc.MissionFiles.end() ? -1 : found - doc.MissionFiles.begin();
}

std::size_t RowFor(Document& doc, const std::string& path) {
  const std::ptrdiff_t listed = MissionAt(doc, path);
  if (listed >= 0) return static_cast<std::size_t>(listed);
  const std::size_t row = doc.MissionFiles.size();
  doc.MissionFiles.push_back(path);
  for (auto* missions : {&doc.Missions, &doc.MissionShadow}) {
    if (missions->size() != row) continue;
    NameMission(missions->emplace_back(), path);
  }
  return row;
}

void Weigh(History& history, Step& step) {
  history.Bytes -= step.Bytes;
  step.Bytes = sizeof step + step.Title.size() + step.Merges.size();
  for (const auto& mission : step.Missions)
    step.Bytes += sizeof mission + mission.Path.size() +
                  BytesOf(mission.Before, LeftBefore(history, step, mission.Path)) +
                  BytesOf(mission.After, &mission.Before);
  for (const auto& file : step.Files)
    step.Bytes += sizeof file + file.Path.size() + file.To.size() + file.Stored.size() +
                  file.StoredNew.size() + file.OldSum.size() + file.NewSum.size();
  history.Bytes += step.Bytes;
}

void WeighNext(History& history, std::size_t first, const Step& changed) {
  std::unordered_set<std::string> paths;
  for (const auto& mission : changed.Missions) paths.insert(mission.Path);
  for (std::size_t i = first; i < history.Steps.size() && !paths.empty(); ++i) {
    std::size_t found = 0;
    for (const auto& mission : history.Steps[i].Missions) found += paths.erase(mission.Path);
    if (found > 0) Weigh(history, history.Steps[i]);
  }
}

void AddStep(Session& session, Step step) {
  History& history = session.History;
  DropUndone(history);
  if (step.Folder.empty()) step.Folder = session.Doc.MissionDir;
  history.Steps.push_back(std::move(step));
  history.Done = history.Steps.size();
  history.Closed = true;
  Weigh(history, history.Steps.back());
  DropOldest(history);
}

void CloseStep(Session& session) { session.History.Closed = true; }

void Record(Session& session, const EditKind* kind) {
  const Document& doc = session.Doc;
  const auto mission = static_cast<std::size_t>(doc.CurMission);
  if (mission >= doc.MissionFiles.size() || mission >= doc.Missions.size()) return;
  const std::string& path = doc.MissionFiles[mission];
  const auto found = session.History.Known.find(path);
  if (found == session.History.Known.end() || !doc.Missions[mission].Loaded) return;
  MissionState& known = found->second;
  MissionState now = StateNow(doc, mission, known);
  const bool files = !session.History.Journal.Changes.empty();
  if (SameStates(known, now) && !(kind && files)) return;
  if (kind && (files || !SameContents(known, now))) {
    const MissionState before = std::exchange(known, now);
    return RecordEdit(session, mission, *kind, before, now);
  }
  if (!SameContent(*known.Own, *now.Own)) {
    now.Saved = Rebased(known.Saved, *known.Own, *now.Own);
    // An edit that went on with the last step would make this a part of it.
    CloseStep(session);
  }
  FollowLast(session.History, path, known, now);
  // One and the same, so that the two need not be compared at each look.
  if (now.Own != now.Saved && SameContent(*now.Own, *now.Saved)) now.Saved = now.Own;
  known = now;
}

void NoteRead(Session& session, std::size_t mission) {
  const Document& doc = session.Doc;
  if (mission >= doc.MissionFiles.size() || !doc.Missions[mission].Loaded) return;
  History& history = session.History;
  const std::string& path = doc.MissionFiles[mission];
  const LineArray& lines = doc.Missions[mission].AsRead;
  const auto [seen, isNew] = history.Seen.try_emplace(path);
  if (!isNew && !(seen->second.Lines == lines)) ++seen->second.Outside;
  seen->second.Lines = lines;
  const auto own = Freeze(doc.Missions[mission], nullptr);
  history.Known[path] = {own, own, own, ++history.Readings, seen->second.Outside, false};
}

void NoteWritten(Session& session, std::size_t mission) {
  const Document& doc = session.Doc;
  const auto found = session.History.Known.find(doc.MissionFiles[mission]);
  if (found == session.History.Known.end()) return;
  found->second = StateNow(doc, mission, found->second);
  found->second.Saved = found->second.Own;
  found->second.Reading = ++session.History.Readings;
  session.History.Seen[doc.MissionFiles[mission]].Lines = doc.Missions[mission].AsRead;
}

void TakeWaiting(Session& session) {
  Document& doc = session.Doc;
  for (auto& [path, state] : session.History.Known) {
    const std::ptrdiff_t row = state.IsAway ? MissionAt(doc, path) : -1;
    if (row < 0) continue;
    const auto mission = static_cast<std::size_t>(row);
    if (doc.MissionShadow.size() != doc.Missions.size()) doc.MissionShadow = doc.Missions;
    // They may have been renamed meanwhile.
    NameMission(doc.Missions[mission] = Thaw(*state.Own), path);
    NameMission(doc.MissionShadow[mission] = Thaw(*state.Shadow), path);
    state.IsAway = false;
  }
}

void NoteDrops(Session& session, const std::string& by) {
  TakeWaiting(session);
  const Document& doc = session.Doc;
  History& history = session.History;
  std::unordered_set<std::string> inMemory;
  for (std::size_t i = 0; i < doc.Missions.size() && i < doc.MissionFiles.size(); ++i)
    if (doc.Missions[i].Loaded) inMemory.insert(doc.MissionFiles[i]);
  Step dropped;
  for (auto known = history.Known.begin(); known != history.Known.end();) {
    const auto& [path, state] = *known;
    if (inMemory.contains(path) || state.IsAway) {
      ++known;
      continue;
    }
    if (Differs(state)) {
      if (dropped.Folder.empty()) dropped.Folder = StripFileName(path);
      dropped.Missions.push_back({path, state, {}});
    }
    known = history.Known.erase(known);
  }
  if (dropped.Missions.empty()) return;
  dropped.Title = "Edits dropped by " + by;
  dropped.FlightBefore = dropped.FlightAfter = doc.CurFlight;
  AddStep(session, std::move(dropped));
}

void NoteDropsOfDialog(Session& session, std::size_t first, const std::string& by,
                       const std::function<void(Mission&)>& edit) {
  Record(session, nullptr);
  History& history = session.History;
  const Document& doc = session.Doc;
  const auto mission = static_cast<std::size_t>(doc.CurMission);
  const std::string& path = At(doc.MissionFiles, doc.CurMission);
  const auto known = history.Known.find(path);
  if (known == history.Known.end()) return;
  history.Done = std::min(history.Done, first);
  DropUndone(history);
  MissionState before = known->second;
  Mission edited = doc.Missions[mission];
  edit(edited);
  before.Own = Freeze(edited, before.Own);
  if (SameContents(before, known->second)) return;
  Step step;
  step.Title = "Edits dropped by " + by;
  step.FlightBefore = step.FlightAfter = doc.CurFlight;
  step.Missions.push_back({path, before, known->second});
  AddStep(session, std::move(step));
}

void RecordWhole(Session& session, const std::vector<std::string>& paths, const std::string& title,
                 const std::function<void()>& change) {
  const auto stateOf = [&](const std::string& path) {
    const auto found = session.History.Known.find(path);
    return found == session.History.Known.end() ? MissionState() : found->second;
  };
  const Document& doc = session.Doc;
  Record(session, nullptr);
  Step step;
  step.Title = title;
  step.FlightBefore = doc.CurFlight;
  for (const auto& path : paths)
    step.Missions.push_back({path, stateOf(path), {}, ChoiceFor(doc, path), {}});
  change();
  for (auto& mission : step.Missions) {
    mission.After = stateOf(mission.Path);
    mission.ChoiceAfter = ChoiceFor(doc, mission.Path);
  }
  std::erase_if(step.Missions, [](const StepMission& mission) {
    const auto &before = mission.Before, &after = mission.After;
    if (!before.Own || !after.Own) return before.Own == after.Own;
    const bool sameReading = before.Own->Head.KeepsLines == after.Own->Head.KeepsLines;
    // What is open is no choice.
    const bool sameChoice =
        mission.ChoiceBefore == mission.ChoiceAfter || mission.ChoiceAfter == UntouchedLines::Ask;
    return sameReading && sameChoice && SameContents(before, after);
  });
  step.Files = std::exchange(session.History.Journal.Changes, {});
  if (step.Missions.empty() && step.Files.empty()) return;
  step.FlightAfter = session.Doc.CurFlight;
  AddStep(session, std::move(step));
}

void NoteMoved(Session& session, const std::vector<std::pair<std::string, std::string>>& moves) {
  MoveKeys(session.History.Known, moves);
  MoveKeys(session.Doc.UntouchedOf, moves);
  if (!moves.empty()) session.History.Moves.push_back(moves);
}

void MoveRows(Document& doc, const std::vector<std::pair<std::string, std::string>>& moves) {
  const std::unordered_map<std::string, std::string> names(moves.begin(), moves.end());
  for (std::size_t mission = 0; mission < doc.MissionFiles.size(); ++mission) {
    const auto move = names.find(doc.MissionFiles[mission]);
    if (move == names.end()) continue;
    const std::string& path = doc.MissionFiles[mission] = move->second;
    if (mission < doc.Missions.size()) NameMission(doc.Missions[mission], path);
    if (mission < doc.MissionShadow.size()) NameMission(doc.MissionShadow[mission], path);
  }
}

void FillShadow(const Mission& record, Mission& shadow) {
  for (std::size_t i = 0; i < record.Flights.size(); ++i) {
    auto& flights = shadow.Flights;
    const std::string& name = record.Flights[i].Name;
    const bool has = i < flights.size() && flights[i].Name == name;
    if (!has && flights.size() < record.Flights.size())
      flights
          .insert(flights.begin() + static_cast<std::ptrdiff_t>(std::min(i, flights.size())),
                  Flight())
          ->Name = name;
    auto& waypoints = flights[i].Waypoints;
    waypoints.resize(std::max(waypoints.size(), record.Flights[i].Waypoints.size()));
  }
  auto& bases = shadow.BornPlaces;
  bases.resize(std::max(bases.size(), record.BornPlaces.size()));
  while (shadow.Lines.size() < record.Lines.size()) shadow.Lines.Add("");
}

void NameMission(Mission& mission, const std::string& path) {
  mission.DirPath = StripFileName(path);
  mission.FileName = GetFileName(path);
  mission.BaseName = GetBaseName(path);
}

bool IsUnsaved(const Session& session, std::size_t mission) {
  const Document& doc = session.Doc;
  if (mission >= doc.Missions.size() || mission >= doc.MissionFiles.size()) return false;
  if (!doc.Missions[mission].Loaded) return false;
  const auto found = session.History.Known.find(doc.MissionFiles[mission]);
  return found != session.History.Known.end() && Differs(found->second);
}

std::vector<std::string> UnsavedMissions(const Session& session) {
  std::vector<std::string> paths;
  for (const auto& [path, state] : session.History.Known)
    if (Differs(state)) paths.push_back(path);
  return paths;
}

}  // namespace rws
