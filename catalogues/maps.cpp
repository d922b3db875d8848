#include "catalogues/maps.h"

#include "catalogues/table.h"
#include "services/error_log.h"
#include "services/text.h"

namespace rws {

void LoadMaps(Document& doc, const Services& services) {
  LogAndLeave(services, "LoadMaps", [&] {
    doc.Maps.clear();
    const auto lines = ReadTable(services, "RWS_Maps.txt");
    if (!lines) return;
    for (std::size_t i = 0; i < lines->size(); ++i) {
      const auto columns = SplitAt((*lines)[i], ',');
      doc.Maps.push_back({std::string(columns[0]), std::string(At(columns, 1))});
    }
  });
}

}  // namespace rws
