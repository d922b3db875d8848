#pragma once

namespace rws {

/** What a tool that works on files leaves the window to do. */
enum class ToolOutcome {
  /** A failure, told already, or nothing to be done: the window stays as it is. */
  Nothing,
  /** The user cancelled an entry of the mission menu, which ends like the others all the same. */
  Cancelled,
  /** The row of the current mission shows another text. */
  RowText,
  /** The file of the current mission is gone and the rest failed: its row says so, nothing is
     reread. */
  Gone,
  /** Files have other names now; every row shows its `BaseName` anew. */
  Rows,
  /** The files of the directory have changed and must be reread. */
  Reread,
  /** Another directory takes the place of the current one and is then read. */
  GoToFolder
};

}  // namespace rws
