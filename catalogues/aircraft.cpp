#include "catalogues/aircraft.h"

#include "catalogues/table.h"
#include "catalogues/weapons.h"
#include "services/error_log.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr const char kTable[] = "RWS_Aircraft.txt";

/** The name that folders of skins go by when the table gives none. */
std::string FolderOfClass(const std::string& aircraftClass) {
  std::string folder = aircraftClass;
  std::erase_if(folder, [](char c) { return c == '_' || c == '-' || c == '.'; });
  return folder;
}

Aircraft MakeAircraft(std::string_view line, const std::string& side, const LineArray& weapons) {
  const auto columns = SplitAt(line, ',');
  Aircraft aircraft;
  aircraft.Side = side;
  aircraft.Name = Column(columns, 1);
  aircraft.Class = Column(columns, 2);
  aircraft.Folder = Column(columns, 3);
  if (Trim(aircraft.Folder).empty()) aircraft.Folder = FolderOfClass(aircraft.Class);
  aircraft.Companion = Column(columns, 4);
  aircraft.Flyable = Column(columns, 0) == "F";
  aircraft.NoseArtOk = Column(columns, 5) == "*";
  aircraft.ParkedClass = Trim(Column(columns, 6));
  GetWeapons(weapons, aircraft.Class, aircraft.Weapons);
  return aircraft;
}

void ReadAircraft(std::vector<Aircraft>& rows, const Services& services, const LineArray& weapons) {
  const auto lines = ReadTable(services, kTable);
  if (!lines) {
    services.Ask.MsgBox(
        std::string("Unable to load \"") + kTable + "\", you will not be able to use all features.",
        Buttons::Ok, Icon::None, kProgramTitle);
    return;
  }
  if (lines->empty()) throw Fault(fault::InputPastEnd, "Input past end of file");
  std::string side = "Red";
  for (std::size_t i = 0; i < lines->size(); ++i) {
    rows.push_back(MakeAircraft((*lines)[i], side, weapons));
    // The table has no column for the side: this aircraft is the last red one.
    if (Contains(services.Page.UCase(rows.back().Name), "YP-80")) side = "Blue";
  }
}

/** What was read before a failure stays. */
void LoadRows(Catalogues& catalogues, const Services& services, const LineArray& weapons) {
  std::vector<Aircraft> rows;
  LogAndLeave(services, "LoadAircraftArray", [&] { ReadAircraft(rows, services, weapons); });
  catalogues.Aircraft = AircraftTable(std::move(rows));
}

}  // namespace

const Aircraft* AircraftOf(const Catalogues& catalogues, std::string_view nameOrClass) {
  const AircraftTable& table = catalogues.Aircraft;
  for (const auto row : table.Candidates(nameOrClass))
    if (table[row].Name == nameOrClass || table[row].Class == nameOrClass) return &table[row];
  return nullptr;
}

void LoadAircraftArray(Document& doc, Catalogues& catalogues, const Services& services) {
  catalogues.Aircraft.clear();
  LineArray weapons;
  LoadWeaponsFile(doc, services, weapons);
  if (doc.Closing) return;
  LoadRows(catalogues, services, weapons);
}

void LoadAircraftNames(Catalogues& catalogues, const Services& services) {
  LoadRows(catalogues, services, {});
}

std::string GetPlaneName(const Catalogues& catalogues, const Services& services,
                         std::string_view nameOrClass) {
  const std::string wanted = services.Page.LCase(nameOrClass);
  const auto matches = [&](const std::string& text) { return services.Page.LCase(text) == wanted; };
  const AircraftTable& table = catalogues.Aircraft;
  for (const auto row : table.Candidates(nameOrClass))
    if (matches(table[row].Class) || matches(table[row].Name)) return table[row].Name;
  for (const auto row : table.ParkedCandidates(nameOrClass))
    if (matches(table[row].ParkedClass)) return table[row].Name;
  return std::string(nameOrClass);
}

const Aircraft* FindParked(const Catalogues& catalogues, std::string_view parkedClass) {
  const AircraftTable& table = catalogues.Aircraft;
  for (const auto row : table.ParkedCandidates(parkedClass))
    if (table[row].ParkedClass == parkedClass) return &table[row];
  return nullptr;
}

const Aircraft* FindClass(const Catalogues& catalogues, const CodePage& page,
                          std::string_view aircraftClass) {
  const std::string wanted = page.LCase(aircraftClass);
  const AircraftTable& table = catalogues.Aircraft;
  for (const auto row : table.Candidates(aircraftClass))
    if (page.LCase(table[row].Class) == wanted) return &table[row];
  return nullptr;
}

std::string GetIntPlaneName(const Catalogues& catalogues, std::string_view name) {
  const AircraftTable& table = catalogues.Aircraft;
  for (const auto row : table.Candidates(name))
    if (table[row].Name == name) return table[row].Class;
  return std::string(name);
}

std::string_view NameInRow(std::string_view rowText) {
  return rowText.substr(0, rowText.find("     "));
}

std::string GetPlaneFolder(const Catalogues& catalogues, std::string_view nameOrClass) {
  const Aircraft* aircraft = AircraftOf(catalogues, nameOrClass);
  return aircraft ? aircraft->Folder : "";
}

bool IsFlyable(const Catalogues& catalogues, std::string_view nameOrClass) {
  const Aircraft* aircraft = AircraftOf(catalogues, nameOrClass);
  return aircraft && aircraft->Flyable;
}

bool IsNoseart(const Catalogues& catalogues, std::string_view nameOrClass) {
  const Aircraft* aircraft = AircraftOf(catalogues, nameOrClass);
  return aircraft && aircraft->NoseArtOk;
}

bool IsKnownPlane(const Catalogues& catalogues, std::string_view nameOrClass) {
  return AircraftOf(catalogues, nameOrClass) != nullptr;
}

std::ptrdiff_t GetPlaneIndex(const Catalogues& catalogues, std::string_view nameOrClass) {
  const Aircraft* aircraft = AircraftOf(catalogues, Trim(nameOrClass));
  return aircraft ? aircraft - catalogues.Aircraft.Rows().data() : -1;
}

}  // namespace rws
