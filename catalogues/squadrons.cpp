#include "catalogues/squadrons.h"

#include <algorithm>

#include "catalogues/table.h"
#include "mission/flight_values.h"
#include "services/error_log.h"
#include "services/text.h"

namespace rws {

namespace {

/** The first row with a regiment of this code, blanks around that dropped. */
const Squadron* FindRow(const Catalogues& catalogues, std::string_view code) {
  for (const auto row : catalogues.Squadrons.Candidates(code))
    for (const auto& regiment : catalogues.Squadrons[row].Regiments)
      if (Trim(regiment.Code) == code) return &catalogues.Squadrons[row];
  return nullptr;
}

/** The first row with a regiment of this code in any letter case; the number of rows for none. */
std::size_t RowOfLower(const Catalogues& catalogues, const Services& services,
                       std::string_view lowerCode) {
  for (const auto row : catalogues.Squadrons.Candidates(lowerCode))
    for (const auto& regiment : catalogues.Squadrons[row].Regiments) {
      const std::string_view code = Trim(regiment.Code);
      if (code.size() == lowerCode.size() && services.Page.LCase(code) == lowerCode) return row;
    }
  return catalogues.Squadrons.size();
}

/** A text of the row that a group stands in, or `noMatch`. */
std::string TextByGroup(const Catalogues& catalogues, const Services& services,
                        std::string_view procedure, std::string_view group,
                        std::string Squadron::*field, std::string noMatch) {
  LogAndLeave(services, procedure, [&] {
    if (const Squadron* row = FindRow(catalogues, GroupOf(group))) noMatch = row->*field;
  });
  return noMatch;
}

}  // namespace

void LoadRegiments(Catalogues& catalogues, const Services& services) {
  std::vector<Squadron> rows = catalogues.Squadrons.Rows();
  LogAndLeave(services, "LoadRegiments", [&] {
    const auto lines = ReadTable(services, "RWS_Squadron.txt");
    if (!lines) return;
    std::size_t used = 0;
    for (std::size_t i = 0; i < lines->size(); ++i) {
      const auto columns = SplitAt((*lines)[i], ',');
      const std::string name = Column(columns, 1);
      if (used == 0 || rows[used - 1].Name != name) {
        if (used == rows.size()) rows.emplace_back();
        rows[used++] = {Column(columns, 3), Column(columns, 0), name, {}};
      }
      rows[used - 1].Regiments.push_back({Column(columns, 2), Column(columns, 5)});
    }
  });
  // Also what was read before a failure.
  catalogues.Squadrons = std::move(rows);
}

std::string GetArmyByGroup(const Catalogues& catalogues, const Services& services,
                           std::string_view group) {
  return TextByGroup(catalogues, services, "GetArmyByGroup", group, &Squadron::Color, "");
}

std::string GetCountryByGroup(const Catalogues& catalogues, const Services& services,
                              std::string_view group) {
  return TextByGroup(catalogues, services, "GetCountryByGroup", group, &Squadron::Country,
                     "Unknown");
}

std::string GetCntyNameByGroup(const Catalogues& catalogues, const Services& services,
                               std::string_view group) {
  return TextByGroup(catalogues, services, "GetCntyNameByGroup", group, &Squadron::Name, "None");
}

std::string GetUserDatabyGroup(const Catalogues& catalogues, const Services& services,
                               std::string_view group) {
  std::string text;
  LogAndLeave(services, "GetUserDatabyGroup", [&] {
    const auto code = GroupOf(group);
    for (const auto row : catalogues.Squadrons.Candidates(code))
      for (const auto& regiment : catalogues.Squadrons[row].Regiments)
        if (regiment.Code == code) {
          text = regiment.UserData;
          return;
        }
  });
  return text;
}

std::string GetColorByGroup(const Catalogues& catalogues, const Services& services,
                            std::string_view group) {
  std::string color;
  LogAndLeave(services, "GetColorByGroup", [&] {
    const std::string whole = services.Page.LCase(group);
    const SquadronTable& rows = catalogues.Squadrons;
    std::size_t found = RowOfLower(catalogues, services, GroupOf(whole));
    // A second chance that the other lookups lack, on purpose: a group that begins a country.
    for (std::size_t i = 0; i < found; ++i) {
      const auto country = Trim(std::string_view(rows[i].Country).substr(0, whole.size()));
      if (country.size() == whole.size() && services.Page.LCase(country) == whole) found = i;
    }
    if (found < rows.size()) color = rows[found].Color;
  });
  return color;
}

}  // namespace rws
