#pragma once

#include <string>
#include <vector>

#include "session/recovery.h"
#include "session/undo.h"
#include "tests/support/desk.h"

namespace rws::test {

/** Text of a mission in the form in which it is written: three flights, "r0100" to "r0102", with a
    fuel of 100. The tag tells it from others. */
std::string TaggedMission(const std::string& tag);

/** A session on missions of "in", worked on as the window does it. The program is in "program". */
struct SessionDesk : Desk {
  /** Makes "in/NAME.mis" for each name, tagged by it, and shows the first; other files as for a
      desk. A name with a "+" has a briefing too. */
  explicit SessionDesk(const std::vector<std::string>& names, const std::string& files = "");

  /** Does words one after another: "fuel1=50" (of flight 1), "skills=2" (of all), "weather=3",
      "base=900" (a home base, which no Update looks at), "line=x" (the last kept line), "quiet0=50"
      (fuel, not compared), "compare", "show0=55" (fuel, by showing alone), "close", "go=b", "undo",
      "redo", "skip", "save", "drop" (edits of the current mission), "reread" (the folder),
      "relist", "gone=a" (its file), "keep" (the recovery files). */
  void Run(const std::string& words);

  /** Titles of the steps, joined by "|"; undone ones in brackets. */
  std::string Steps() const;
  /** What a mission of the list has: fuel of its flights, weather, "^" and the fuel of the shadow's
      first flight; "*" for unsaved, "!" for lit. "unread" for such. */
  std::string State(const std::string& name) const;
  /** Names and bytes of all files that are the user's. */
  std::string Files() const;
  std::string Path(const std::string& name) const { return Box.Path("in/" + name + ".mis"); }
  std::size_t Row(const std::string& name) const;
  void Show(const std::string& path, bool keepsShadow);
  /** As the window does after each command that changes files. */
  void Reread(const std::string& by);

  UndoResult Last;
  RecoveryState Recovery;

 private:
  void Change(const std::string& what, const std::string& value);
};

}  // namespace rws::test
