#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "mission/line_array.h"
#include "mission/shared_text.h"

/** The records of a mission in memory. Plain data, copied by value with all their arrays. Numbers
   of the file stay text unless their type says otherwise; text is in the single-byte encoding,
   paths in the system's own spelling. Arrays count from 0. */
namespace rws {

/** One line of a flight's route section. */
struct Waypoint {
  std::string Alt;     // whole number text
  std::string Speed;   // whole number text
  std::string Type;    // first word of the line
  std::string Marker;  // "&0", or the line's own last two characters when they hold "&"
  double X = 0, Y = 0;
  double Dist = 0;  // from the waypoint before, in tens of the file's unit; 0 for the first
  SharedText Line;  // the whole line as read; "" for a record that never got one
  /** Its place among the rows of the route that it was read from, or -1. */
  std::int32_t KeptRow = -1;
  /** The lines "TRIGGERS" behind it in that text, parted by line feeds, where these are no rows of
      their own. They stay known when its type is made one that has none, or its row is gone. */
  SharedText KeptTriggers;
};

/** What one plane of a flight carries. */
struct PlaneSlot {
  std::string Skill;
  std::string Skin;  // lower-cased file name
  std::string NoseArt;
  std::string Pilot;
  std::string Reserved;  // never filled, but compared
  std::string NumberOn;
};

/** One flight section. */
struct Flight {
  std::string Fuel;
  std::string Planes;     // one digit, 1 to 4
  std::string Skill;      // "0" to "3", or "Custom" when the planes have skills of their own
  std::string Weapons;    // loadout key
  std::string StartTime;  // minutes
  std::string OnlyAI;
  std::string Class;  // without "air."
  std::string Parachute;
  std::string Name;  // section name: regiment code and two digits
  std::array<PlaneSlot, 4> PlaneSlots;
  std::vector<Waypoint> Waypoints;
  std::string LastWaypoint;  // highest waypoint index as text; "" when the route broke off
  std::string ArmyWord;
  std::string Status;  // "", "delete" or "grp"
  bool Shown = false;
  /** Its name in the text that it was read from; "" for a flight that was never read. A copy of a
      flight has that of its source. */
  std::string KeptName;
  /** That text, for a mission whose lines are kept: the whole file, or at least what belongs to the
      flight. */
  LineArray KeptIn;
};

/** One home base of a multiplayer mission. */
struct BornPlace {
  std::int16_t Army = 0;
  std::int32_t Radius = 0;
  std::vector<std::string> Planes;
  std::int32_t X = 0, Y = 0;
  /** False for a record whose line never gave all four; it is not written. */
  bool HasNumbers = true;
  /** The section that lists its aircraft, as it was read, its lines parted by line feeds: those
     that `Planes` has the names of, with what else is said of each. For lines that are kept. */
  SharedText KeptPlanes;
};

/** One mission file. */
struct Mission {
  bool Loaded = false;
  std::string DirPath;  // ends with its separator
  std::string FileName;
  std::string BaseName;
  std::string MapName;
  std::string MapPath;
  std::string Time;
  std::string CloudHeight;
  std::string CloudType;
  std::string Army;
  std::string Player;
  std::string PlayerNum;
  LineArray Lines;
  /** The lines of the file when it was read or last written; none while unread. Tells whether
      another program has changed the file since. */
  LineArray AsRead;
  std::vector<Flight> Flights;
  bool Modified = false;
  bool NotWritten = false;  // the last Update failed: its edits live in memory only
  /** Read so, and written so, that the file keeps what was not edited: `Lines` are the file as it
      is, each with its own line end. */
  bool KeepsLines = false;
  std::vector<BornPlace> BornPlaces;
  bool HasBornPlace = false;
  std::string BriefSoundLine;
  std::string BriefSound;
  std::int16_t TimeConstant = 0;     // a number: 2 is neither on nor off
  std::int16_t WeaponsConstant = 0;  // likewise
};

/** One row of the map table. */
struct MapRow {
  std::string Name, Path;
};

}  // namespace rws
