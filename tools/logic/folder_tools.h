#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "mission/document.h"
#include "services/services.h"
#include "services/work.h"
#include "tools/logic/tool_outcome.h"

/** The tools that work on the missions of a folder in bulk, and those that rename one. A failure is
    told in the status bar, with what stands where, and ends the tool; nothing is undone, and no
    file is ever replaced except where a tool says so. Between files waiting events run, and a run
    ends early when the program is to close or the user cancels. */
namespace rws {

struct ToolResult {
  ToolOutcome Outcome = ToolOutcome::Nothing;
  /** The text of the row or the directory, if the outcome is one of these. */
  std::string Text;
  /** How many missions it was to work on, 0 for one alone, and how many of them are done. */
  std::size_t Done = 0, Of = 0;
};

/** What a tool asks of its caller; each may be empty. */
struct ToolSeam {
  /** Called once, behind the last question and before the first change: settles the edits that a
      reread would drop. False stops the tool. The caller may reread the directory meanwhile. */
  std::function<bool()> Settle;
  /** Called after each file; a numbering takes two steps a file. False if the user cancels. */
  TellWork Told;
};

/** Numbers every mission of the directory under one new name that the user types, in the order of
    the list. `MissionFiles` and the records follow the names on disk. A run that did not come to
    its end gives `Rows`: reread, the list would lack a mission that is left with a "tmp" name.
   Cancelled, all get their old names back. */
ToolResult RenameAll(Document& doc, const Services& services, const ToolSeam& seam = {});

/** Copies the missions of a folder to another one without their player lines, under their own or
    under numbered names, replacing what bears these names there. */
ToolResult ConvertMissionFolder(const Document& doc, const Services& services,
                                const ToolSeam& seam = {});

/** Writes a copy of a mission without the lines that assign the player. It gets the file name of
    `target`, or the mission's own if that is "", and replaces a file of that name. */
void StripPlayerLines(const Services& services, const std::string& source,
                      const std::string& destination, const std::string& target);

/** Copies missions that the user chooses into the current directory, with their briefings; one
    whose name is taken ends the run. Cancelled, what is copied stays. */
ToolResult CopyFrom(const Document& doc, const Services& services, const ToolSeam& seam = {});

/** Renames the current mission and its briefing: 0 as typed, 1 in proper case, 2 in lower and 3 in
    upper case. `MissionFiles` and the records follow the name on disk. A mission without a briefing
    is left with a "tmp" name, and so is one whose new name is taken; neither is followed by a
    reread, in which it would vanish from the list. */
ToolResult RenameCase(Document& doc, const Services& services, int index,
                      const ToolSeam& seam = {});

/** Tells the progress and lets waiting events run. False if the user cancels. */
bool FileDone(const Services& services, const ToolSeam& seam, const WorkStep& step);

/** The edits are settled and the tool may begin. */
bool MayBegin(const ToolSeam& seam);

/** A cancelled run is told in the status bar. */
void TellCancelled(const Services& services, const std::string& whatStands);

/** A fault for a typed name that a file cannot bear on every system, or that leads to another
    folder. */
void RequireFileName(const std::string& name);

}  // namespace rws
