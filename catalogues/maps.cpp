#include "catalogues/maps.h"

#include "services/error_log.h"
#include "services/text.h"

namespace rws {

void LoadMaps(Document& doc, const Services& services) {
  LogAndLeave(services, "LoadMaps", [&] {
    doc.Maps.clear();
    const std::string path = DataFile(services, "RWS_Maps.txt");
    if (!services.Files.FileExists(path)) return;
    const auto lines = LineArray::FromFile(services.Files.ReadFile(path));
    for (std::size_t i = 0; i < lines.size(); ++i) {
      if (Trim(lines[i]).empty()) continue;
      const auto columns = SplitAt(lines[i], ',');
      doc.Maps.push_back({std::string(columns[0]), std::string(At(columns, 1))});
    }
  });
}

}  // namespace rws
