#include "catalogues/aircraft_table.h"

#include <algorithm>
#include <bit>

namespace rws {

namespace {

/** Letters beyond ASCII count as one: which of them are a pair is the code page's to say. */
char Fold(char c) {
  if (static_cast<unsigned char>(c) >= 0x80) return '\x80';
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

}  // namespace

AircraftTable::AircraftTable(std::vector<Aircraft> rows) : rows_(std::move(rows)) { MakeIndexes(); }

void AircraftTable::push_back(Aircraft aircraft) {
  rows_.push_back(std::move(aircraft));
  MakeIndexes();
}

void AircraftTable::MakeIndexes() {
  std::vector<std::uint64_t> byName, byParked;
  byName.reserve(2 * rows_.size());
  for (std::size_t row = 0; row < rows_.size(); ++row) {
    const auto entry = [&](std::string_view text) {
      return std::uint64_t{Hash(text)} << 32 | static_cast<std::uint32_t>(row);
    };
    const Aircraft& aircraft = rows_[row];
    byName.push_back(entry(aircraft.Class));
    byName.push_back(entry(aircraft.Name));
    if (!aircraft.ParkedClass.empty()) byParked.push_back(entry(aircraft.ParkedClass));
  }
  byName_ = Index(std::move(byName));
  byParked_ = Index(std::move(byParked));
}

std::uint32_t AircraftTable::Hash(std::string_view text) {
  std::uint64_t hash = 0xCBF29CE484222325;
  for (const char c : text) hash = (hash ^ static_cast<unsigned char>(Fold(c))) * 0x100000001B3;
  // The upper bits must depend on all letters.
  return static_cast<std::uint32_t>(hash * 0x9E3779B97F4A7C15 >> 32);
}

AircraftTable::Index::Index(std::vector<std::uint64_t> entries) {
  if (entries.empty()) return;
  std::sort(entries.begin(), entries.end());
  // A class that is its own name.
  entries.erase(std::unique(entries.begin(), entries.end()), entries.end());
  const auto bits = static_cast<unsigned>(std::bit_width(entries.size()));
  shift_ = 32 - bits;
  starts_.assign((std::size_t{1} << bits) + 1, 0);
  hashes_.reserve(entries.size());
  rows_.reserve(entries.size());
  for (const std::uint64_t entry : entries) {
    hashes_.push_back(static_cast<std::uint32_t>(entry >> 32));
    rows_.push_back(static_cast<std::uint32_t>(entry));
    ++starts_[(hashes_.back() >> shift_) + 1];
  }
  for (std::size_t i = 1; i < starts_.size(); ++i) starts_[i] += starts_[i - 1];
}

std::span<const std::uint32_t> AircraftTable::Index::Find(std::uint32_t hash) const {
  if (rows_.empty()) return {};
  const std::size_t end = starts_[(hash >> shift_) + 1];
  std::size_t first = starts_[hash >> shift_];
  while (first < end && hashes_[first] != hash) ++first;
  std::size_t last = first;
  while (last < end && hashes_[last] == hash) ++last;
  return std::span(rows_).subspan(first, last - first);
}

}  // namespace rws
