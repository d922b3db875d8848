#include "editors/logic/home_bases.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "services/text.h"

namespace rws {

namespace {

constexpr const char kIsAvailable[] = "A", kInReserve[] = "R";

HomeBaseItem MakeItem(std::string text, std::size_t place) {
  return {std::move(text), std::to_string(place) + " flt"};
}

std::vector<HomeBaseItem> DefaultItems(std::vector<DogFightPlane>& table) {
  std::vector<HomeBaseItem> items;
  for (std::size_t row = 0; row < table.size(); ++row) {
    table[row].State = table[row].NotDefault ? kInReserve : kIsAvailable;
    if (!table[row].NotDefault) items.push_back(MakeItem(table[row].DisplayName, row));
  }
  return items;
}

std::vector<HomeBaseItem> OwnItems(std::vector<DogFightPlane>& table,
                                   const std::vector<std::string>& planes, const CodePage& page,
                                   UnknownAircraft unknown) {
  std::vector<std::string> names;
  for (const auto& plane : planes) names.push_back(page.LCase(plane));
  const std::unordered_set<std::string_view> offered(names.begin(), names.end());
  // Names are lowered once: a base may offer the whole table.
  std::unordered_map<std::string, std::size_t> rows;
  for (std::size_t row = 0; row < table.size(); ++row) {
    const auto added = rows.emplace(page.LCase(table[row].InternalName), row).first;
    table[row].State = offered.count(added->first) ? kIsAvailable : kInReserve;
  }
  std::vector<HomeBaseItem> items;
  for (std::size_t i = 0; i < names.size(); ++i) {
    const auto found = rows.find(names[i]);
    const std::string spelled = unknown == UnknownAircraft::Spelled ? planes[i] : "";
    items.push_back(MakeItem(found == rows.end() ? spelled : table[found->second].DisplayName, i));
  }
  return items;
}

}  // namespace

int ShownRadius(std::int32_t radius) { return std::clamp(radius, kLeastRadius, kLargestRadius); }

HomeBaseLists FillHomeBase(std::vector<DogFightPlane>& table, const BornPlace& base,
                           const CodePage& page, UnknownAircraft unknown) {
  HomeBaseLists lists;
  lists[kAvailable] =
      base.Planes.empty() ? DefaultItems(table) : OwnItems(table, base.Planes, page, unknown);
  for (std::size_t row = 0; row < table.size(); ++row)
    if (table[row].State == kInReserve)
      lists[kReserve].push_back(MakeItem(table[row].DisplayName, row));
  return lists;
}

void MoveAircraft(std::vector<DogFightPlane>& table, BornPlace& base, HomeBaseList from,
                  const std::vector<std::string_view>& names) {
  // Without the table nothing is known to be moved, and the list must not be lost.
  if (table.empty()) return;
  std::unordered_map<std::string_view, DogFightPlane*> rows;
  for (auto& plane : table) rows.emplace(plane.DisplayName, &plane);
  for (const auto name : names)
    if (const auto found = rows.find(name); found != rows.end())
      found->second->State = from == kAvailable ? kInReserve : kIsAvailable;
  std::vector<std::string> planes;
  for (const auto& plane : table)
    if (plane.State == kIsAvailable) planes.push_back(plane.InternalName);
  base.Planes = std::move(planes);
}

void MoveKeptAircraft(const std::vector<DogFightPlane>& table, BornPlace& base, HomeBaseList from,
                      const std::vector<std::string_view>& names) {
  if (base.Planes.empty())
    for (const auto& plane : table)
      if (!plane.NotDefault) base.Planes.push_back(plane.InternalName);
  for (const auto name : names) {
    const auto row = std::find_if(table.begin(), table.end(), [&](const DogFightPlane& plane) {
      return plane.DisplayName == name;
    });
    const std::string key(row == table.end() ? std::string(name) : row->InternalName);
    if (from == kAvailable)
      std::erase_if(base.Planes, [&](const auto& plane) { return EqualNoCase(plane, key); });
    else
      base.Planes.push_back(key);
  }
}

void EraseIfDefault(const std::vector<DogFightPlane>& table, BornPlace& base,
                    const std::vector<HomeBaseItem>& available) {
  std::vector<std::string_view> shown, byDefault;
  for (const auto& item : available) shown.push_back(item.Text);
  for (const auto& plane : table)
    if (!plane.NotDefault) byDefault.push_back(plane.DisplayName);
  if (shown == byDefault) base.Planes.clear();
}

}  // namespace rws
