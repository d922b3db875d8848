#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "mission/document.h"
#include "services/services.h"
#include "tools/logic/tool_outcome.h"

/** The tools that work on the missions of a folder in bulk, and those that rename one. A failure is
    told in the status bar and ends the tool where it stands; nothing is undone, and no file is ever
    replaced except where a tool says so. Between files waiting events run, and a run ends early
    when the program is to close. */
namespace rws {

struct ToolResult {
  ToolOutcome Outcome = ToolOutcome::Nothing;
  /** The text of the row or the directory, if the outcome is one of these. */
  std::string Text;
};

/** Called after each file; a numbering takes two steps a file. */
using Progress = std::function<void(std::size_t done, std::size_t of)>;

/** Numbers every mission of the directory under one new name that the user types, in the order of
    the list. `MissionFiles` and the records follow the names on disk. A run that did not come to
    its end gives `Rows`: reread, the list would lack a mission that is left with a "tmp" name. */
ToolResult RenameAll(Document& doc, const Services& services, const Progress& progress = {});

/** Copies the missions of a folder to another one without their player lines, under their own or
    under numbered names, replacing what bears these names there. */
ToolResult ConvertMissionFolder(const Document& doc, const Services& services,
                                const Progress& progress = {});

/** Writes a copy of a mission without the lines that assign the player. It gets the file name of
    `target`, or the mission's own if that is "", and replaces a file of that name. */
void StripPlayerLines(const Services& services, const std::string& source,
                      const std::string& destination, const std::string& target);

/** Copies missions that the user chooses into the current directory, with their briefings; one
    whose name is taken ends the run. */
ToolResult CopyFrom(const Document& doc, const Services& services, const Progress& progress = {});

/** Renames the current mission and its briefing: 0 as typed, 1 in proper case, 2 in lower and 3 in
    upper case. `MissionFiles` and the records follow the name on disk. A mission without a briefing
    is left with a "tmp" name, and so is one whose new name is taken; neither is followed by a
    reread, in which it would vanish from the list. */
ToolResult RenameCase(Document& doc, const Services& services, int index);

/** Tells the progress and lets waiting events run. */
void FileDone(const Services& services, const Progress& progress, std::size_t done, std::size_t of);

/** A fault for a typed name that a file cannot bear on every system, or that leads to another
    folder. */
void RequireFileName(const std::string& name);

}  // namespace rws
