#include "catalogues/dogfight.h"

#include "catalogues/table.h"
#include "services/error_log.h"
#include "services/text.h"

namespace rws {

void ReadDogFight(Catalogues& catalogues, const Services& services) {
  auto& planes = catalogues.DogFightAircraft;
  planes = catalogues.ListedDogFight;
  LogAndLeave(services, "ReadDogFight", [&] {
    if (!planes.empty()) return;
    const auto lines = ReadTable(services, "RWS_DF.txt");
    if (!lines) return;
    for (std::size_t i = 0; i < lines->size(); ++i) {
      const auto columns = SplitAt((*lines)[i], ',');
      const auto column = [&](std::ptrdiff_t index) { return std::string(At(columns, index)); };
      planes.push_back({column(1), column(2), "R", column(0) == "F"});
    }
  });
  for (const auto& own : catalogues.OwnDogFight) {
    std::erase_if(planes, [&](const auto& one) { return one.InternalName == own.InternalName; });
    planes.push_back(own);
  }
}

}  // namespace rws
