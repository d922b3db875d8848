#include "fuzz/support.h"
#include "library/edited_mission.h"
#include "mission/unified_diff.h"
#include "services/faults.h"
#include "services/text.h"
#include "values/mission_edit.h"
#include "values/value_path.h"

/** Changes values of a mission by paths, as a script does: the lines of the input up to a blank one
    are "PATH=VALUE" or "remove flight[...]", the rest is the mission. */

namespace {

using namespace rws;

constexpr std::string_view kRemove = "remove ";

EditOrder OrderOf(std::string_view lines) {
  EditOrder order;
  for (const auto line : SplitAt(lines, '\n')) {
    ResumeNext([&] {
      if (line.starts_with(kRemove)) {
        const auto path = line.substr(kRemove.size());
        order.Removals.push_back({ParseFlight(path), std::string(path)});
      } else {
        order.Sets.push_back(ParseAssignment(line));
      }
    });
    if (order.Sets.size() + order.Removals.size() == 8) break;
  }
  return order;
}

/** Every value that was taken stands in the new file, unless a later one took its place. */
void RequireWritten(const EditContext& context, const EditOrder& order, const std::string& bytes) {
  EditedMission edited = EditRecords(context, order, "/test.mis", bytes);
  if (!edited.Outcome.Faults.empty()) return;
  const Mission asked = edited.Doc.Missions[0];
  const LineArray lines = BuildEdited(context, edited);
  if (!edited.Outcome.Faults.empty()) return;
  const std::string text = UnifiedDiff("old", "new", bytes, lines.FileText());
  fuzz::Require(text.empty() == (bytes == lines.FileText()), "What differs is told.");
  if (!edited.IsEdited() && asked.KeepsLines)
    fuzz::RequireSame(lines.FileText(), bytes, "An edit that changes nothing changes nothing.");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const Catalogues none;
  const std::string_view input = fuzz::TextOf(data, size);
  const std::size_t end = std::min(input.find("\n\n"), input.size());
  const EditOrder order = OrderOf(input.substr(0, end));
  const std::string bytes(input.substr(std::min(end + 2, input.size())));
  EditContext context{fuzz::QuietServices(), none, {}, true};
  context.LeavesImpossible = size % 2 == 0;
  for (const auto lines : {UntouchedLines::Keep, UntouchedLines::Anew}) {
    context.Base.Untouched = lines;
    ResumeNext([&] { RequireWritten(context, order, bytes); });
  }
  return 0;
}
