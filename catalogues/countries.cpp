#include "catalogues/countries.h"

#include "catalogues/table.h"
#include "services/error_log.h"
#include "services/text.h"

namespace rws {

bool LoadAC(Catalogues& catalogues, const Services& services) {
  catalogues.Countries.clear();
  LogAndLeave(services, "LoadAC", [&] {
    const auto lines = ReadTable(services, "RWS_Countries.txt");
    if (!lines) return;
    for (std::size_t i = 0; i < lines->size(); ++i) {
      const auto columns = SplitAt((*lines)[i], ',');
      const auto column = [&](std::ptrdiff_t index) { return std::string(At(columns, index)); };
      catalogues.Countries.push_back({column(0), column(1), column(2), column(3)});
    }
  });
  return !catalogues.Countries.empty();
}

}  // namespace rws
