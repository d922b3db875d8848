#include "library/check_report.h"

#include "library/columns.h"

namespace rws {

namespace {

/** "" for none. */
std::string CountedFromOne(std::int32_t number) {
  return number < 0 ? "" : std::to_string(number + 1);
}

std::string CsvLine(const std::vector<std::string>& cells) {
  std::string line;
  for (std::size_t i = 0; i < cells.size(); ++i)
    line.append(i == 0 ? "" : ",") += CsvCell(cells[i]);
  return line + "\r\n";
}

}  // namespace

FindingCounts CountsOf(const CheckedMission& mission) {
  FindingCounts counts{};
  for (const auto& finding : mission.Findings) ++counts[static_cast<std::size_t>(finding.Severity)];
  return counts;
}

std::string CountsText(const std::vector<CheckedMission>& missions) {
  FindingCounts all{};
  for (const auto& mission : missions) {
    const FindingCounts counts = CountsOf(mission);
    for (std::size_t i = 0; i < all.size(); ++i) all[i] += counts[i];
  }
  return CountsText(all);
}

std::string CountsText(const FindingCounts& counts) {
  std::string text;
  for (std::size_t i = counts.size(); i-- > 0;) {
    if (counts[i] == 0) continue;
    text.append(text.empty() ? "" : ", ") += std::to_string(counts[i]);
    text.append(" ").append(SeverityWord(static_cast<Severity>(i))) += counts[i] == 1 ? "" : "s";
  }
  return text.empty() ? "nothing found" : text;
}

const std::vector<std::string>& FindingColumns() {
  static const std::vector<std::string> kColumns = {"Mission", "Severity", "Kind",     "Section",
                                                    "Flight",  "Plane",    "Waypoint", "Line",
                                                    "Finding", "Mend"};
  return kColumns;
}

std::vector<std::string> FindingCells(const std::string& path, const Finding& finding,
                                      const CodePage& page) {
  return {PathText(page, path),
          std::string(SeverityWord(finding.Severity)),
          std::string(finding.Kind),
          page.ToUtf8(finding.Section),
          page.ToUtf8(finding.Flight),
          CountedFromOne(finding.Plane),
          CountedFromOne(finding.Waypoint),
          CountedFromOne(finding.Line),
          finding.Text,
          finding.Mend ? page.ToUtf8(finding.Mend->Text) : ""};
}

std::string FindingsCsv(const std::vector<CheckedMission>& missions, const CodePage& page) {
  std::string text = CsvLine(FindingColumns());
  for (const auto& mission : missions)
    for (const auto& finding : mission.Findings)
      text += CsvLine(FindingCells(mission.Path, finding, page));
  return text;
}

std::string FindingsText(const std::vector<CheckedMission>& missions, const CodePage& page) {
  std::string text;
  for (const auto& mission : missions) {
    if (mission.Findings.empty() && mission.FaultText.empty()) continue;
    text += PathText(page, mission.Path) + "\r\n";
    if (!mission.FaultText.empty()) text += "  error: " + mission.FaultText + "\r\n";
    for (const auto& finding : mission.Findings) {
      const std::string place = PlaceText(finding, page);
      text += "  " + std::string(SeverityWord(finding.Severity)) + ": " +
              (place.empty() ? "" : place + ": ") + finding.Text + "\r\n";
    }
  }
  return text + (text.empty() ? "" : "\r\n") + CountsText(missions) + "\r\n";
}

}  // namespace rws
