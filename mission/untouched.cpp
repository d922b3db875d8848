#include "mission/untouched.h"

#include <utility>

#include "mission/kept_text.h"
#include "mission/line_ends.h"
#include "services/paths.h"

namespace rws {

std::string PathOf(const Mission& mission) { return BuildPath(mission.DirPath, mission.FileName); }

UntouchedLines UntouchedRule(const Document& doc, const Mission& mission) {
  const auto own = doc.UntouchedOf.find(PathOf(mission));
  return own == doc.UntouchedOf.end() ? doc.Untouched : own->second;
}

bool WillKeepLines(const Document& doc, const Mission& mission) {
  const UntouchedLines rule = UntouchedRule(doc, mission);
  return rule == UntouchedLines::Ask ? mission.KeepsLines : rule == UntouchedLines::Keep;
}

bool HoldsMission(const LineArray& lines) {
  const KeptText text(lines);
  return text.Find("MAIN") || text.Find("Wing");
}

bool IsAsRead(const Mission& mission, std::string bytes) {
  if (bytes == mission.AsRead.FileText()) return true;
  return !mission.KeepsLines && LinesOfFile(std::move(bytes)) == mission.AsRead;
}

}  // namespace rws
