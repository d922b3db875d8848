#include "editors/logic/change_lists.h"

#include <algorithm>

#include "catalogues/aircraft.h"
#include "catalogues/army_text.h"
#include "mission/flight_values.h"
#include "services/faults.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr char kFlyable[] = " F", kNotFlyable[] = "  ";
constexpr char kDefault[] = "Default";
/** Second name of the country table's row for no country, and the code of such a line. */
constexpr char kNoCountry[] = "n", kNoCode[] = "null";

std::string RowText(const Aircraft& aircraft) {
  constexpr std::size_t kWidth = 40;
  std::string left = aircraft.Name + (aircraft.Flyable ? kFlyable : kNotFlyable);
  // A blank must stand before the side, or the choice could not be read back from the row.
  if (left.size() + aircraft.Side.size() >= kWidth && left.back() != ' ') left += ' ';
  return PadName(left, aircraft.Side, kWidth);
}

/** Country by one of its fields, letter case apart. */
template <class... Fields>
const Country* FindCountry(const Catalogues& catalogues, const CodePage& page,
                           std::string_view text, Fields... fields) {
  const std::string lower = page.LCase(text);
  for (const auto& country : catalogues.Countries)
    if (((page.LCase(country.*fields) == lower) || ...)) return &country;
  return nullptr;
}

const Country* CountryByName(const Catalogues& catalogues, const CodePage& page,
                             std::string_view name) {
  return FindCountry(catalogues, page, name, &Country::Name, &Country::AltName);
}

/** Parked aircraft carry a code; a name serves as well. */
const Country* CountryByGroup(const Catalogues& catalogues, const CodePage& page,
                              std::string_view group) {
  const Country* row = FindCountry(catalogues, page, Trim(group), &Country::StaticCode);
  return row ? row : CountryByName(catalogues, page, Trim(group));
}

const Country* CountryOf(const Catalogues& catalogues, const CodePage& page,
                         const GroupNode& node) {
  const Country* row = CountryByName(catalogues, page, node.Text);
  return row ? row : CountryByName(catalogues, page, node.Country);
}

NodePlace FindRegiment(const GroupTree& tree, std::string_view flightName) {
  flightName = Trim(flightName);
  if (flightName.size() < 2) return {};
  const auto code = GroupOf(flightName);
  for (std::size_t g = 0; g < tree.Groups.size(); ++g) {
    const auto& regiments = tree.Groups[g].Regiments;
    const auto found = std::find_if(regiments.begin(), regiments.end(), [&](const auto& regiment) {
      return Trim(regiment.Code) == code;
    });
    if (found != regiments.end())
      return {static_cast<std::ptrdiff_t>(g), found - regiments.begin()};
  }
  return {};
}

/** A code that the tables lack selects nothing, so that it is not lost when only the aircraft is
    changed. */
NodePlace FindCountryNode(const GroupTree& tree, const Catalogues& catalogues, const CodePage& page,
                          std::string_view group) {
  const Country* row = CountryByGroup(catalogues, page, group);
  const bool isDefault = row ? page.LCase(row->AltName) == kNoCountry
                             : EqualNoCase(Trim(group), kNoCode) || EqualNoCase(group, kNoCountry);
  const auto find = [&](auto matches) -> NodePlace {
    const auto node = std::find_if(tree.Groups.begin(), tree.Groups.end(), matches);
    if (node == tree.Groups.end()) return {};
    return {node - tree.Groups.begin(), -1};
  };
  if (isDefault) return find([](const GroupNode& node) { return node.IsDefault; });
  if (!row) return {};
  return find([&](const GroupNode& node) {
    return !node.IsDefault && CountryOf(catalogues, page, node) == row;
  });
}

/** The regiment that a place stands for, or null. */
const RegimentNode* RegimentAt(const GroupTree& tree, NodePlace place) {
  if (place.Group < 0) return nullptr;
  const auto& regiments = At(tree.Groups, place.Group).Regiments;
  if (place.Regiment >= 0) return &At(regiments, place.Regiment);
  return regiments.empty() ? nullptr : &regiments.front();
}

std::string CountryCaption(const Country* row, std::string noRow) {
  if (!row) return noRow;
  return row->AltName == kNoCountry ? kDefault : row->AltName;
}

}  // namespace

ChangeMode ChangeModeOf(std::string_view word) {
  return EqualNoCase(word, "static") ? ChangeMode::Static : ChangeMode::Flight;
}

AircraftRows MakeAircraftRows(const Catalogues& catalogues, std::string_view aircraftClass) {
  AircraftRows rows;
  for (const auto& aircraft : catalogues.Aircraft) {
    if (!IsKnownPlane(catalogues, aircraft.Class)) continue;
    if (rows.Selected < 0 && aircraft.Class == aircraftClass)
      rows.Selected = static_cast<std::ptrdiff_t>(rows.Texts.size());
    rows.Texts.push_back(RowText(aircraft));
  }
  if (rows.Selected < 0 && !rows.Texts.empty()) rows.Selected = 0;
  return rows;
}

std::string AircraftOfRow(std::string_view rowText) {
  const std::string bare = Replace(Replace(rowText, " Red", "    "), " Blue", "     ");
  std::string_view name = Trim(bare);
  if (name.size() >= 2 && name.substr(name.size() - 2) == kFlyable)
    name = Trim(name.substr(0, name.size() - 1));
  return std::string(name);
}

GroupTree MakeGroupTree(const Catalogues& catalogues, const CodePage& page, ChangeMode mode,
                        std::string_view group) {
  GroupTree tree{mode, {}, {}};
  for (const auto& squadron : catalogues.Squadrons) {
    auto& node = tree.Groups.emplace_back();
    node.Text = squadron.Name;
    node.Country = squadron.Country;
    if (squadron.Color == "red" || squadron.Color == "blue") node.Color = ArmyColor(squadron.Color);
    if (mode == ChangeMode::Static) continue;
    for (const auto& regiment : squadron.Regiments)
      node.Regiments.push_back({regiment.Code, regiment.UserData});
  }
  if (mode == ChangeMode::Static) {
    auto& node = tree.Groups.emplace_back();
    node.Text = kDefault;
    node.IsDefault = true;
    tree.Selected = FindCountryNode(tree, catalogues, page, group);
  } else {
    tree.Selected = FindRegiment(tree, group);
  }
  return tree;
}

std::string StartCaption(const GroupTree& tree, const Catalogues& catalogues, const CodePage& page,
                         std::string_view group) {
  if (tree.Mode == ChangeMode::Static)
    return CountryCaption(CountryByGroup(catalogues, page, group), kDefault);
  return NodeCaption(tree, catalogues, page, Trim(group).empty() ? NodePlace{} : tree.Selected);
}

std::string NodeCaption(const GroupTree& tree, const Catalogues& catalogues, const CodePage& page,
                        NodePlace place) {
  if (place.Group < 0) return "None";
  const GroupNode& node = At(tree.Groups, place.Group);
  if (tree.Mode == ChangeMode::Static)
    return node.IsDefault ? kDefault : CountryCaption(CountryOf(catalogues, page, node), node.Text);
  const RegimentNode* regiment = RegimentAt(tree, place);
  return Replace(regiment ? regiment->Code : node.Text, "_", " ") + " - " +
         (regiment ? regiment->Tag : "");
}

std::string SquadOf(const GroupTree& tree, NodePlace place) {
  if (place.Group < 0) return "";
  const RegimentNode* regiment = RegimentAt(tree, place);
  return regiment ? regiment->Code : At(tree.Groups, place.Group).Text;
}

std::string CodeOutOf(const GroupTree& tree, const Catalogues& catalogues, const CodePage& page,
                      NodePlace place, std::string_view group) {
  const bool isStatic = tree.Mode == ChangeMode::Static;
  if (place.Group < 0) return isStatic ? std::string(group) : "";
  const GroupNode& node = At(tree.Groups, place.Group);
  if (node.IsDefault) return kNoCode;
  const Country* row = CountryOf(catalogues, page, node);
  if (!row) return "";
  return isStatic ? row->StaticCode : row->FlightCode;
}

}  // namespace rws
