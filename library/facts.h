#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "library/mission_kind.h"
#include "library/section_names.h"
#include "services/file_stamp.h"

/** What is known of a mission without its records: enough to list it, to look for it and to tell
    that something is wrong with it. Texts are the mission's own bytes. */
namespace rws {

struct FlightFacts {
  std::string Name;   // of its section
  std::string Class;  // without "air."
  int Planes = 0;     // as the file says it, 0 for no number
  bool OnlyAI = false;
  std::uint32_t Waypoints = 0;
  bool operator==(const FlightFacts&) const = default;
};

/** Why the game cannot play a mission. */
enum class MissionFault : std::uint8_t { None, Unreadable, Empty, NoMain, NoMap };

struct MissionFacts {
  std::string Folder, FileName;  // in the system's spelling
  FileStamp Stamp;               // of the moment before it was read
  MissionKind Kind = MissionKind::Unknown;
  bool KindGuessed = false;
  MissionFault Fault = MissionFault::None;
  std::string FaultText;  // for the user, UTF-8; "" for none

  std::string MapPath, Time, CloudType, CloudHeight, Army, Player, PlayerNum;
  std::string Sound;  // what stands behind "briefSound"
  std::vector<FlightFacts> Flights;
  std::uint32_t Parked = 0;     // aircraft of [NStationary] and [Stationary]
  std::uint32_t HomeBases = 0;  // lines of [BornPlace]
  std::uint32_t Routes = 0;     // flights that have one
  std::string BriefingName, BriefingShort;

  /** Bit i is set if text i of those that were asked for stands in the mission or its briefing. */
  std::uint32_t TextsFound = 0;
  /** Number of the request that it was read for. */
  std::uint32_t Request = 0;

  /** The flight that "player" names, which minds letter case; null for none. */
  const FlightFacts* PlayerFlight() const;
};

/** Takes the facts out of the bytes of missions, in one pass over each and in memory that is used
    again. Sections, keys and comments are what they are to the reader that keeps lines: of two of
    one name the first counts. */
class FactsReader {
 public:
  /** Fills what stands in the file; the rest of `facts` stays as it is. */
  void Read(std::string_view bytes, MissionFacts& facts);

 private:
  enum class In { Other, Ignored, Main, Bases, Parked, Unnamed, Route };
  struct Section {
    std::string_view Name;
    std::string_view Planes, Class, OnlyAI;
    bool HasPlanes = false, HasClass = false, HasOnlyAI = false;
    std::uint32_t Waypoints = 0;
  };

  void TakeLine(std::string_view line);
  void TakeText(std::string_view line);
  void Open(std::string_view name);
  void TakeMain(std::string_view line);
  void TakeFlight(std::string_view line);
  void TakeFlights(MissionFacts& facts) const;
  static void JudgeMain(MissionFacts& facts, bool hasMain, bool hasSections);

  SectionNames names_;
  std::vector<Section> sections_;  // the first of each name
  In in_ = In::Main;
  std::vector<std::string_view> main_;  // the values of its keys
  std::vector<bool> mainKnown_;
  bool hasMain_ = false, hasWing_ = false;
  std::uint32_t parked_ = 0, bases_ = 0;
};

/** What is wrong in plain words; "" for nothing. */
std::string_view FaultWords(MissionFault fault);

}  // namespace rws
