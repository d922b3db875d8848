#include "catalogues/table.h"

#include <algorithm>

#include "catalogues/table_text.h"
#include "services/text.h"

namespace rws {

std::optional<LineArray> ReadTable(const Services& services, const std::string& name) {
  const std::string path = DataFile(services, name);
  if (!services.Files.FileExists(path)) return {};
  const std::string bytes = TableText(services.Page, services.Files.ReadFile(path));
  LineArray lines;
  lines.Reserve(bytes.size() + 2, 0);
  for (std::size_t start = 0; start < bytes.size();) {
    const std::size_t end = std::min(bytes.find('\n', start), bytes.size());
    std::string_view line(bytes.data() + start, end - start);
    while (line.ends_with('\r')) line.remove_suffix(1);
    if (!Trim(line).empty()) lines.Add(line);
    start = end + 1;
  }
  return lines;
}

std::string Column(const std::vector<std::string_view>& columns, std::size_t index) {
  return index < columns.size() ? std::string(columns[index]) : "";
}

}  // namespace rws
