#include "session/undo.h"

#include <utility>

#include "mission/reader.h"
#include "mission/update.h"
#include "services/faults.h"
#include "services/paths.h"
#include "session/file_undo.h"
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
  Mission& record = session.Doc.Missions[mission];
  Mission unread;
  unread.DirPath = record.DirPath;
  unread.FileName = record.FileName;
  unread.BaseName = record.BaseName;
  record = std::move(unread);
}

/** The reader would end the program over a file that has gone. */
bool ReadForUndo(Session& session, std::size_t mission) {
  Document& doc = session.Doc;
  if (doc.Missions[mission].Loaded) return true;
  if (session.Services.Files.IsGone(doc.MissionFiles[mission])) return false;
  LoadMission(doc, session.Services, mission);
  if (!doc.Missions[mission].Loaded) return false;
  NoteRead(session, mission);
  if (mission < doc.MissionShadow.size()) doc.MissionShadow[mission] = doc.Missions[mission];
  return true;
}

/** Keeps what is known of the file; the rest becomes `state`. */
void PutBack(Session& session, std::size_t mission, const MissionState& state) {
  Document& doc = session.Doc;
  const Mission now = doc.Missions[mission];
  Mission& record = doc.Missions[mission] = Thaw(*state.Own);
  record.DirPath = now.DirPath;
  record.FileName = now.FileName;
  record.BaseName = now.BaseName;
  if (mission < doc.MissionShadow.size()) doc.MissionShadow[mission] = Thaw(*state.Shadow);
  session.History.Known[doc.MissionFiles[mission]] = state;
}

void Patch(Session& session, std::size_t mission, const MissionState& from,
           const MissionState& to) {
  Document& doc = session.Doc;
  MissionState& known = session.History.Known[doc.MissionFiles[mission]];
  const bool sameReading = known.Reading == to.Reading;
  Mission& record = doc.Missions[mission];
  record = Patched(record, *from.Own, *to.Own);
  if (sameReading) doc.MissionShadow[mission] = Thaw(*to.Shadow);
  known.Own = Freeze(record, known.Own);
  const bool unsaved = !SameContent(*known.Own, *known.Saved);
  const bool wasLit = from.Own->Head.Modified || to.Own->Head.Modified;
  record.Modified =
      sameReading ? to.Own->Head.Modified : MissionChanged(doc, mission) || (wasLit && unsaved);
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

void Apply(Session& session, std::size_t mission, const MissionState& from,
           const MissionState& to) {
  if (!to.Own) return MakeUnread(session, mission);
  if (!from.Own) return BringBack(session, mission, to);
  Patch(session, mission, from, to);
}

/** The first mission of the step that cannot be had, told; "" for none. */
std::string Missing(Session& session, const Step& step, bool undo) {
  for (const auto& touched : step.Missions) {
    const std::ptrdiff_t mission = MissionAt(session.Doc, touched.Path);
    const bool needsIt = (undo ? touched.Before : touched.After).Own != nullptr;
    if (mission < 0 || (needsIt && !ReadForUndo(session, static_cast<std::size_t>(mission))))
      return "\"" + GetFileName(touched.Path) + "\" is no longer in this folder or cannot be read.";
  }
  return "";
}

UndoResult Take(Session& session, Step& step, bool undo) {
  UndoResult result;
  result.Files = !step.Files.empty();
  Record(session, nullptr);
  if (result.Files) {
    result.Reason =
        undo ? UndoFiles(session.Services, step.Files) : RedoFiles(session.Services, step.Files);
    if (!result.Reason.empty()) return result;
    auto moves = NetMoves(step.Files);
    if (undo)
      for (auto& [from, to] : moves) std::swap(from, to);
    NoteMoved(session, moves);
    RelistFolder(session);
  }
  // Missions whose files a redone step takes away are no longer listed, with all their edits.
  if (!result.Files || undo) result.Reason = Missing(session, step, undo);
  if (!result.Reason.empty() && !result.Files) return result;
  result.Reason.clear();
  for (const auto& touched : step.Missions) {
    const std::ptrdiff_t mission = MissionAt(session.Doc, touched.Path);
    if (mission < 0) continue;
    const auto& from = undo ? touched.After : touched.Before;
    const auto& to = undo ? touched.Before : touched.After;
    Apply(session, static_cast<std::size_t>(mission), from, to);
    if (result.Mission.empty()) result.Mission = touched.Path;
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
  --history.Done;
  history.Closed = true;
  // Update cannot be lit again as it was before the step.
  for (const auto& mission : step.Missions)
    if (const auto known = history.Known.find(mission.Path); known != history.Known.end())
      known->second.Reading = ++history.Readings;
  // What came before knows the files by their earlier names.
  for (auto& earlier : history.Steps)
    for (auto& mission : earlier.Missions)
      for (const auto& [from, to] : NetMoves(step.Files))
        if (mission.Path == from) mission.Path = to;
}

}  // namespace rws
