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

/** The groups of squadrons in their order. Those that hold a regiment are found without a look at
    the thousands of a pack of mods. */
class SquadronTable {
 public:
  SquadronTable() = default;
  SquadronTable(std::vector<Squadron> rows);
  SquadronTable(std::initializer_list<Squadron> rows)
      : SquadronTable(std::vector<Squadron>(rows)) {}

  const std::vector<Squadron>& Rows() const { return rows_; }
  auto begin() const { return rows_.begin(); }
  auto end() const { return rows_.end(); }
  std::size_t size() const { return rows_.size(); }
  bool empty() const { return rows_.empty(); }
  const Squadron& operator[](std::size_t row) const { return rows_[row]; }

  void clear() { *this = SquadronTable(); }

  /** Rows that may hold a regiment of this code, letter case and blanks around it apart, in their
      order; all that do are among them. */
  std::span<const std::uint32_t> Candidates(std::string_view code) const;

 private:
  void MakeIndex();

  std::vector<Squadron> rows_;
  TextIndex byCode_;
};

}  // namespace rws
