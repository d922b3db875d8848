#pragma once

#include <functional>
#include <string>
#include <vector>

#include "mission/records.h"

namespace rws {

/** What happens to unsaved changes when a mission is left. */
enum SaveMode { kSaveAsk = 0, kSaveAlways = 1, kSaveNever = 2 };

/** What the document asks of the window. The command line tool fills it with constants. */
struct DocumentWindow {
  std::function<void(bool busy)> ShowBusy;
  /** Requests the end of the program; procedures on the way up return at once. */
  std::function<void()> Close;
  /** True while the window is up and not being built. */
  std::function<bool()> IsUp;
  /** Enables the Update button, pale green, or disables it in the system's colour. */
  std::function<void(bool lit)> LightUpdate;
  /** Row of the weather list, text of the cloud height box, time picker as "hh.mm". */
  std::function<int()> WeatherRow;
  std::function<std::string()> CloudHeightText;
  std::function<std::string()> ClockText;
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

  /** True while code fills controls; their handlers must not count that as an edit. */
  bool bLoading = false;
  bool bBackup = true;
  int SavePromptMode = kSaveAsk;
  /** The end of the program has been requested; nothing is filled any more. */
  bool Closing = false;

  DocumentWindow Window;
};

}  // namespace rws
