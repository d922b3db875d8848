#include "library/forms/frmFind.h"
#include "mainwindow/frmRWS.h"

namespace rws {

void frmRWS::ClickFind() {
  if (!Find) {
    Find = new frmFind(session_, this);
    Find->OpenMission = [this](const std::string& path) {
      if (OpenPath(path)) activateWindow();
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
    Find->Library->ReadAgain(path);
}

}  // namespace rws
