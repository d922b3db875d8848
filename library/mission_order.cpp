#include "library/mission_order.h"

#include <algorithm>
#include <map>
#include <string>
#include <string_view>

#include "services/code_page.h"

namespace rws {

namespace {

/** A row with what decides for most pairs of rows; texts go on behind it. */
struct Keyed {
  std::uint64_t First;
  std::uint32_t Row;
};

/** The first letters of a text as a number of the same order. */
std::uint64_t FirstLetters(std::string_view text) {
  std::uint64_t first = 0;
  for (std::size_t i = 0; i < sizeof(first); ++i)
    first = first << 8 | (i < text.size() ? static_cast<unsigned char>(text[i]) : 0U);
  return first;
}

/** Of each text that rows show by its number, the place among the others. */
template <class NumberOf, class TextOf>
std::vector<std::uint64_t> Places(const std::vector<std::uint32_t>& rows, NumberOf numberOf,
                                  TextOf textOf) {
  std::map<std::string, std::vector<std::size_t>> numbers;
  std::vector<bool> known;
  for (const auto row : rows) {
    const std::size_t number = numberOf(row);
    if (number >= known.size()) known.resize(number + 1);
    if (known[number]) continue;
    known[number] = true;
    numbers[FoldName(textOf(row))].push_back(number);
  }
  std::vector<std::uint64_t> places(known.size());
  std::uint64_t place = 0;
  for (const auto& [text, same] : numbers) {
    for (const auto number : same) places[number] = place;
    ++place;
  }
  return places;
}

class Order {
 public:
  Order(const MissionIndex& index, const std::vector<std::uint32_t>& rows, MissionColumn by,
        bool descending)
      : index_(index), by_(by), descending_(descending) {
    const auto textOf = [&](std::uint32_t row) { return CellText(index, row, by); };
    if (by == MissionColumn::Folder)
      places_ = Places(
          rows, [&](std::uint32_t row) { return index[row].Folder; }, textOf);
    if (by == MissionColumn::Map)
      places_ = Places(
          rows, [&](std::uint32_t row) { return index[row].Map; }, textOf);
    if (by == MissionColumn::Player)
      places_ = Places(
          rows, [&](std::uint32_t row) { return index.PlayerClass(row); }, textOf);
  }

  std::uint64_t First(std::uint32_t row) const {
    const IndexedMission& mission = index_[row];
    switch (by_) {
      case MissionColumn::Folder:
        return places_[mission.Folder];
      case MissionColumn::Map:
        return places_[mission.Map];
      case MissionColumn::Player:
        return places_[index_.PlayerClass(row)];
      case MissionColumn::Time:
        return mission.Hours < 0 ? 0 : 1 + static_cast<std::uint64_t>(mission.Hours * 3600);
      case MissionColumn::Weather:
        return mission.Weather == IndexedMission::kNoWeather ? 0U : 1U + mission.Weather;
      case MissionColumn::Changed:
        return static_cast<std::uint64_t>(mission.Changed) ^ (std::uint64_t{1} << 63);
      case MissionColumn::Kind:
        return static_cast<std::uint64_t>(mission.Kind) * 2 + mission.KindGuessed;
      default:
        return IsNumberColumn(by_) ? 1U + CellNumber(index_, row, by_) - !mission.IsRead
                                   : FirstLetters(Text(row));
    }
  }

  bool operator()(const Keyed& a, const Keyed& b) const {
    if (a.First != b.First) return (a.First < b.First) != descending_;
    if (const int order = Text(a.Row).compare(Text(b.Row))) return (order < 0) != descending_;
    if (const int order = Name(a.Row).compare(Name(b.Row))) return order < 0;
    if (const int order = index_.Folder(a.Row).compare(index_.Folder(b.Row))) return order < 0;
    return a.Row < b.Row;
  }

 private:
  std::string_view Name(std::uint32_t row) const {
    return index_.Text(row, MissionText::FoldedFileName);
  }
  std::string_view Text(std::uint32_t row) const {
    if (by_ == MissionColumn::Mission) return Name(row);
    if (by_ == MissionColumn::Briefing) return index_.Text(row, MissionText::LowerBriefingName);
    return by_ == MissionColumn::Trouble ? index_.Text(row, MissionText::FaultText)
                                         : std::string_view();
  }

  const MissionIndex& index_;
  MissionColumn by_;
  bool descending_;
  std::vector<std::uint64_t> places_;
};

}  // namespace

void SortMissions(const MissionIndex& index, std::vector<std::uint32_t>& rows, MissionColumn by,
                  bool descending) {
  const Order order(index, rows, by, descending);
  std::vector<Keyed> keyed;
  keyed.reserve(rows.size());
  for (const auto row : rows) keyed.push_back({order.First(row), row});
  std::sort(keyed.begin(), keyed.end(), order);
  for (std::size_t i = 0; i < rows.size(); ++i) rows[i] = keyed[i].Row;
}

}  // namespace rws
