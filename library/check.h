#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "library/mission_kind.h"
#include "mission/line_array.h"
#include "services/code_page.h"
#include "values/value_path.h"

/** What the game refuses, drops or stumbles over in a mission. */
namespace rws {

class CheckTables;
class GameFiles;

enum class Severity : std::uint8_t {
  Note,     // worth knowing; the mission plays as it is written
  Warning,  // the game does something else than is written
  Error     // the game refuses the mission or drops a part of it
};

/** "note", "warning", "error". */
std::string_view SeverityWord(Severity severity);

/** One thing that is wrong, and where. Names are the mission's own bytes; numbers count from 0,
    below 0 for none. */
struct Finding {
  rws::Severity Severity = Severity::Note;
  std::string_view Kind;     // "fuel", for programs
  std::string Section = {};  // as the file spells it
  std::string Flight = {};   // name of its section
  std::int32_t Plane = -1;
  std::int32_t Waypoint = -1;  // row of the route, lines "TRIGGERS" not counted
  std::int32_t Line = -1;      // of the file
  std::string Text = {};       // a sentence, UTF-8
  /** What puts it right where there is no doubt. */
  std::optional<Assignment> Mend = {};
};

/** Where it is, for the user: "flight r0100, plane 2, waypoint 3, line 57"; UTF-8. */
std::string PlaceText(const Finding& finding, const CodePage& page);

struct MissionToCheck {
  std::string Path;
  /** The file as it is, or as it is about to be written. */
  LineArray Lines;
  MissionKind Kind = MissionKind::Unknown;
  /** The kind is not told by the folder. */
  bool KindGuessed = true;
  /** Name of the file with its briefing; "" for none. */
  std::string Briefing;
};

/** All findings of a mission, as they follow each other in the file, those of no line first. Reads
    nothing but the game's folders. Several threads may call it at once with the same tables and
    game. */
std::vector<Finding> CheckMission(const CheckTables& tables, GameFiles& game,
                                  const MissionToCheck& mission);

}  // namespace rws
