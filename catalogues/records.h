#pragma once

#include <optional>
#include <string>
#include <vector>

/** The rows of the data tables and of the paint schemes. Plain data, copied by value. What comes
    from a table is in the single-byte encoding of mission text; names of files and folders are in
    the system's own spelling. Arrays count from 0. */
namespace rws {

/** What an aircraft can carry: the user sees a text, a mission stores a key. */
struct Loadout {
  std::string Text;
  std::optional<std::string> Key;  // nothing for a line of the table without one
  bool operator==(const Loadout&) const = default;
};

/** One aircraft of the game. */
struct Aircraft {
  std::string Side;  // "Red" or "Blue"
  std::string Name;
  std::string Class;             // without "air."
  std::string Folder;            // of its skins, without "_", "-" and "." unless the table gives it
  std::string Companion;         // class of an aircraft that travels with it, mostly ""
  std::vector<Loadout> Weapons;  // the default first, the empty one last
  bool Flyable = false;
  bool NoseArtOk = false;
  std::string ParkedClass = {};  // of parked ones where it is another than `Class`, mostly ""
};

struct Country {
  std::string Name;
  std::string AltName;
  std::string StaticCode;  // in lines of parked aircraft
  std::string FlightCode;
};

struct Regiment {
  std::string Code;      // a flight's name without its two digits
  std::string UserData;  // free text
};

/** A group of regiments that follow each other in the table. */
struct Squadron {
  std::string Color;  // "red", "blue" or "white"
  std::string Country;
  std::string Name;
  std::vector<Regiment> Regiments;
};

/** An aircraft as home bases spell it. */
struct DogFightPlane {
  std::string DisplayName;
  std::string InternalName;
  std::string State;
  bool NotDefault = false;
};

/** The folder with the skins of one aircraft. */
struct SkinFolder {
  std::string Folder;              // its name without "_" and "-"
  std::string Path;                // full path, its name as on disk
  std::vector<std::string> Files;  // "default", then bare names of its "*.bmp" files
};

}  // namespace rws
