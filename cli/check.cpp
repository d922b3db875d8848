#include "cli/check.h"

#include <algorithm>
#include <iostream>
#include <nlohmann/json.hpp>
#include <utility>

#include "cli/lists.h"
#include "cli/printing.h"
#include "library/check_report.h"
#include "library/columns.h"

namespace rws {

namespace {

using Json = nlohmann::ordered_json;

/** What a run has found, and whether it could look at everything. */
struct Checked {
  std::vector<CheckedMission> Missions;  // sorted by their paths
  bool IsWhole = true;
};

Checked CheckAll(const Services& services, const CliOptions& options, const CheckOptions& check) {
  Checked all;
  CheckRequest request;
  for (const auto& path : check.Paths)
    (services.Files.FolderExists(path) ? request.Folders : request.Files).push_back(path);
  request.Tree = check.Recursive;
  Catalogues inUse;
  inUse.Listed = ListedOf(NamesFor(services, options, check.Paths[0]));
  MissionChecker checker(services.Files, ReadCheckTables(services, inUse), options.Game);
  checker.Add(request);
  for (auto batch = checker.Wait(); !batch.empty(); batch = checker.Wait())
    for (auto& mission : batch) all.Missions.push_back(std::move(mission));
  std::sort(all.Missions.begin(), all.Missions.end(),
            [](const CheckedMission& a, const CheckedMission& b) { return a.Path < b.Path; });
  std::vector<std::string> troubles;
  for (const auto& mission : all.Missions)
    if (!mission.FaultText.empty()) troubles.push_back(mission.FaultText);
  for (auto& trouble : checker.TakeTroubles()) troubles.push_back(std::move(trouble));
  for (const auto& trouble : troubles) Complain(trouble);
  all.IsWhole = troubles.empty();
  return all;
}

template <class Visit>
void ForEachFinding(const Checked& all, Visit visit) {
  for (const auto& mission : all.Missions)
    for (const auto& finding : mission.Findings) visit(mission, finding);
}

void PrintTable(const Services& services, const Checked& all) {
  std::vector<std::vector<std::string>> lines = {{"Mission", "Severity", "Place", "Finding"}};
  ForEachFinding(all, [&](const CheckedMission& mission, const Finding& finding) {
    lines.push_back({PathText(services.Page, mission.Path),
                     std::string(SeverityWord(finding.Severity)),
                     OnOneLine(PlaceText(finding, services.Page)), OnOneLine(finding.Text)});
  });
  if (lines.size() > 1) PrintAligned(lines);
}

void PrintJson(const Services& services, const Checked& all) {
  const auto number = [](std::int32_t value) { return value < 0 ? Json() : Json(value + 1); };
  ForEachFinding(all, [&](const CheckedMission& mission, const Finding& finding) {
    Json json = {{"path", PathText(services.Page, mission.Path)},
                 {"severity", SeverityWord(finding.Severity)},
                 {"kind", finding.Kind},
                 {"section", services.Page.ToUtf8(finding.Section)},
                 {"flight", services.Page.ToUtf8(finding.Flight)},
                 {"plane", number(finding.Plane)},
                 {"waypoint", number(finding.Waypoint)},
                 {"line", number(finding.Line)},
                 {"text", finding.Text},
                 {"mend", finding.Mend ? Json(services.Page.ToUtf8(finding.Mend->Text)) : Json()}};
    std::cout << json.dump(-1, ' ', false, Json::error_handler_t::replace) << "\n";
  });
}

}  // namespace

int Check(const Services& services, const CliOptions& options, const CheckOptions& check) {
  const Checked all = CheckAll(services, options, check);
  if (check.Format == "csv")
    std::cout << FindingsCsv(all.Missions, services.Page);
  else
    (check.Format == "json" ? PrintJson : PrintTable)(services, all);
  bool hasErrors = false;
  ForEachFinding(all, [&](const CheckedMission&, const Finding& finding) {
    hasErrors = hasErrors || finding.Severity == Severity::Error;
  });
  return std::cout.flush() && all.IsWhole && !hasErrors ? kDone : kFailed;
}

}  // namespace rws
