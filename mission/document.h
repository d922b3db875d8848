#pragma once

#include <map>
#include <string>
#include <vector>

#include "mission/records.h"

namespace rws {

/** What an Update does with the lines that the user did not edit. The numbers are those of the
    setting. */
enum class UntouchedLines {
  Ask = 0,   // as Anew, but the user is asked where that would change what the mission means
  Keep = 1,  // they stay as they are
  Anew = 2   // the file is made anew from the records
};

/** All state of the missions shown. `main` owns it and hands it on; a test starts from a new one.
 */
struct Document {
  /** The working copy: every control edits this one. */
  std::vector<Mission> Missions;
  /** Each mission as last shown; same length and order. */
  std::vector<Mission> MissionShadow;
  int CurMission = 0;
  int CurFlight = 0;

  std::string GamePath, ImagesPath, MissionDir;
  /** Full paths, in the order of `Missions`. */
  std::vector<std::string> MissionFiles;
  /** Comma-separated fragments of file names that are not listed. */
  std::string ExcludedNames;

  std::vector<MapRow> Maps;

  /** The user's choice for all missions, and by full path for some, which lasts for the run. */
  UntouchedLines Untouched = UntouchedLines::Anew;
  std::map<std::string, UntouchedLines> UntouchedOf;

  /** True while code fills controls; their handlers must not count that as an edit. */
  bool bLoading = false;
  /** The end of the program has been requested; nothing is filled any more. */
  bool Closing = false;
};

}  // namespace rws
