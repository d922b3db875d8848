#include "library/seen_aircraft.h"

#include <algorithm>

#include "mission/kept_reader.h"
#include "mission/line_array.h"
#include "services/error_log.h"
#include "services/faults.h"
#include "services/numbers.h"
#include "services/paths.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr std::string_view kPackage = "air.";
constexpr std::size_t kNamed = 5;

class Looking {
 public:
  Looking(const CodePage& page, std::string_view aircraftClass)
      : page_(page), class_(aircraftClass) {}

  void LookAt(const SeenIn& mission, const FileSystem& files) {
    const bool flies = mission.InMemory
                           ? LookAtRecords(*mission.InMemory)
                           : LookAtText(files.ReadFile(mission.Path, LineArray::kLargest));
    if (flies) Seen.Missions.push_back(GetFileName(mission.Path));
  }

  SeenAircraft Seen;

 private:
  bool LookAtRecords(const Mission& mission) {
    bool flies = false;
    for (const auto& flight : mission.Flights)
      if (flight.Class == class_) flies = true, Take(flight.Weapons);
    return flies;
  }

  bool LookAtText(std::string bytes) {
    // Most missions do not have it at all.
    if (bytes.find(class_) == bytes.npos) return false;
    const LineArray lines = LineArray::FromFileAsIs(std::move(bytes));
    const KeptText text(lines);
    bool flies = false;
    for (const auto* section : FlightSections(text)) {
      std::string_view flown = text.ValueOf(*section, "Class");
      if (FindNoCase(flown, kPackage, 0) == 0) flown.remove_prefix(kPackage.size());
      if (flown == class_) flies = true, Take(text.ValueOf(*section, "weapons"));
    }
    return flies;
  }

  void Take(std::string_view loadout) {
    const std::string lower = page_.LCase(loadout);
    if (lower.empty() || lower == "default" || lower == "none") return;
    if (std::find(lower_.begin(), lower_.end(), lower) != lower_.end()) return;
    lower_.push_back(lower);
    Seen.Loadouts.emplace_back(loadout);
  }

  const CodePage& page_;
  const std::string_view class_;
  std::vector<std::string> lower_;
};

}  // namespace

SeenAircraft LookForAircraft(const Services& services, std::string_view aircraftClass,
                             const std::vector<SeenIn>& missions, const TellWork& told) {
  Looking looking(services.Page, aircraftClass);
  for (std::size_t i = 0; i < missions.size(); ++i) {
    if (told && !told({i, missions.size(), missions[i].Path, "Mission"})) {
      looking.Seen.IsStopped = true;
      break;
    }
    if (!LogAndLeave(services, "LookForAircraft",
                     [&] { looking.LookAt(missions[i], services.Files); }))
      ++looking.Seen.NotRead;
  }
  if (told && !looking.Seen.IsStopped) told({missions.size(), missions.size(), {}, "Mission"});
  return std::move(looking.Seen);
}

std::string SeenMissionsText(const SeenAircraft& seen) {
  std::string text;
  for (std::size_t i = 0; i < std::min(seen.Missions.size(), kNamed); ++i)
    text += (i ? ", " : "") + seen.Missions[i];
  if (seen.Missions.size() > kNamed)
    text += " and " + GroupedNumber(seen.Missions.size() - kNamed) + " more";
  return text;
}

std::string SeenText(const SeenAircraft& seen) {
  const std::size_t count = seen.Missions.size();
  std::string text = count == 0 ? "Seen in no mission of this folder."
                                : "Seen in " + GroupedNumber(count) +
                                      (count == 1 ? " mission: " : " missions: ") +
                                      SeenMissionsText(seen) + ".";
  if (seen.IsStopped) text += " The search was stopped: others were not looked at.";
  if (seen.NotRead)
    text += " " + GroupedNumber(seen.NotRead) + (seen.NotRead == 1 ? " mission" : " missions") +
            " could not be read.";
  return text;
}

}  // namespace rws
