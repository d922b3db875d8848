#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "library/check.h"
#include "library/check_files.h"
#include "library/check_tables.h"
#include "mission/kept_reader.h"

/** The checks of one mission, a function for each theme. */
namespace rws {

/** Where a finding is; the section and the flight may be missing. */
struct FindingPlace {
  const KeptSection* Section = nullptr;
  std::string_view Flight = {};
  std::ptrdiff_t Plane = -1, Waypoint = -1;
  std::size_t Line = KeptText::npos;
};

/** A flight of "[Wing]". */
struct WingFlight {
  std::string_view Name;
  std::size_t Line = 0;                  // in "[Wing]"
  const KeptSection* Section = nullptr;  // null for one without
  std::string_view Class = {};           // without "air."
  const CheckTables::Plane* Plane = nullptr;
  int Planes = 1;  // how many the game makes of it
  bool OnlyAI = false;
};

/** What all checks of a mission work on. */
class Checking {
 public:
  Checking(const CheckTables& tables, GameFiles& game, const MissionToCheck& mission);

  const CheckTables& Tables;
  GameFiles& Game;
  const MissionToCheck& Mission;
  const KeptText Text;
  const KeptSection Main;
  const std::string GamePath;
  std::vector<WingFlight> Wing;
  /** Lines of home bases. */
  const std::vector<std::size_t> Bases;
  std::vector<Finding> Findings;

  /** A picture that is missing, and how many planes have it. */
  struct MissingPicture {
    std::size_t Finding = 0;  // the place of the one finding that tells of it
    std::size_t Planes = 0;
  };
  std::map<std::string, MissingPicture> Missing;

  Finding& Tell(Severity severity, std::string_view kind, const FindingPlace& place,
                std::string text);
  /** Gives the finding told last what mends it, "PATH=VALUE"; nothing where the path would name
      something else too. */
  void MendBy(const std::string& assignment);
  /** "flight[NAME].FIELD=VALUE", if that names this flight alone. */
  void MendFlight(std::string_view flight, const std::string& fieldAndValue);

  /** Mission text in quotes, UTF-8. */
  std::string Quoted(std::string_view bytes) const;
  /** The first flight of that name in "[Wing]", in exactly this spelling. */
  const WingFlight* FlightNamed(std::string_view name) const;
  /** The line and the value of a key, without a value for a missing one. */
  struct KeyValue {
    std::size_t Line = KeptText::npos;
    std::optional<std::string_view> Value = {};
  };
  KeyValue ValueOf(const KeptSection& section, std::string_view key) const;
  /** True for what a waypoint or a target of the mission can name. */
  bool HasObject(std::string_view name);

 private:
  void ListWing();

  std::optional<std::unordered_set<std::string_view>> objects_;
};

/** A whole number as strictly as the game reads it: "2.0" and "+2" are none. */
std::optional<int> StrictWhole(std::string_view text);

void CheckMain(Checking& check);
void CheckPlayer(Checking& check);
void CheckTexts(Checking& check);
void CheckSections(Checking& check);
void CheckWing(Checking& check);
void CheckRoutes(Checking& check);
void CheckHomeBases(Checking& check);
void CheckObjects(Checking& check);
void CheckTargets(Checking& check);
void CheckAge(Checking& check);
void CheckRewriting(Checking& check);

}  // namespace rws
