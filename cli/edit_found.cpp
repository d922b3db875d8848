#include <iostream>

#include "cli/edit.h"
#include "cli/find.h"
#include "library/columns.h"
#include "library/edit_many.h"
#include "mission/unified_diff.h"
#include "services/faults.h"

namespace rws {

namespace {

/** Prints what would change; the report is that of a run that writes nothing. */
EditReport ShowChanges(const EditContext& context, const EditOrder& order,
                       const std::vector<std::string>& paths) {
  EditReport report;
  EditHooks hooks;
  for (const auto& path : paths) {
    const EditPlan plan = PlanEdits(context, order, {path}, hooks);
    report.Named.resize(plan.Named.size());
    for (std::size_t i = 0; i < plan.Named.size(); ++i) report.Named[i] += plan.Named[i];
    const PlannedMission& mission = plan.Missions[0];
    if (!mission.WhyNot.empty()) report.Left.push_back({path, mission.WhyNot});
    if (!mission.Changes()) continue;
    const auto show = [&] {
      const std::string old = context.Services.Files.ReadFile(path, LineArray::kLargest);
      EditedMission edited = EditRecords(context, order, path, old);
      std::cout << UnifiedDiff(path, path, old, BuildEdited(context, edited).FileText());
      report.Done.push_back(path);
    };
    Trap(show, [&](const Fault& caught) { report.Left.push_back({path, caught.Text}); });
  }
  return report;
}

EditReport WriteChanges(const EditContext& context, const EditOrder& order,
                        const std::vector<std::string>& paths, const EditOptions& edit) {
  const Services services = WritingServices(context.Services);
  if (!edit.BackupFolder.empty()) MakeBackupFolder(services, edit.BackupFolder);
  return ApplyEdits(context, UnseenPlan(order, paths),
                    {services, !edit.NoBackup, edit.BackupFolder}, {});
}

void TellReport(const CodePage& page, const EditReport& report) {
  if (!report.Stopped.empty()) Complain(report.Stopped);
  for (const auto* told : {&report.Left, &report.Warnings})
    for (const auto& [path, reason] : *told) Complain(PathText(page, path) + ": " + reason);
  if (!report.Left.empty() || !report.NotTried.empty()) Complain(EndText(report));
}

}  // namespace

int EditFound(const Services& services, const CliOptions& options, const EditOptions& edit) {
  const auto order = ReadOrder(services, edit);
  if (!order) return kBadUsage;
  const auto found = FindMissions(services, options, {edit.Files, *edit.Where, edit.Recursive});
  if (!found) return kBadUsage;
  const Catalogues tables = TablesFor(services, options, edit, *order);
  EditContext context{services, tables, BaseFor(services, options, edit.Files[0], edit.Lines),
                      edit.Force};
  context.MustName = true;
  std::vector<std::string> paths;
  for (const auto row : found->Rows) paths.push_back(found->Index->Path(row));
  EditReport report;
  const auto run = [&] {
    report = edit.DryRun ? ShowChanges(context, *order, paths)
                         : WriteChanges(context, *order, paths, edit);
  };
  if (!Trap(run, [](const Fault& caught) { Complain(caught.Text); })) return kFailed;
  TellReport(services.Page, report);
  bool isWhole = found->IsWhole && report.Left.empty() && report.NotTried.empty();
  isWhole &= report.Stopped.empty();
  for (std::size_t i = 0; i < order->Sets.size() + order->Removals.size(); ++i) {
    if (i < report.Named.size() && report.Named[i] > 0) continue;
    const std::size_t sets = order->Sets.size();
    Complain((i < sets ? edit.Sets[i] : edit.Removals[i - sets]) +
             ": names nothing in any mission that was changed");
    isWhole = false;
  }
  return std::cout.flush() && isWhole ? kDone : kFailed;
}

}  // namespace rws
