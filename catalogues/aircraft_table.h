#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "catalogues/records.h"
#include "catalogues/text_index.h"

namespace rws {

/** The aircraft in their order, from 0 on. Those of a name or class are found without a look at
    each, so that thousands of a pack of mods cost no more than the few hundred of the game; what
    they are found by therefore changes only with all rows. */
class AircraftTable {
 public:
  AircraftTable() = default;
  AircraftTable(std::vector<Aircraft> rows);
  AircraftTable(std::initializer_list<Aircraft> rows)
      : AircraftTable(std::vector<Aircraft>(rows)) {}

  const std::vector<Aircraft>& Rows() const { return rows_; }
  auto begin() const { return rows_.begin(); }
  auto end() const { return rows_.end(); }
  std::size_t size() const { return rows_.size(); }
  bool empty() const { return rows_.empty(); }
  const Aircraft& operator[](std::size_t row) const { return rows_[row]; }
  const Aircraft& back() const { return rows_.back(); }

  /** For a few: many are better given at once. */
  void push_back(Aircraft aircraft);
  void clear() { *this = AircraftTable(); }
  /** What an aircraft carries may change on its own. */
  std::vector<Loadout>& Loadouts(std::size_t row) { return rows_[row].Weapons; }

  /** Rows that may have this name or class, letter case apart, in their order. All that have it are
      among them, others may be, so that each is to be compared. */
  std::span<const std::uint32_t> Candidates(std::string_view nameOrClass) const {
    return byName_.Find(nameOrClass);
  }
  /** The same for the class of parked ones. */
  std::span<const std::uint32_t> ParkedCandidates(std::string_view parkedClass) const {
    return byParked_.Find(parkedClass);
  }

 private:
  void MakeIndexes();

  std::vector<Aircraft> rows_;
  TextIndex byName_, byParked_;
};

}  // namespace rws
