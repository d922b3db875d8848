#include "catalogues/squadrons.h"

#include <algorithm>

#include "catalogues/table.h"
#include "mission/flight_values.h"
#include "services/error_log.h"
#include "services/text.h"

namespace rws {

namespace {

/** True for two equal texts. Many codes differ in their last letter alone. */
bool IsSame(std::string_view a, std::string_view b) {
  return a.size() == b.size() && (a.empty() || a.back() == b.back()) && a == b;
}

/** The first row with a regiment of this code, blanks around that dropped. */
const Squadron* FindRow(const Catalogues& catalogues, std::string_view code) {
  for (const auto& row : catalogues.Squadrons)
    for (const auto& regiment : row.Regiments)
      if (regiment.Code.size() >= code.size() && IsSame(Trim(regiment.Code), code)) return &row;
  return nullptr;
}

/** True if `text` is `lower` in any letter case. Both have the same length and the same last letter
    then, so that few texts are lowered. */
bool IsLower(const Services& services, std::string_view text, std::string_view lower) {
  if (text.size() != lower.size()) return false;
  const char last = text.empty() ? '\0' : text.back();
  const bool isAscii = static_cast<unsigned char>(last) < 0x80;
  if (isAscii && !text.empty() && LowerAscii(last) != lower.back()) return false;
  return services.Page.LCase(text) == lower;
}

bool HasCode(const Squadron& row, const Services& services, std::string_view lowerCode) {
  return std::any_of(row.Regiments.begin(), row.Regiments.end(), [&](const Regiment& regiment) {
    return IsLower(services, Trim(regiment.Code), lowerCode);
  });
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
  LogAndLeave(services, "LoadRegiments", [&] {
    const auto lines = ReadTable(services, "RWS_Squadron.txt");
    if (!lines) return;
    auto& rows = catalogues.Squadrons;
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
    for (const auto& row : catalogues.Squadrons)
      for (const auto& regiment : row.Regiments)
        if (IsSame(regiment.Code, code)) {
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
    const std::string_view code = GroupOf(whole);
    for (const auto& row : catalogues.Squadrons) {
      // A second chance that the other lookups lack, on purpose: a group that begins a country.
      const auto country = Trim(std::string_view(row.Country).substr(0, whole.size()));
      if (!HasCode(row, services, code) && !IsLower(services, country, whole)) continue;
      color = row.Color;
      return;
    }
  });
  return color;
}

}  // namespace rws
