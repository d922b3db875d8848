#include "session/undo.h"

#include <algorithm>
#include <map>
#include <optional>
#include <unordered_set>
#include <utility>

#include "mission/carry_edits.h"
#include "mission/line_ends.h"
#include "mission/reader.h"
#include "mission/untouched.h"
#include "mission/update.h"
#include "services/faults.h"
#include "services/paths.h"
#include "session/file_undo.h"
#include "session/lines_rule.h"
#include "session/recording.h"
#include "session/relist.h"

namespace rws {

namespace {

const Step* NextUndone(const History& history) {
  return history.Done > 0 ? &history.Steps[history.Done - 1] : nullptr;
}

const Step* NextRedone(const History& history) {
  return history.Done < history.Steps.size() ? &history.Steps[history.Done] : nullptr;
}

void MakeUnread(Session& session, std::size_t mission) {
  const std::string& path = session.Doc.MissionFiles[mission];
  session.History.Known.erase(path);
  Mission& record = session.Doc.Missions[mission] = Mission();
  NameMission(record, path);
}

/** The reader would end the program over a file that has gone. */
bool ReadForUndo(Session& session, std::size_t mission) {
  Document& doc = session.Doc;
  if (doc.Missions[mission].Loaded && session.History.Known.contains(doc.MissionFiles[mission]))
    return true;
  if (session.Services.Files.IsGone(doc.MissionFiles[mission])) return false;
  MakeUnread(session, mission);
  LoadMission(doc, session.Services, mission);
  if (!doc.Missions[mission].Loaded) return false;
  NoteRead(session, mission);
  if (mission < doc.MissionShadow.size()) doc.MissionShadow[mission] = doc.Missions[mission];
  return true;
}

void PutShadow(Document& doc, std::size_t mission, const MissionState& state) {
  if (mission < doc.MissionShadow.size())
    NameMission(doc.MissionShadow[mission] = Thaw(*state.Shadow), doc.MissionFiles[mission]);
}

/** Keeps what is known of the file; the rest becomes `state`. */
void PutBack(Session& session, std::size_t mission, const MissionState& state) {
  Document& doc = session.Doc;
  NameMission(doc.Missions[mission] = Thaw(*state.Own), doc.MissionFiles[mission]);
  PutShadow(doc, mission, state);
  session.History.Known[doc.MissionFiles[mission]] = state;
}

/** Steps of before the lines were kept, or of after, are about values that are spelled otherwise.
 */
bool IsOtherReading(const Mission& record, const MissionState& from, const MissionState& to) {
  const bool keeps = to.Own->Head.KeepsLines;
  return from.Own->Head.KeepsLines == keeps && record.KeepsLines != keeps;
}

/** A flight that comes back into kept lines from a record without them brings all of its own. */
void TakeLines(const Session& session, Mission goal, Mission& record) {
  const auto lacksLines = [](const Flight& flight) {
    return flight.KeptIn.empty() && !flight.KeptName.empty();
  };
  auto& flights = record.Flights;
  if (!record.KeepsLines || std::none_of(flights.begin(), flights.end(), lacksLines)) return;
  const Mission saved = FreshlyRead(session.Doc, session.Services, goal);
  if (!SetKeepsLines(session.Doc, session.Services, goal, true, saved).empty()) return;
  for (auto& flight : flights)
    for (const auto& whole : goal.Flights)
      if (lacksLines(flight) && whole.Name == flight.Name) flight = whole;
}

void Patch(Session& session, std::size_t mission, const MissionState& from,
           const MissionState& to) {
  Document& doc = session.Doc;
  MissionState& known = session.History.Known[doc.MissionFiles[mission]];
  const bool sameReading = known.Reading == to.Reading;
  Mission& record = doc.Missions[mission];
  if (IsOtherReading(record, from, to)) {
    CarryEdits(Thaw(*from.Own), Thaw(*to.Own), record);
    TakeLines(session, Thaw(*to.Own), record);
  } else {
    record = Patched(record, *from.Own, *to.Own);
  }
  if (sameReading)
    PutShadow(doc, mission, to);
  else if (mission < doc.MissionShadow.size())
    FillShadow(record, doc.MissionShadow[mission]);
  known.Own = Freeze(record, known.Own);
  const bool unsaved = !SameContent(*known.Own, *known.Saved);
  const bool wasLit = from.Own->Head.Modified || to.Own->Head.Modified;
  // The shadow of another reading may hold what showing wrote, which the record may lack.
  record.Modified =
      sameReading ? to.Own->Head.Modified : unsaved && (wasLit || MissionChanged(doc, mission));
  record.NotWritten = record.NotWritten && unsaved;
  known.Own = Freeze(record, known.Own);
  known.Shadow = Freeze(doc.MissionShadow[mission], known.Shadow);
}

/** What was dropped comes back as it was. Onto a file that is another one by now it is unsaved
    against that; if others have changed it, it knows still which lines it was made on. */
void BringBack(Session& session, std::size_t mission, const MissionState& to) {
  Mission& record = session.Doc.Missions[mission];
  MissionState& known = session.History.Known[session.Doc.MissionFiles[mission]];
  const MissionState fresh = known;
  const LineArray lines = record.AsRead;
  PutBack(session, mission, to);
  if (lines == to.Own->Head.AsRead) return;
  if (fresh.Outside == to.Outside) record.AsRead = lines;
  known = fresh;
  known.Own = Freeze(record, to.Own);
  known.Shadow = to.Shadow;
}

/** Where a mission of a step is to come from, and what it is to become. */
struct Turn {
  std::string Path;
  const MissionState &From, &To;
  std::optional<UntouchedLines> ChoiceFrom, ChoiceTo;
};

std::vector<Turn> TurnsOf(const Step& step, bool undo) {
  std::vector<Turn> turns;
  for (const auto& [path, before, after, wasChoice, isChoice] : step.Missions)
    undo ? turns.push_back({path, after, before, isChoice, wasChoice})
         : turns.push_back({path, before, after, wasChoice, isChoice});
  return turns;
}

bool TurnsLines(const Turn& turn) {
  return turn.From.Own->Head.KeepsLines != turn.To.Own->Head.KeepsLines;
}

void PutChoice(Document& doc, const Turn& turn) {
  if (turn.ChoiceFrom == turn.ChoiceTo) return;
  if (turn.ChoiceTo)
    doc.UntouchedOf[turn.Path] = *turn.ChoiceTo;
  else
    doc.UntouchedOf.erase(turn.Path);
}

/** How the mission is to be read behind a step that turns the reading: as it was, unless the choice
    that holds by now says otherwise. */
bool KeepsBehind(const Document& doc, const Turn& turn, const Mission& record) {
  const UntouchedLines rule = turn.ChoiceFrom == turn.ChoiceTo
                                  ? UntouchedRule(doc, record)
                                  : turn.ChoiceTo.value_or(doc.Untouched);
  return rule == UntouchedLines::Ask ? turn.To.Own->Head.KeepsLines : rule == UntouchedLines::Keep;
}

/** With nothing read or written since, it becomes what it was. */
bool IsExact(const Session& session, const Turn& turn, bool keeps) {
  return session.History.Known.at(turn.Path).Reading == turn.From.Reading &&
         keeps == turn.To.Own->Head.KeepsLines;
}

/** What a step that turns the reading leads to, in the reading that it starts from: only edits
    differ. */
MissionState Unturned(const Session& session, const Turn& turn) {
  MissionState to = turn.To;
  Mission goal = Thaw(*to.Own);
  NameMission(goal, turn.Path);
  // One reading repairs line ends, and the other has them as they are.
  const LineArray& asRead = turn.From.Own->Head.AsRead;
  if (LinesOfFile(asRead.FileText()) == LinesOfFile(goal.AsRead.FileText())) goal.AsRead = asRead;
  goal =
      ReadAs(session.Doc, session.Services, goal, turn.From.Own->Head.KeepsLines, Thaw(*to.Saved));
  to.Own = Freeze(goal, turn.From.Own);
  return to;
}

void TurnLines(Session& session, std::size_t mission, const Turn& turn) {
  const bool keeps = KeepsBehind(session.Doc, turn, session.Doc.Missions[mission]);
  if (IsExact(session, turn, keeps)) return PutBack(session, mission, turn.To);
  const MissionState to = Unturned(session, turn);
  if (!SameContent(*turn.From.Own, *to.Own)) Patch(session, mission, turn.From, to);
  ReadLines(session, mission, keeps);
}

/** Why a step cannot turn the reading of a mission that has been read or written since; "" if it
    can. */
std::string WhyNotTurned(const Session& session, std::size_t mission, const Turn& turn) {
  const Document& doc = session.Doc;
  const bool keeps = KeepsBehind(doc, turn, doc.Missions[mission]);
  std::string reason;
  if (IsExact(session, turn, keeps)) return reason;
  const auto turnCopy = [&] {
    const MissionState to = Unturned(session, turn);
    Mission record = doc.Missions[mission];
    if (!IsOtherReading(record, turn.From, to))
      record = Patched(record, *turn.From.Own, *to.Own);
    else if (!CarryEdits(Thaw(*turn.From.Own), Thaw(*to.Own), record).empty())
      throw Fault(fault::InvalidCall, "its edits have no place in it as it is read now.");
    ReadAs(doc, session.Services, record, keeps, Thaw(*session.History.Known.at(turn.Path).Saved));
  };
  Trap(turnCopy, [&](const Fault& caught) { reason = session.Services.Page.ToUtf8(caught.Text); });
  return reason;
}

void Apply(Session& session, std::size_t mission, const Turn& turn) {
  const auto& [path, from, to, wasChoice, isChoice] = turn;
  if (!to.Own) return MakeUnread(session, mission);
  if (!session.Doc.Missions[mission].Loaded) return PutBack(session, mission, to);
  if (!from.Own) return BringBack(session, mission, to);
  if (TurnsLines(turn)) return TurnLines(session, mission, turn);
  Patch(session, mission, from, to);
}

/** The first mission of the step that cannot be had, told; "" for none. */
std::string Missing(Session& session, const std::vector<Turn>& turns) {
  for (const auto& turn : turns) {
    const auto& [path, from, to, wasChoice, isChoice] = turn;
    if (!from.Own || !to.Own) continue;
    const std::ptrdiff_t mission = MissionAt(session.Doc, path);
    if (mission < 0 || !ReadForUndo(session, static_cast<std::size_t>(mission)))
      return "\"" + GetFileName(path) + "\" is no longer in this folder or cannot be read.";
    Mission record = session.Doc.Missions[static_cast<std::size_t>(mission)];
    if (const std::string name = FlightInTheWay(record, *from.Own, *to.Own); !name.empty())
      return "\"" + GetFileName(path) + "\" has a flight \"" + session.Services.Page.ToUtf8(name) +
             "\" by now.";
    if (TurnsLines(turn)) {
      std::string reason = WhyNotTurned(session, static_cast<std::size_t>(mission), turn);
      if (!reason.empty()) return reason;
      continue;
    }
    if (!IsOtherReading(record, from, to)) continue;
    if (const std::string left = CarryEdits(Thaw(*from.Own), Thaw(*to.Own), record); !left.empty())
      return "\"" + GetFileName(path) + "\" has been read in another way since, in which " +
             session.Services.Page.ToUtf8(left) + " cannot be found.";
  }
  return "";
}

/** Missions in memory whose files a step has written are to be read anew, unless they have edits;
    also those that lead to such a file by a link. */
void MakeWrittenUnread(Session& session, const Step& step) {
  const Document& doc = session.Doc;
  const FileSystem& files = session.Services.Files;
  std::unordered_set<std::string> written;
  for (const auto& file : step.Files)
    if (file.What != FileChange::Moved) written.insert({file.Path, files.RealPath(file.Path)});
  if (written.empty()) return;
  for (std::size_t mission = 0; mission < doc.MissionFiles.size(); ++mission) {
    const std::string& path = doc.MissionFiles[mission];
    const bool isWritten = written.contains(path) ||
                           (doc.Missions[mission].Loaded && written.contains(files.RealPath(path)));
    if (isWritten && !IsUnsaved(session, mission)) MakeUnread(session, mission);
  }
}

/** Lists what the files of a step have become. A mission that the step takes away goes with its
    edits. */
void FollowFiles(Session& session, const Step& step, const std::vector<Turn>& turns, bool undo) {
  Document& doc = session.Doc;
  const auto forget = [&](const std::string& path) {
    if (const auto mission = MissionAt(doc, path); mission >= 0)
      MakeUnread(session, static_cast<std::size_t>(mission));
  };
  for (const auto& turn : turns)
    if (!turn.To.Own) forget(turn.Path);
  auto moves = NetRenames(step.Files);
  if (undo)
    for (auto& [from, to] : moves) std::swap(from, to);
  NoteMoved(session, moves);
  MoveRows(doc, moves);
  MakeWrittenUnread(session, step);
  RelistFolder(session);
}

void TurnFiles(const Services& services, Step& step, bool undo, UndoResult& result) {
  if (!step.FilesApart) {
    result.Reason = undo ? UndoFiles(services, step.Files) : RedoFiles(services, step.Files);
    return;
  }
  result.LeftOut = (undo ? UndoEachFile : RedoEachFile)(services, step.Files);
  if (result.LeftOut.size() == step.Files.size()) result.Reason = result.LeftOut.front();
}

/** What a mission was before a step is patched into it that was made on another reading: turned
    round, the step brings that back, with what others have written into it. */
std::optional<MissionState> StateToPatch(const Session& session, std::size_t mission,
                                         const Turn& turn) {
  const auto& [path, from, to, wasChoice, isChoice] = turn;
  const Mission& record = session.Doc.Missions[mission];
  const auto known = session.History.Known.find(path);
  if (!from.Own || !to.Own || !record.Loaded || known == session.History.Known.end() ||
      known->second.Reading == from.Reading || TurnsLines(turn) || IsOtherReading(record, from, to))
    return std::nullopt;
  return known->second;
}

UndoResult Take(Session& session, Step& step, bool undo) {
  UndoResult result;
  result.Files = !step.Files.empty();
  Record(session, nullptr);
  const auto turns = TurnsOf(step, undo);
  result.Reason = Missing(session, turns);
  if (result.Reason.empty() && result.Files) TurnFiles(session.Services, step, undo, result);
  if (!result.Reason.empty()) return result;
  if (result.Files) FollowFiles(session, step, turns, undo);
  bool isPatched = false;
  for (std::size_t i = 0; i < turns.size(); ++i) {
    const Turn& turn = turns[i];
    const bool listed = MissionAt(session.Doc, turn.Path) >= 0;
    if (!listed && !turn.To.Own) continue;
    const std::size_t mission = RowFor(session.Doc, turn.Path);
    result.Files |= !listed;
    if (turn.To.Own) ReadForUndo(session, mission);
    PutChoice(session.Doc, turn);
    const auto before = StateToPatch(session, mission, turn);
    Apply(session, mission, turn);
    if (result.Mission.empty()) result.Mission = turn.Path;
    if (!before) continue;
    const MissionState& now = session.History.Known.at(turn.Path);
    // What it changes may be gone for now, and come back.
    if (SameContent(*before->Own, *now.Own)) continue;
    StepMission& patched = step.Missions[i];
    (undo ? patched.After : patched.Before) = *before;
    (undo ? patched.Before : patched.After) = now;
    isPatched = true;
  }
  if (isPatched) {
    Weigh(session.History, step);
    WeighNext(session.History, session.History.Done + (undo ? 0 : 1), step);
  }
  result.Flight = undo ? step.FlightBefore : step.FlightAfter;
  result.Done = true;
  CloseStep(session);
  return result;
}

}  // namespace

std::string UndoTitle(const Session& session) {
  const Step* step = NextUndone(session.History);
  return step ? step->Title : "";
}

std::string RedoTitle(const Session& session) {
  const Step* step = NextRedone(session.History);
  return step ? step->Title : "";
}

std::string UndoFolder(const Session& session) {
  const Step* step = NextUndone(session.History);
  return step ? step->Folder : "";
}

std::string RedoFolder(const Session& session) {
  const Step* step = NextRedone(session.History);
  return step ? step->Folder : "";
}

UndoResult UndoStep(Session& session) {
  History& history = session.History;
  if (history.Done == 0) return {};
  UndoResult result = Take(session, history.Steps[history.Done - 1], true);
  if (result.Done) --history.Done;
  return result;
}

UndoResult RedoStep(Session& session) {
  History& history = session.History;
  if (history.Done == history.Steps.size()) return {};
  UndoResult result = Take(session, history.Steps[history.Done], false);
  if (result.Done) ++history.Done;
  return result;
}

void SkipStep(Session& session) {
  History& history = session.History;
  if (history.Done == 0) return;
  const Step step = history.Steps[history.Done - 1];
  history.Bytes -= step.Bytes;
  history.Steps.erase(history.Steps.begin() + static_cast<std::ptrdiff_t>(history.Done - 1));
  WeighNext(history, --history.Done, step);
  history.Closed = true;
  // Update cannot be lit again as it was before the step.
  for (const auto& mission : step.Missions)
    if (const auto known = history.Known.find(mission.Path); known != history.Known.end())
      known->second.Reading = ++history.Readings;
  // What came before knows the files by their earlier names.
  std::map<std::string, std::string> names;
  for (const auto& [from, to] : NetRenames(step.Files)) names[from] = to;
  for (std::size_t i = 0; i < history.Done; ++i)
    for (auto& mission : history.Steps[i].Missions)
      if (const auto renamed = names.find(mission.Path); renamed != names.end())
        mission.Path = renamed->second;
}

}  // namespace rws
