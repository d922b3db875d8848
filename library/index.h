#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "library/facts.h"
#include "library/named_values.h"

/** The missions of a library as they are listed and looked for: little enough of each that many
    thousands fit into memory. */
namespace rws {

/** A flight; its words are numbers in the tables of the index. */
struct IndexedFlight {
  std::uint32_t Class : 24;
  std::uint32_t Planes : 8;  // at most 255
  std::uint32_t Squadron : 24;
  std::uint32_t OnlyAI : 8;
};

/** Texts of a mission, by the order in which they stand in memory. */
enum class MissionText : std::uint8_t {
  FileName,
  BriefingName,
  BriefingShort,
  FaultText,  // UTF-8
  FoldedFileName,
  LowerBriefingName,
};
inline constexpr std::size_t kMissionTexts = 6;

/** One mission. Counts stop at the largest number that they can hold. */
struct IndexedMission {
  static constexpr std::uint16_t kNoFlight = UINT16_MAX;

  std::uint64_t Size = 0;
  std::int64_t Changed = 0;       // as a `FileStamp` has it
  std::unique_ptr<char[]> Block;  // flights, then texts
  std::uint32_t Folder = 0, Map = 0, Sound = 0;
  float Hours = -1;  // time of day; below 0 for none
  std::array<std::uint16_t, kMissionTexts> TextLengths{};
  std::uint16_t Flights = 0, Player = kNoFlight;  // the player's flight
  std::uint16_t CloudHeight = 0, Parked = 0, HomeBases = 0, Routes = 0, Planes = 0;
  std::uint8_t Weather = kNoWeather;  // 0 clear to 6 thunder
  std::uint8_t Army = 1;              // 1 red, 2 blue
  MissionKind Kind = MissionKind::Unknown;
  MissionFault Fault = MissionFault::None;
  bool KindGuessed = false;
  bool IsRead = false;  // else only its path is known
  bool IsGone = false;  // the row is nobody's

  static constexpr std::uint8_t kNoWeather = UINT8_MAX;
};
static_assert(sizeof(IndexedMission) <= 100);

/** The tables that give words their names. */
struct IndexNames {
  ShownNames Maps, Aircraft, Squadrons;
};
IndexNames NamesFrom(const std::vector<MapRow>& maps, const Catalogues& catalogues,
                     const CodePage& page);

/** Rows count from 0 and keep their numbers; that of a mission that has gone is never another's, so
    that what is known of a row, or chosen by it, cannot pass to a stranger. For one thread. */
class MissionIndex {
 public:
  MissionIndex(IndexNames names, const CodePage& page);
  MissionIndex(const MissionIndex&) = delete;
  MissionIndex& operator=(const MissionIndex&) = delete;

  /** Adds a mission, or takes what is new of one that it has; one whose stamp says that it is gone
      goes. Gives its row, `npos` for one that is gone. */
  std::size_t Put(const MissionFacts& facts);
  /** Adds a mission of which only the path is known yet; gives the row of one that it has. */
  std::size_t AddUnread(const std::string& path);
  void Remove(const std::string& path);
  void Clear();
  /** The row of a path, its folder spelled as it was when it was put; `npos` for none. */
  std::size_t Find(std::string_view path) const;

  /** Rows, those that are gone too. */
  std::size_t size() const { return rows_.size(); }
  std::size_t Missions() const { return byPath_.size(); }
  const IndexedMission& operator[](std::size_t row) const { return rows_[row]; }
  std::string_view Text(std::size_t row, MissionText text) const;
  /** File and briefing name in lower case, parted by a line feed. */
  std::string_view SoughtText(std::size_t row) const;
  const IndexedFlight* Flights(std::size_t row) const;
  std::string Path(std::size_t row) const;
  const std::string& Folder(std::size_t row) const { return folders_[rows_[row].Folder]; }
  /** The class that the player flies, in `Aircraft`; 0 for none. */
  std::uint32_t PlayerClass(std::size_t row) const;

  NamedValues Maps, Aircraft, Squadrons, Sounds;
  const CodePage& Page() const { return page_; }

  static constexpr std::size_t npos = static_cast<std::size_t>(-1);

 private:
  struct PathKey {
    std::uint32_t Folder;
    std::string_view Name;
  };
  struct PathHash {
    using is_transparent = void;
    const MissionIndex* Index;
    std::size_t operator()(const PathKey& key) const;
    std::size_t operator()(std::uint32_t row) const;
  };
  struct SamePath {
    using is_transparent = void;
    const MissionIndex* Index;
    PathKey KeyOf(std::uint32_t row) const;
    static const PathKey& KeyOf(const PathKey& key) { return key; }
    template <class A, class B>
    bool operator()(const A& a, const B& b) const {
      const PathKey& x = KeyOf(a);
      const PathKey& y = KeyOf(b);
      return x.Folder == y.Folder && x.Name == y.Name;
    }
  };

  std::uint32_t FolderNumber(std::string_view folder);
  std::size_t RowFor(const PathKey& key) const;
  void Fill(IndexedMission& row, const MissionFacts& facts);
  void FillBlock(IndexedMission& row, const MissionFacts& facts);

  CodePage page_;
  std::vector<IndexedMission> rows_;
  std::vector<std::string> folders_;
  TextMap<std::uint32_t> folderNumbers_;
  std::unordered_set<std::uint32_t, PathHash, SamePath> byPath_;
};

/** The words for the weather, from 0 on; "" for a number beyond. */
std::string_view WeatherWord(std::uint8_t weather);
inline constexpr std::uint8_t kWeathers = 7;

}  // namespace rws
