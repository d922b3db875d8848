#include "mission/line_array.h"

#include <algorithm>

#include "services/faults.h"

namespace rws {

LineArray LineArray::FromFile(std::string bytes) {
  if (bytes.size() > kLargest) throw OverflowFault();
  LineArray lines;
  std::size_t start = 0;
  for (std::size_t hit = 0; (hit = bytes.find('\n', hit)) != bytes.npos; ++hit) {
    if (hit == start || bytes[hit - 1] != '\r') continue;
    lines.starts_.push_back(static_cast<std::uint32_t>(start));
    start = hit + 1;
  }
  if (start < bytes.size()) {
    lines.starts_.push_back(static_cast<std::uint32_t>(start));
    bytes.append("\r\n");
  }
  lines.text_ = std::move(bytes);
  lines.text_.shrink_to_fit();
  lines.starts_.shrink_to_fit();
  return lines;
}

void LineArray::Add(std::string_view indent, std::string_view line) {
  if (text_.size() + indent.size() + line.size() > kLargest) throw OverflowFault();
  starts_.push_back(static_cast<std::uint32_t>(text_.size()));
  text_.append(indent).append(line).append("\r\n", 2);
}

void LineArray::AddRange(const LineArray& lines, std::size_t first, std::size_t last) {
  if (first >= last) return;
  const std::size_t begin = lines.Start(first), size = lines.End(last - 1) + 2 - begin;
  if (text_.size() + size > kLargest) throw OverflowFault();
  // Unsigned arithmetic brings an offset down as well as up.
  const auto shift = static_cast<std::uint32_t>(text_.size() - begin);
  for (std::size_t i = first; i < last; ++i) starts_.push_back(lines.starts_[i] + shift);
  text_.append(lines.text_, begin, size);
}

void LineArray::Set(std::size_t index, std::string_view line) {
  const std::size_t oldSize = End(index) - Start(index);
  text_.replace(starts_[index], oldSize, line);
  const auto shift = static_cast<std::uint32_t>(line.size() - oldSize);
  for (std::size_t i = index + 1; i < starts_.size(); ++i) starts_[i] += shift;
}

void LineArray::Reserve(std::size_t bytes, std::size_t lines) {
  text_.reserve(bytes);
  starts_.reserve(lines);
}

std::size_t LineArray::LineAt(std::size_t offset) const {
  const auto after = std::upper_bound(starts_.begin(), starts_.end(), offset);
  return static_cast<std::size_t>(after - starts_.begin()) - 1;
}

}  // namespace rws
