#include "mission/line_array.h"

#include <algorithm>

#include "services/faults.h"

namespace rws {

const LineArray::Buffer LineArray::kNone;

namespace {

/** A line that is to follow the last one of a file without a line end must not run into it. */
void EndLast(std::string& text) {
  if (!text.empty() && text.back() != '\n' && text.back() != '\r') text.append("\r\n");
}

}  // namespace

LineArray LineArray::FromFile(std::string bytes) {
  if (bytes.size() > kLargest) throw OverflowFault();
  std::vector<std::uint32_t> starts;
  starts.reserve(bytes.size() / 32);
  std::size_t start = 0;
  for (std::size_t hit = 0; (hit = bytes.find('\n', hit)) != bytes.npos; ++hit) {
    if (hit == start || bytes[hit - 1] != '\r') continue;
    starts.push_back(static_cast<std::uint32_t>(start));
    start = hit + 1;
  }
  if (start < bytes.size()) {
    starts.push_back(static_cast<std::uint32_t>(start));
    bytes.append("\r\n");
  }
  bytes.shrink_to_fit();
  starts.shrink_to_fit();
  LineArray lines;
  lines.buffer_ = std::make_shared<Buffer>(Buffer{std::move(bytes), std::move(starts)});
  return lines;
}

LineArray LineArray::FromFileAsIs(std::string bytes) {
  if (bytes.size() > kLargest) throw OverflowFault();
  std::vector<std::uint32_t> starts;
  // Each is looked for on its own: a search for either goes byte by byte.
  std::size_t feed = 0, carriage = 0;
  for (std::size_t start = 0; start < bytes.size();) {
    starts.push_back(static_cast<std::uint32_t>(start));
    if (feed != bytes.npos && feed <= start) feed = bytes.find('\n', start);
    if (carriage != bytes.npos && carriage <= start) carriage = bytes.find('\r', start);
    start = std::min({feed, carriage, bytes.size() - 1}) + 1;
    if (bytes[start - 1] == '\r' && start < bytes.size() && bytes[start] == '\n') ++start;
  }
  bytes.shrink_to_fit();
  starts.shrink_to_fit();
  LineArray lines;
  lines.buffer_ = std::make_shared<Buffer>(Buffer{std::move(bytes), std::move(starts)});
  return lines;
}

LineArray::Buffer& LineArray::Own() {
  if (buffer_.use_count() != 1) buffer_ = std::make_shared<Buffer>(Kept());
  return *buffer_;
}

void LineArray::Add(std::string_view indent, std::string_view line) {
  auto& [text, starts] = Own();
  if (text.size() + indent.size() + line.size() > kLargest) throw OverflowFault();
  EndLast(text);
  starts.push_back(static_cast<std::uint32_t>(text.size()));
  text.append(indent).append(line).append("\r\n", 2);
}

void LineArray::AddRange(const LineArray& lines, std::size_t first, std::size_t last) {
  if (first >= last) return;
  const std::size_t begin = lines.Start(first), size = Behind(lines.Kept(), last - 1) - begin;
  auto& [text, starts] = Own();
  EndLast(text);
  if (text.size() + size > kLargest) throw OverflowFault();
  // Unsigned arithmetic brings an offset down as well as up.
  const auto shift = static_cast<std::uint32_t>(text.size() - begin);
  const std::size_t before = starts.size();
  starts.resize(before + last - first);
  const std::uint32_t* const from = lines.Kept().Starts.data() + first;
  std::transform(from, from + (last - first), starts.data() + before,
                 [shift](std::uint32_t start) { return start + shift; });
  text.append(lines.FileText(), begin, size);
}

void LineArray::Set(std::size_t index, std::string_view line) {
  if ((*this)[index] == line) return;
  const std::size_t start = Start(index), oldSize = End(index) - start;
  auto& [text, starts] = Own();
  text.replace(start, oldSize, line);
  const auto shift = static_cast<std::uint32_t>(line.size() - oldSize);
  for (std::size_t i = index + 1; i < starts.size(); ++i) starts[i] += shift;
}

void LineArray::Reserve(std::size_t bytes, std::size_t lines) {
  auto& [text, starts] = Own();
  text.reserve(bytes);
  starts.reserve(lines);
}

std::size_t LineArray::LineAt(std::size_t offset) const {
  const auto& starts = Kept().Starts;
  const auto after = std::upper_bound(starts.begin(), starts.end(), offset);
  return static_cast<std::size_t>(after - starts.begin()) - 1;
}

}  // namespace rws
