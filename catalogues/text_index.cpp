#include "catalogues/text_index.h"

#include <algorithm>
#include <bit>

namespace rws {

namespace {

/** Letters beyond ASCII count as one: which of them are a pair is the code page's to say. */
char Fold(char c) {
  if (static_cast<unsigned char>(c) >= 0x80) return '\x80';
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

/** The same for texts that are alike but for letter case. */
std::uint32_t Hash(std::string_view text) {
  std::uint64_t hash = 0xCBF29CE484222325;
  for (const char c : text) hash = (hash ^ static_cast<unsigned char>(Fold(c))) * 0x100000001B3;
  // The upper bits must depend on all letters.
  return static_cast<std::uint32_t>(hash * 0x9E3779B97F4A7C15 >> 32);
}

}  // namespace

TextIndex::TextIndex(const std::vector<Entry>& entries) {
  if (entries.empty()) return;
  std::vector<std::uint64_t> sorted;  // the hash in the upper half, the row in the lower one
  sorted.reserve(entries.size());
  for (const auto& entry : entries)
    sorted.push_back(std::uint64_t{Hash(entry.Text)} << 32 | entry.Row);
  std::sort(sorted.begin(), sorted.end());
  // Two texts of one row may be the same.
  sorted.erase(std::unique(sorted.begin(), sorted.end()), sorted.end());
  const auto bits = static_cast<unsigned>(std::bit_width(sorted.size()));
  shift_ = 32 - bits;
  starts_.assign((std::size_t{1} << bits) + 1, 0);
  hashes_.reserve(sorted.size());
  rows_.reserve(sorted.size());
  for (const std::uint64_t entry : sorted) {
    hashes_.push_back(static_cast<std::uint32_t>(entry >> 32));
    rows_.push_back(static_cast<std::uint32_t>(entry));
    ++starts_[(hashes_.back() >> shift_) + 1];
  }
  for (std::size_t i = 1; i < starts_.size(); ++i) starts_[i] += starts_[i - 1];
}

std::span<const std::uint32_t> TextIndex::Find(std::string_view text) const {
  if (rows_.empty()) return {};
  const std::uint32_t hash = Hash(text);
  const std::size_t end = starts_[(hash >> shift_) + 1];
  std::size_t first = starts_[hash >> shift_];
  while (first < end && hashes_[first] != hash) ++first;
  std::size_t last = first;
  while (last < end && hashes_[last] == hash) ++last;
  return std::span(rows_).subspan(first, last - first);
}

}  // namespace rws
