#include "mainwindow/logic/aircraft_count.h"

#include <array>

#include "catalogues/aircraft.h"
#include "catalogues/squadrons.h"
#include "services/error_log.h"
#include "services/numbers.h"

namespace rws {

namespace {

struct ArmyBlock {
  std::string_view Army, Header, Label;
  std::int64_t Total = 0;
  std::string Text;
};

/** In the order of the report. */
using ArmyBlocks = std::array<ArmyBlock, 3>;
constexpr std::size_t kBlue = 2;

ArmyBlocks MakeBlocks() {
  return {{{"white", " * White Army *\r\n", "  White A/C Total\r\n\r\n\r\n", 0, ""},
           {"red", " * Red Army *\r\n", "  Red A/C Total\r\n\r\n\r\n", 0, ""},
           {"blue", " * Blue Army *\r\n", "  Blue A/C Total\r\n\r\n", 0, ""}}};
}

std::vector<AircraftCount> CountAircraft(const Mission& mission, const Catalogues& catalogues,
                                         const Services& services) {
  std::vector<AircraftCount> table;
  for (const auto& flight : mission.Flights) {
    const std::string army = GetArmyByGroup(catalogues, services, flight.Name);
    table[FindAircraftRow(table, flight.Class, army)].Count += CLng(Val(flight.Planes));
  }
  return table;
}

/** The block of an army; null for one that is counted nowhere. */
ArmyBlock* BlockOf(ArmyBlocks& blocks, const Services& services, const std::string& army) {
  const std::string lower = services.Page.LCase(army);
  for (auto& block : blocks)
    if (block.Army == lower) return &block;
  return nullptr;
}

void FillBlocks(ArmyBlocks& blocks, const std::vector<AircraftCount>& table,
                const Catalogues& catalogues, const Services& services) {
  for (const auto& row : table)
    if (auto* block = BlockOf(blocks, services, row.Army)) block->Total += row.Count;
  for (auto& block : blocks)
    if (block.Total > 0) block.Text = block.Header;
  for (const auto& row : table) {
    auto* block = BlockOf(blocks, services, row.Army);
    if (!block) continue;
    block->Text += RightAligned(std::to_string(row.Count), 5) + " - " +
                   GetPlaneName(catalogues, services, row.Class) + "\r\n";
  }
}

}  // namespace

std::size_t FindAircraftRow(std::vector<AircraftCount>& table, std::string_view aircraftClass,
                            std::string_view army) {
  std::size_t row = 0;
  while (row < table.size() && (table[row].Class != aircraftClass || table[row].Army != army))
    ++row;
  if (row == table.size()) table.push_back({std::string(aircraftClass), std::string(army), 0});
  return row;
}

std::string AircraftCountText(const Mission& mission, const Catalogues& catalogues,
                              const Services& services) {
  std::string text;
  LogAndLeave(services, "AircraftCountText", [&] {
    ArmyBlocks blocks = MakeBlocks();
    FillBlocks(blocks, CountAircraft(mission, catalogues, services), catalogues, services);
    std::int64_t sum = 0;
    for (auto& block : blocks) {
      sum += block.Total;
      if (block.Total > 0)
        block.Text.append("-----------------------\r\n")
            .append(RightAligned(std::to_string(block.Total), 5))
            .append(block.Label);
    }
    // The grand total belongs to the blue block: without blue aircraft there is none, on purpose.
    if (blocks[kBlue].Total > 0)
      blocks[kBlue].Text += "\r\n Total Aircraft - " + std::to_string(sum);
    for (const auto& block : blocks) text += block.Text;
  });
  return text;
}

}  // namespace rws
