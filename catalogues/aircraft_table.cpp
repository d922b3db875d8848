#include "catalogues/aircraft_table.h"

#include <algorithm>

namespace rws {

AircraftTable::AircraftTable(std::vector<Aircraft> rows) {
  rows_.reserve(rows.size());
  byName_.reserve(2 * rows.size());
  for (auto& row : rows) push_back(std::move(row));
}

void AircraftTable::push_back(Aircraft aircraft) {
  const auto row = static_cast<std::uint32_t>(rows_.size());
  byName_[aircraft.Class].push_back(row);
  if (!FoldEqual()(aircraft.Name, aircraft.Class)) byName_[aircraft.Name].push_back(row);
  if (!aircraft.ParkedClass.empty()) byParked_[aircraft.ParkedClass].push_back(row);
  rows_.push_back(std::move(aircraft));
}

std::size_t AircraftTable::FoldHash::operator()(std::string_view text) const {
  std::uint64_t hash = 0xCBF29CE484222325;
  for (const char c : text) hash = (hash ^ static_cast<unsigned char>(Fold(c))) * 0x100000001B3;
  return static_cast<std::size_t>(hash ^ (hash >> 32));
}

bool AircraftTable::FoldEqual::operator()(std::string_view a, std::string_view b) const {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return Fold(x) == Fold(y); });
}

std::span<const std::uint32_t> AircraftTable::Found(const Index& index, std::string_view text) {
  const auto found = index.find(text);
  if (found == index.end()) return {};
  return found->second;
}

}  // namespace rws
