#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "mission/document.h"
#include "services/services.h"
#include "services/work.h"

/** In which missions an aircraft flies, and what it carries there: all that can be known of one
    that no table and no list tells of. */
namespace rws {

/** A mission that is looked at: as it is in memory, or in its file. */
struct SeenIn {
  std::string Path;
  const Mission* InMemory = nullptr;
};

struct SeenAircraft {
  /** Keys as missions spell them, each once, in the order in which they came; "default" and
      "none", which every aircraft has, are not among them. */
  std::vector<std::string> Loadouts;
  std::vector<std::string> Missions;  // names of their files
  std::size_t NotRead = 0;            // missions that could not be read; each is logged
  bool IsStopped = false;
};

/** Looks for flights of a class, given as mission text without "air.". Given up, it has what was
    found until then. */
SeenAircraft LookForAircraft(const Services& services, std::string_view aircraftClass,
                             const std::vector<SeenIn>& missions, const TellWork& told = {});

/** "Seen in 3 missions: a.mis, b.mis, c.mis"; of many the first are named. UTF-8. */
std::string SeenText(const SeenAircraft& seen);
/** The missions alone, as an entry keeps them: "a.mis, b.mis and 7 more". */
std::string SeenMissionsText(const SeenAircraft& seen);

}  // namespace rws
