#include "library/index.h"

#include <algorithm>
#include <cstring>

#include "services/numbers.h"
#include "services/paths.h"

namespace rws {

namespace {

/** Longer ones are cut: nobody reads them in a list. */
constexpr std::size_t kMostText = 2000;

template <class Number>
std::uint16_t Counted(Number number) {
  return static_cast<std::uint16_t>(
      std::clamp<std::int64_t>(static_cast<std::int64_t>(number), 0, UINT16_MAX));
}

std::string_view SquadronOf(std::string_view flightName) {
  return flightName.size() < 2 ? flightName : flightName.substr(0, flightName.size() - 2);
}

std::string_view FolderKey(std::string_view folder) {
  while (!folder.empty() && IsSeparator(folder.back())) folder.remove_suffix(1);
  return folder;
}

/** The side whose mission it is: the game takes red for a number that it does not know. */
std::uint8_t ArmyOf(const std::string& text) { return ParseNumber(text) == 2.0 ? 2 : 1; }

std::uint8_t WeatherOf(const std::string& text) {
  const auto number = ParseNumber(text);
  if (!number || *number < 0 || *number >= kWeathers) return IndexedMission::kNoWeather;
  return static_cast<std::uint8_t>(*number);
}

float HoursOf(const std::string& text) {
  const auto hours = ParseNumber(text);
  return hours && *hours >= 0 && *hours < 24 ? static_cast<float>(*hours) : -1;
}

}  // namespace

std::string_view WeatherWord(std::uint8_t weather) {
  constexpr std::array<std::string_view, kWeathers> kWords = {
      "Clear", "Good", "Hazy", "Poor", "Blind", "Rain/Snow", "Thunder"};
  return weather < kWeathers ? kWords[weather] : std::string_view();
}

IndexNames NamesFrom(const std::vector<MapRow>& maps, const Catalogues& catalogues,
                     const CodePage& page) {
  return {MapNames(maps, page), AircraftNames(catalogues, page), SquadronNames(catalogues, page)};
}

MissionIndex::MissionIndex(IndexNames names, const CodePage& page)
    : Maps(std::move(names.Maps), page),
      Aircraft(std::move(names.Aircraft), page),
      Squadrons(std::move(names.Squadrons), page),
      Sounds(ShownNames(page), page),
      page_(page),
      byPath_(0, PathHash{this}, SamePath{this}) {}

std::size_t MissionIndex::PathHash::operator()(const PathKey& key) const {
  return std::hash<std::string_view>()(key.Name) ^ (std::size_t{key.Folder} * 0x9E3779B97F4A7C15U);
}

std::size_t MissionIndex::PathHash::operator()(std::uint32_t row) const {
  return (*this)(PathKey{Index->rows_[row].Folder, Index->Text(row, MissionText::FileName)});
}

MissionIndex::PathKey MissionIndex::SamePath::KeyOf(std::uint32_t row) const {
  return {Index->rows_[row].Folder, Index->Text(row, MissionText::FileName)};
}

std::uint32_t MissionIndex::FolderNumber(std::string_view folder) {
  const auto key = FolderKey(folder);
  const auto found = folderNumbers_.find(key);
  if (found != folderNumbers_.end()) return found->second;
  const auto number = static_cast<std::uint32_t>(folders_.size());
  folders_.emplace_back(folder);
  folderNumbers_.emplace(key, number);
  return number;
}

std::size_t MissionIndex::RowFor(const PathKey& key) const {
  const auto found = byPath_.find(key);
  return found == byPath_.end() ? npos : *found;
}

std::size_t MissionIndex::Find(std::string_view path) const {
  const std::string folder = GetParentFolderName(path), name = GetFileName(path);
  const auto found = folderNumbers_.find(FolderKey(folder));
  if (found == folderNumbers_.end()) return npos;
  return RowFor({found->second, name});
}

std::size_t MissionIndex::Put(const MissionFacts& facts) {
  const std::uint32_t folder = FolderNumber(facts.Folder);
  std::size_t row = RowFor({folder, facts.FileName});
  if (!facts.Stamp.Exists && facts.Fault == MissionFault::Unreadable) {
    if (row != npos) Remove(Path(row));
    return npos;
  }
  const bool isNew = row == npos;
  if (isNew) {
    row = rows_.size();
    rows_.emplace_back();
  }
  rows_[row] = {};
  rows_[row].Folder = folder;
  Fill(rows_[row], facts);
  if (isNew) byPath_.insert(static_cast<std::uint32_t>(row));
  return row;
}

std::size_t MissionIndex::AddUnread(const std::string& path) {
  const std::size_t known = Find(path);
  if (known != npos) return known;
  MissionFacts facts;
  facts.Folder = GetParentFolderName(path);
  facts.FileName = GetFileName(path);
  const std::size_t row = Put(facts);
  rows_[row].IsRead = false;
  return row;
}

void MissionIndex::Remove(const std::string& path) {
  const std::size_t row = Find(path);
  if (row == npos) return;
  byPath_.erase(byPath_.find(static_cast<std::uint32_t>(row)));
  rows_[row] = {};
  rows_[row].IsGone = true;
}

void MissionIndex::Clear() {
  byPath_.clear();
  rows_.clear();
}

void MissionIndex::Fill(IndexedMission& row, const MissionFacts& facts) {
  row.Size = facts.Stamp.Size;
  row.Changed = facts.Stamp.Modified;
  row.Map = Maps.NumberOf(facts.MapPath);
  row.Sound = Sounds.NumberOf(facts.Sound);
  row.Hours = HoursOf(facts.Time);
  row.Weather = WeatherOf(facts.CloudType);
  row.CloudHeight = Counted(std::clamp(Val(facts.CloudHeight), 0.0, 65535.0));
  row.Army = ArmyOf(facts.Army);
  row.Parked = Counted(facts.Parked);
  row.HomeBases = Counted(facts.HomeBases);
  row.Routes = Counted(facts.Routes);
  row.Kind = facts.Kind;
  row.KindGuessed = facts.KindGuessed;
  row.Fault = facts.Fault;
  row.IsRead = true;
  FillBlock(row, facts);
}

void MissionIndex::FillBlock(IndexedMission& row, const MissionFacts& facts) {
  row.Flights = Counted(facts.Flights.size());
  const std::array<std::string, kMissionTexts> texts = {
      facts.FileName,
      facts.BriefingName.substr(0, kMostText),
      facts.BriefingShort.substr(0, kMostText),
      facts.FaultText.substr(0, kMostText),
      FoldName(facts.FileName),
      page_.LCase(facts.BriefingName).substr(0, kMostText)};
  std::size_t bytes = row.Flights * sizeof(IndexedFlight) + 1;
  for (const auto& text : texts) bytes += text.size();
  row.Block = std::make_unique<char[]>(bytes);
  char* at = row.Block.get();
  std::int64_t planes = 0;
  const FlightFacts* const player = facts.PlayerFlight();
  for (std::uint16_t i = 0; i < row.Flights; ++i) {
    const FlightFacts& flight = facts.Flights[i];
    if (&flight == player) row.Player = i;
    const int count = std::clamp(flight.Planes, 0, 255);
    planes += count;
    const IndexedFlight indexed{Aircraft.NumberOf(flight.Class), static_cast<std::uint32_t>(count),
                                Squadrons.NumberOf(SquadronOf(flight.Name)), flight.OnlyAI};
    std::memcpy(at, &indexed, sizeof(indexed));
    at += sizeof(indexed);
  }
  row.Planes = Counted(planes);
  for (std::size_t i = 0; i < texts.size(); ++i) {
    if (i + 1 == texts.size()) *at++ = '\n';
    std::memcpy(at, texts[i].data(), texts[i].size());
    at += texts[i].size();
    row.TextLengths[i] = static_cast<std::uint16_t>(texts[i].size());
  }
}

std::string_view MissionIndex::Text(std::size_t row, MissionText text) const {
  const IndexedMission& mission = rows_[row];
  if (!mission.Block) return {};
  const char* at = mission.Block.get() + mission.Flights * sizeof(IndexedFlight);
  const auto wanted = static_cast<std::size_t>(text);
  for (std::size_t i = 0; i < wanted; ++i) at += mission.TextLengths[i];
  if (text == MissionText::LowerBriefingName) ++at;
  return {at, mission.TextLengths[wanted]};
}

std::string_view MissionIndex::SoughtText(std::size_t row) const {
  const std::string_view name = Text(row, MissionText::FoldedFileName);
  const std::size_t behind =
      rows_[row].TextLengths[static_cast<std::size_t>(MissionText::LowerBriefingName)];
  return name.data() ? std::string_view(name.data(), name.size() + 1 + behind) : name;
}

const IndexedFlight* MissionIndex::Flights(std::size_t row) const {
  return reinterpret_cast<const IndexedFlight*>(rows_[row].Block.get());
}

std::string MissionIndex::Path(std::size_t row) const {
  return BuildPath(Folder(row), Text(row, MissionText::FileName));
}

std::uint32_t MissionIndex::PlayerClass(std::size_t row) const {
  const IndexedMission& mission = rows_[row];
  return mission.Player == IndexedMission::kNoFlight ? 0 : Flights(row)[mission.Player].Class;
}

}  // namespace rws
