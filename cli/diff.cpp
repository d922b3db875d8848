#include <iostream>

#include "cli/edit.h"
#include "library/edited_mission.h"
#include "mission/unified_diff.h"
#include "services/faults.h"

namespace rws {

int Diff(const Services& services, const CliOptions& options, const DiffOptions& diff) {
  constexpr int kSame = 0, kDiffers = 1, kTrouble = 2;
  int result = kTrouble;
  Trap(
      [&] {
        const std::string bytes = services.Files.ReadFile(diff.File, LineArray::kLargest);
        Document doc = ReadMission(services, options, diff.File, bytes, diff.Lines);
        const LineArray lines = BuildOneMission(doc, services);
        std::cout << UnifiedDiff(diff.File, diff.File, bytes, lines.FileText());
        result = bytes == lines.FileText() ? kSame : kDiffers;
      },
      [&](const Fault& caught) { Complain(diff.File + ": " + caught.Text); });
  return std::cout.flush() ? result : kTrouble;
}

}  // namespace rws
