#include "cli/find.h"

#include <algorithm>
#include <iostream>
#include <nlohmann/json.hpp>

#include "catalogues/aircraft.h"
#include "catalogues/maps.h"
#include "catalogues/squadrons.h"
#include "cli/lists.h"
#include "cli/printing.h"
#include "library/columns.h"
#include "library/filter.h"
#include "library/mission_reader.h"
#include "services/faults.h"

namespace rws {

namespace {

using Json = nlohmann::ordered_json;

IndexNames ReadNames(const Services& services, const CliOptions& options, const FindOptions& find) {
  Document doc;
  Catalogues tables;
  LoadMaps(doc, services);
  LoadRegiments(tables, services);
  LoadAircraftNames(tables, services);
  ApplyNames(doc, tables, services, options, find.Folders[0]);
  return NamesFrom(doc.Maps, tables, services.Page);
}

/** The path in one column, and those that say most. */
constexpr MissionColumn kTable[] = {
    MissionColumn::Mission, MissionColumn::Kind,    MissionColumn::Map,    MissionColumn::Time,
    MissionColumn::Weather, MissionColumn::Flights, MissionColumn::Player, MissionColumn::Trouble};

std::string TableCell(const MissionIndex& index, std::size_t row, MissionColumn column) {
  if (column == MissionColumn::Mission) return PathText(index.Page(), index.Path(row));
  return OnOneLine(CellText(index, row, column));
}

void PrintTable(const MissionIndex& index, const std::vector<std::size_t>& rows) {
  std::vector<std::vector<std::string>> lines(1);
  for (const auto column : kTable) lines[0].emplace_back(ColumnTitle(column));
  for (const auto row : rows) {
    auto& line = lines.emplace_back();
    for (const auto column : kTable) line.push_back(TableCell(index, row, column));
  }
  std::vector<bool> toRight;
  for (const auto column : kTable) toRight.push_back(IsNumberColumn(column));
  PrintAligned(lines, toRight);
}

void PrintCsv(const MissionIndex& index, const std::vector<std::size_t>& rows) {
  std::cout << CsvText(index, {rows.begin(), rows.end()}, {kAllColumns.begin(), kAllColumns.end()});
}

Json FlightsJson(const MissionIndex& index, std::size_t row) {
  Json flights = Json::array();
  for (std::size_t i = 0; i < index[row].Flights; ++i) {
    const IndexedFlight& flight = index.Flights(row)[i];
    const CodePage& page = index.Page();
    flights.push_back({{"aircraft", page.ToUtf8(index.Aircraft[flight.Class].Shown)},
                       {"class", page.ToUtf8(index.Aircraft[flight.Class].Word)},
                       {"squadron", page.ToUtf8(index.Squadrons[flight.Squadron].Word)},
                       {"planes", static_cast<unsigned>(flight.Planes)},
                       {"only_ai", flight.OnlyAI != 0}});
  }
  return flights;
}

void PrintJson(const MissionIndex& index, const std::vector<std::size_t>& rows) {
  for (const auto row : rows) {
    Json json = {{"path", PathText(index.Page(), index.Path(row))}};
    for (const auto column : kAllColumns) {
      const std::string key(ColumnKey(column));
      if (IsNumberColumn(column))
        json[key] = CellNumber(index, row, column);
      else
        json[key] = CellText(index, row, column);
    }
    json["kind"] = KindWord(index[row].Kind);
    json["kind_guessed"] = index[row].KindGuessed;
    json["short"] = index.Page().ToUtf8(index.Text(row, MissionText::BriefingShort));
    json["size"] = index[row].Size;
    json["flight_list"] = FlightsJson(index, row);
    std::cout << json.dump(-1, ' ', false, Json::error_handler_t::replace) << "\n";
  }
}

/** What is wrong with a query, with the place marked under it; false for nothing. */
bool IsRefused(const std::string& line, const Query& query) {
  const auto& fault = query.Fault ? query.Fault : query.Unfinished;
  if (!fault) return false;
  const std::size_t before = Width(std::string_view(line).substr(0, fault->At));
  const std::size_t width = Width(std::string_view(line).substr(fault->At, fault->Length));
  Complain("--where: " + fault->Text + "\n  " + OnOneLine(line) + "\n  " +
           std::string(before, ' ') + std::string(std::max<std::size_t>(width, 1), '^'));
  return true;
}

/** Reads the missions into the index; false if something could not be read. */
bool ReadInto(MissionIndex& index, Filter& filter, const Services& services,
              const FindOptions& find) {
  ReadRequest request;
  for (const auto& path : find.Folders)
    (services.Files.FileExists(path) ? request.Files : request.Folders).push_back(path);
  request.Tree = find.Recursive;
  request.Texts = filter.Texts();
  MissionReader reader(services.Files, services.Page);
  reader.Add(std::move(request));
  bool isWhole = true;
  for (auto batch = reader.Wait(); !batch.empty(); batch = reader.Wait())
    for (const auto& facts : batch) {
      const std::size_t row = index.Put(facts);
      if (row == MissionIndex::npos) continue;
      filter.SetTexts(row, facts.TextsFound);
      if (facts.Fault != MissionFault::Unreadable) continue;
      Complain(facts.FaultText);
      isWhole = false;
    }
  for (const auto& trouble : reader.TakeTroubles()) {
    Complain(trouble);
    isWhole = false;
  }
  return isWhole;
}

}  // namespace

std::optional<FoundMissions> FindMissions(const Services& services, const CliOptions& options,
                                          const FindOptions& find) {
  const Query query = ParseQuery(find.Where);
  if (IsRefused(find.Where, query)) return {};
  FoundMissions found{
      std::make_unique<MissionIndex>(ReadNames(services, options, find), services.Page), {}};
  MissionIndex& index = *found.Index;
  Filter filter(query, index);
  found.IsWhole = ReadInto(index, filter, services, find);
  std::vector<std::pair<std::string, std::size_t>> rows;
  for (std::size_t row = 0; row < index.size(); ++row)
    if (filter.Matches(row)) rows.emplace_back(index.Path(row), row);
  std::sort(rows.begin(), rows.end());
  for (const auto& [path, row] : rows) found.Rows.push_back(row);
  return found;
}

int Find(const Services& services, const CliOptions& options, const FindOptions& find) {
  const auto found = FindMissions(services, options, find);
  if (!found) return kBadUsage;
  const auto& [index, rows, isWhole] = *found;
  if (find.Format == "csv")
    PrintCsv(*index, rows);
  else
    (find.Format == "json" ? PrintJson : PrintTable)(*index, rows);
  return std::cout.flush() && isWhole ? kDone : kFailed;
}

}  // namespace rws
