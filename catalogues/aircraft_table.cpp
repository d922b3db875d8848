#include "catalogues/aircraft_table.h"

namespace rws {

AircraftTable::AircraftTable(std::vector<Aircraft> rows) : rows_(std::move(rows)) { MakeIndexes(); }

void AircraftTable::push_back(Aircraft aircraft) {
  rows_.push_back(std::move(aircraft));
  MakeIndexes();
}

void AircraftTable::MakeIndexes() {
  std::vector<TextIndex::Entry> byName, byParked;
  byName.reserve(2 * rows_.size());
  for (std::uint32_t row = 0; row < rows_.size(); ++row) {
    const Aircraft& aircraft = rows_[row];
    byName.push_back({aircraft.Class, row});
    byName.push_back({aircraft.Name, row});
    if (!aircraft.ParkedClass.empty()) byParked.push_back({aircraft.ParkedClass, row});
  }
  byName_ = TextIndex(byName);
  byParked_ = TextIndex(byParked);
}

}  // namespace rws
