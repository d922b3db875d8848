#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace rws {

/** Rows of a table by texts, letter case apart, in few and flat arrays: among thousands of rows
   what is looked at must be near together. What is found has a text of the same hash, so that each
   row is to be compared. */
class TextIndex {
 public:
  /** A text and the row that it leads to. */
  struct Entry {
    std::string_view Text;
    std::uint32_t Row = 0;
  };

  TextIndex() = default;
  explicit TextIndex(const std::vector<Entry>& entries);

  /** Rows that may have this text, in their order; all that have it are among them. */
  std::span<const std::uint32_t> Find(std::string_view text) const;

 private:
  std::vector<std::uint32_t> hashes_, rows_;  // side by side, by hash and then by row
  std::vector<std::uint32_t> starts_;         // places in `hashes_`, by their upper bits
  unsigned shift_ = 0;
};

}  // namespace rws
