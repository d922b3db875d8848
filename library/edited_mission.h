#pragma once

#include <string>
#include <vector>

#include "catalogues/catalogues.h"
#include "mission/document.h"
#include "services/services.h"
#include "values/mission_edit.h"

/** One mission, read and changed in memory as a part of work on many. Nothing here touches the
    disk. */
namespace rws {

/** A document of one mission, read from a file's bytes; a repair of its line ends stays in memory.
    `base` gives the maps and the game's folder. A file that is no mission is a fault. */
Document ReadOneMission(const Document& base, const Services& services, const std::string& path,
                        std::string bytes, bool keepsLines);

/** What an Update of the document's one mission would write; a fault, in UTF-8, if it cannot be
    built. */
LineArray BuildOneMission(Document& doc, const Services& services);

/** What edits of missions lean on. */
struct EditContext {
  /** For reading; how that goes is in its log. */
  const rws::Services& Services;
  const Catalogues& Tables;
  /** The maps, the game's folder, and what becomes of lines that are not edited: they are kept
      where that has not been chosen to be otherwise. */
  Document Base;
  /** Takes classes and loadouts that the tables lack. */
  bool Force = false;
  /** Values that a mission cannot have are left as they are; else they leave it out whole. */
  bool LeavesImpossible = false;
  /** A mission that lacks what is named without a pattern is left out. */
  bool MustName = false;
};

/** True if an edit of the mission leaves all other lines as they are. */
bool EditKeepsLines(const EditContext& context, const std::string& path);

struct EditedMission {
  /** Of the one mission, with the edits. */
  Document Doc;
  Mission Before;
  EditOutcome Outcome;
  /** Values that were left as they are. */
  std::vector<RefusedValue> Left;

  /** True if a value or flight of it is another one now. */
  bool IsEdited() const;
};

/** Reads a mission and does to its records what the order says, as far as `Outcome` has no faults.
    What is no mission is a fault. */
EditedMission EditRecords(const EditContext& context, const EditOrder& order,
                          const std::string& path, std::string bytes);

/** The new file, which is proved: read again it has all values that were asked for. What would be
    lost is added to the faults. */
LineArray BuildEdited(const EditContext& context, EditedMission& mission);

}  // namespace rws
