#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "mission/document.h"
#include "services/preferences.h"
#include "services/services.h"

namespace rws {

/** What the command line asked for. */
struct StartArguments {
  /** Directory and mission, or "". */
  std::string ComLinePath, ComLineMission;
  /** The argument held "properties". */
  bool ComLineProperties = false;
  /** The argument was a briefing's file: its mission's briefing is opened. */
  bool IsBriefing = false;
  /** The argument, if it named nothing. */
  std::string Unfound;
  /** The third and fourth part, which nothing uses yet. */
  bool ThirdPartEmpty = false;
  std::string FourthPart;
};

/** Reads what the user has chosen in the preferences. */
void ReadStartSettings(Document& doc, Preferences& prefs, const Services& services);

/** Writes what a bug report needs to the log: system, program directory, locale. */
void LogStartUp(const Services& services);

/** True if at least one file of the directory matches "il2*.*". */
bool IsGamePath(const Services& services, const std::string& directory);

/** Tries to find the game directory by asking for it; sets `GamePath`, to "" when it was not found.
   A directory with a "conf.ini" is not asked about and is not found either; the question of
    `FindGamePath` follows. */
void LocateGamePath(Document& doc, const Services& services, const std::string& directory);

/** Asks until `GamePath` is a game directory or the user gives up, and stores it. False when the
    program cannot go on. */
bool FindGamePath(Document& doc, const Services& services);

/** Where the folder browser begins when no game directory is known: on systems with Wine or Steam
   at the first place that is there, else "". */
std::string LikelyGameFolder(const Services& services);

/** Reads the command line: a path of a directory or mission, then parts behind commas, or
   "-restore", which wipes all settings. A text that names an existing file or directory is not
   split. */
void ChkComLine(Document& doc, Preferences& prefs, StartArguments& arguments,
                const Services& services, std::string_view commandLine);

/** What a path names: a directory, a mission in its directory or a briefing; `Unfound` for
    anything else. */
StartArguments ArgumentsFor(const Services& services, const std::string& path);

/** The path that a command line names, from the root on; "" when it names none. Looks only. */
std::string PathAskedFor(const Services& services, std::string_view commandLine);

/** Index of the mission that the command line named, or -1. The exact name goes before one that
    differs in letter case. */
int FindComLineMission(const Document& doc, const StartArguments& arguments);

}  // namespace rws
