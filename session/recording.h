#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "session/session.h"

/** How the history learns of what happens to missions. */
namespace rws {

struct EditKind;

/** The current mission may have changed: by an edit of that kind, which becomes a step or a part of
    the last one, or, with null, by showing alone, which is no edit. */
void Record(Session& session, const EditKind* kind);

/** The mission has been read from its file: what it holds now is saved. */
void NoteRead(Session& session, std::size_t mission);

/** The mission has been written as it is in memory. */
void NoteWritten(Session& session, std::size_t mission);

/** Missions of the list whose edits have waited while another folder was open get them back. */
void TakeWaiting(Session& session);

/** Makes a step of the unsaved edits of all missions that are no longer in memory. `by` tells what
    dropped them: "Update". */
void NoteDrops(Session& session, const std::string& by);

/** Makes one step of all that `change` does to these missions, by their full paths, also of a
    reading. */
void RecordWhole(Session& session, const std::vector<std::string>& paths, const std::string& title,
                 const std::function<void()>& change);

/** Counts the bytes of a step of the history anew. */
void Weigh(History& history, Step& step);

/** The same, of those from `first` on that come next for the missions of a step that has changed or
    gone: what they share with it is counted once. */
void WeighNext(History& history, std::size_t first, const Step& changed);

/** The next edit begins a step of its own. */
void CloseStep(Session& session);

/** Makes one step of edits that a dialog has dropped, in place of the steps of the dialog, which
   are those from `first` on: undone, the current mission is as `edit` makes it. */
void NoteDropsOfDialog(Session& session, std::size_t first, const std::string& by,
                       const std::function<void(Mission&)>& edit);

/** What is known by the old paths is by the new ones. All are taken out first: a new name may be
   the old one of another. */
template <class Value>
void MoveKeys(std::map<std::string, Value>& values,
              const std::vector<std::pair<std::string, std::string>>& moves) {
  std::vector<std::pair<std::string, Value>> moved;
  for (const auto& [from, to] : moves)
    if (auto node = values.extract(from)) moved.emplace_back(to, std::move(node.mapped()));
  for (auto& [path, value] : moved) values[path] = std::move(value);
}

/** Files of missions bear other names, each an old and a new path: what is known of them follows.
    The list does not. */
void NoteMoved(Session& session, const std::vector<std::pair<std::string, std::string>>& moves);

/** The rows of the list follow. */
void MoveRows(Document& doc, const std::vector<std::pair<std::string, std::string>>& moves);

/** Names a record after the file that it belongs to. */
void NameMission(Mission& mission, const std::string& path);

/** What the shadow lacks of a mission comes to stand in it, empty, so that it differs: a mission
    that holds more than its shadow would count as unchanged, whatever else is edited. */
void FillShadow(const Mission& record, Mission& shadow);

/** Adds a step, after which nothing can be redone. */
void AddStep(Session& session, Step step);

/** True if the records of a mission that is in memory differ from what its file held when it was
    read or last written. */
bool IsUnsaved(const Session& session, std::size_t mission);

/** Full paths of all missions with unsaved edits, also of other folders, sorted. */
std::vector<std::string> UnsavedMissions(const Session& session);

/** Index of a mission by its full path, or -1. */
std::ptrdiff_t MissionAt(const Document& doc, const std::string& path);

/** The same; a mission that is no longer listed gets its row again, behind the others. */
std::size_t RowFor(Document& doc, const std::string& path);

}  // namespace rws
