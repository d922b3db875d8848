#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "catalogues/catalogues.h"
#include "services/code_page.h"

/** What the dialog that changes an aircraft offers, without the dialog. Texts are in the encoding
    of mission text; rows and nodes count from 0, -1 is none. */
namespace rws {

enum class ChangeMode { Flight, Static };

/** "static" in any letter case is a parked aircraft, any other word a flight. */
ChangeMode ChangeModeOf(std::string_view word);

/** The list of aircraft: name, " F" for a flyable one, side. */
struct AircraftRows {
  std::vector<std::string> Texts;
  /** Row of the class; the first row for a class that is not in the table. */
  std::ptrdiff_t Selected = -1;
};
AircraftRows MakeAircraftRows(const Catalogues& catalogues, std::string_view aircraftClass);

/** Display name of a row's text. A name that itself ends in " F" loses that ending when the
    aircraft is not flyable. */
std::string AircraftOfRow(std::string_view rowText);

/** A regiment below a group. */
struct RegimentNode {
  std::string Code;
  std::string Tag;  // free text
};

/** A group; for a parked aircraft a country, without regiments. */
struct GroupNode {
  std::string Text;
  std::string Country;
  std::optional<std::int32_t> Color;  // blue-green-red; of the list's own text if empty
  std::vector<RegimentNode> Regiments;
  bool IsDefault = false;  // the entry of no country
};

/** A group alone when `Regiment` is -1; nothing at all when `Group` is. */
struct NodePlace {
  std::ptrdiff_t Group = -1, Regiment = -1;
};

struct GroupTree {
  ChangeMode Mode = ChangeMode::Flight;
  std::vector<GroupNode> Groups;
  NodePlace Selected;
};

/** The tree for a flight, given by its name, or for a parked aircraft, given by its country's code
    or name. The flight's regiment or the country is selected; nothing when the tables lack it. */
GroupTree MakeGroupTree(const Catalogues& catalogues, const CodePage& page, ChangeMode mode,
                        std::string_view group);

/** Caption above the tree when the dialog opens. */
std::string StartCaption(const GroupTree& tree, const Catalogues& catalogues, const CodePage& page,
                         std::string_view group);
/** Caption above the tree for a node that was chosen; "None" for none. */
std::string NodeCaption(const GroupTree& tree, const Catalogues& catalogues, const CodePage& page,
                        NodePlace place);

/** Group of a new flight name: the regiment's code; a group stands for its first regiment. "" for
    no node. */
std::string SquadOf(const GroupTree& tree, NodePlace place);

/** Army colour word for a flight, "" when the tables give none; country code for a parked aircraft,
    which keeps the code it came with, `group`, when no node is chosen. */
std::string CodeOutOf(const GroupTree& tree, const Catalogues& catalogues, const CodePage& page,
                      NodePlace place, std::string_view group);

}  // namespace rws
