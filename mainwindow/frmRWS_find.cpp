#include <algorithm>
#include <utility>

#include "library/forms/frmFind.h"
#include "mainwindow/frmRWS.h"

namespace rws {

void frmRWS::ClickFind() {
  if (!Find) {
    Find = new frmFind(session_, this);
    Find->OpenMission = [this](const std::string& path) {
      if (OpenPath(path)) activateWindow();
    };
    Find->CheckMissions = [this](const auto& paths) { CheckMissions(paths); };
    Find->EditMissions = [this] {
      // The second click of two comes when the first one's dialog has been closed, and this with
      // it.
      if (!Find->isVisible()) return;
      auto scopes = ScopesHere();
      // Those of the window that was used come first, what is selected before all.
      const auto found = scopes.end() - 2;
      std::rotate(scopes.begin(), found, scopes.end());
      if (scopes[1].Paths.size() > 1) std::swap(scopes[0], scopes[1]);
      EditMany(std::move(scopes));
    };
  }
  if (!Find->isVisible()) Find->LoadForm();
  Find->show();
  Find->raise();
  Find->activateWindow();
}

/** What has been read here because it has changed is read there too. */
void frmRWS::TellFind(std::size_t row) {
  if (!Find || !Find->isVisible()) return;
  const IndexedMission& here = Library->Index()[row];
  const std::string path = Library->Index().Path(row);
  const MissionIndex& there = Find->Library->Index();
  const std::size_t known = there.Find(path);
  if (known == MissionIndex::npos || !there[known].IsRead) return;
  if (there[known].Size != here.Size || there[known].Changed != here.Changed)
    Find->Library->ReadAgain({path});
}

/** The step that was undone last, or done again, may have changed files of any folder. */
void frmRWS::TellFindOfStep(bool isUndone) {
  if (!Find || !Find->isVisible()) return;
  const History& history = session_.History;
  const auto step = static_cast<std::ptrdiff_t>(history.Done) - (isUndone ? 0 : 1);
  std::vector<std::string> paths;
  for (const auto& change : At(history.Steps, step).Files) paths.push_back(change.Path);
  Find->Library->ReadAgain(paths);
}

}  // namespace rws
