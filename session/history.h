#pragma once

#include <cstddef>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "mission/document.h"
#include "session/file_changes.h"
#include "session/frozen.h"

/** What has been done to the missions of this run, so that it can be taken back: plain data. The
    procedures are in `recording.h` and `undo.h`. */
namespace rws {

/** A mission in both arrays of the document, beside what its file holds. */
struct MissionState {
  /** Null for a mission that is not read. */
  FrozenMission Own, Shadow;
  /** As it was when its file was last read or written, with what showing has changed since. */
  FrozenMission Saved;
  /** Which of all readings and writings of the run this one was. */
  std::size_t Reading = 0;
  /** How often its file had been found changed by others until then. */
  std::size_t Outside = 0;
  /** It is of another folder than the one that is open. */
  bool IsAway = false;
};

/** A file as this run has last read or written it. */
struct SeenFile {
  LineArray Lines;
  std::size_t Outside = 0;
};

struct StepMission {
  /** Full path of its file. */
  std::string Path;
  MissionState Before, After;
  /** The user's choice for its lines alone. */
  std::optional<UntouchedLines> ChoiceBefore = {}, ChoiceAfter = {};
};

/** One step of the history. */
struct Step {
  /** For the user, in UTF-8: "Fuel of I_SchG01". */
  std::string Title;
  /** What makes two edits one step when nothing came between them: what is edited, and where. */
  std::string Merges;
  std::string Folder;
  std::vector<StepMission> Missions;
  /** The flight that was shown, before and after. */
  int FlightBefore = 0, FlightAfter = 0;
  /** What it did to files, in its order. */
  std::vector<FileChange> Files;
  /** They have nothing to do with each other: one that cannot be taken back keeps no other. */
  bool FilesApart = false;
  std::size_t Bytes = 0;
};

struct History {
  std::deque<Step> Steps;
  /** How many of them, from the first on, stand. The others have been undone. */
  std::size_t Done = 0;
  /** Of all steps together; the oldest go first. */
  std::size_t Bytes = 0, MostBytes = std::size_t{64} << 20;
  /** The next edit begins a step of its own. */
  bool Closed = true;

  /** By full path: each mission that has been read, as it was after the last change heard of. Such
      of another folder are kept for their unsaved edits alone. */
  std::map<std::string, MissionState> Known;
  std::map<std::string, SeenFile> Seen;
  std::size_t Readings = 0;
  /** Files of missions that have got other names, old and new, each rename for itself; what is kept
      of edits on disk has still to follow. */
  std::vector<std::vector<std::pair<std::string, std::string>>> Moves;

  /** What is being done to files now, for the step that is being made. */
  FileJournal Journal;
};

}  // namespace rws
