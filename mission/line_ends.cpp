#include "mission/line_ends.h"

#include <algorithm>

#include "services/faults.h"
#include "services/text.h"

namespace rws {

namespace {

/** True if the first line reaches to the end of the file. */
bool IsOneLine(std::string_view bytes) {
  const std::size_t end = bytes.find("\r\n");
  return end == bytes.npos || end + 2 == bytes.size();
}

}  // namespace

std::optional<std::string> RepairedLineEnds(std::string_view bytes) {
  if (!IsOneLine(bytes)) return {};
  if (bytes.ends_with("\r\n")) bytes.remove_suffix(2);
  std::size_t parts = 0;
  std::string text;
  for (std::size_t start = 0; start <= bytes.size(); ++parts) {
    const std::size_t end = std::min(bytes.find('\n', start), bytes.size());
    const auto part = bytes.substr(start, end - start);
    if (!Trim(part).empty()) text.append(part).append("\r\n");
    start = end + 1;
  }
  if (parts <= 2) return {};
  return text;
}

LineArray LinesOfFile(std::string bytes) {
  if (auto repaired = RepairedLineEnds(bytes)) bytes = std::move(*repaired);
  return LineArray::FromFile(std::move(bytes));
}

std::string NormaliseLineEnds(const Services& services, const std::string& path) {
  std::string reason;
  const auto repair = [&] {
    const auto repaired = RepairedLineEnds(services.Files.ReadFile(path));
    if (!repaired) return;
    services.Files.RequireWritable(path);
    services.Files.ReplaceFile(path, *repaired);
  };
  Trap(repair, [&](const Fault& caught) { reason = caught.Text; });
  return reason;
}

}  // namespace rws
