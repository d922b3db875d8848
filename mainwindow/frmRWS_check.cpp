#include <algorithm>
#include <utility>

#include "controls/menu_entries.h"
#include "mainwindow/frmRWS.h"
#include "platform/qt_text.h"
#include "services/forms/frmCam.h"
#include "services/text.h"
#include "services/trapped.h"
#include "session/current.h"
#include "session/recording.h"
#include "tools/frmCheck.h"
#include "tools/logic/compatibility.h"
#include "tools/logic/shown_check.h"

namespace rws {

void frmRWS::BuildCheckMenu() {
  mnuCheck = AddEntry(mnuTool, tr("Check &Missions..."), QStringLiteral("mnuCheck"));
  mnuCompatibility =
      AddEntry(mnuTool, tr("Mission Compa&tibility..."), QStringLiteral("mnuCompatibility"));
  connect(mnuTool, &QMenu::aboutToShow, this,
          [this] { mnuCompatibility->setEnabled(IsMissionShown(session_)); });
  connect(mnuCheck, &QAction::triggered, this,
          Trapped(session_.Services, "mnuCheck_Click", [this](bool) { CheckMissions({}); }));
  connect(
      mnuCompatibility, &QAction::triggered, this,
      Trapped(session_.Services, "mnuCompatibility_Click", [this](bool) { ShowCompatibility(); }));
}

void frmRWS::CheckMissions(const std::vector<std::string>& found) {
  if (!check_) {
    check_ = new frmCheck(session_, this);
    check_->Shown = [this] { return missionPanel->Shown(); };
    check_->GoTo = [this](const std::string& path, const Finding* finding) {
      return GoToFinding(path, finding);
    };
    check_->Mended = [this] {
      const std::string path = At(session_.Doc.MissionFiles, session_.Doc.CurMission);
      GoTo(path, session_.Doc.CurFlight);
    };
    check_->Compatibility = [this] { ShowCompatibility(); };
  }
  if (!check_->isVisible()) check_->LoadForm();
  check_->SetFound(found);
  check_->show();
  check_->raise();
  check_->activateWindow();
  check_->Check(found.empty() ? frmCheck::kShown : frmCheck::kFound);
}

/** Shows a mission as a click on its row does, or by opening its folder. */
bool frmRWS::OpenToCheck(const std::string& path) {
  Document& doc = session_.Doc;
  const auto row = MissionAt(doc, path);
  if (row == doc.CurMission && !doc.Missions.empty()) return true;
  if (row >= 0) {
    lstMission->SelectMission(static_cast<int>(row));
    FollowList(LeaveBy::Mouse);
    if (!doc.Closing) lstMission->SelectMission(doc.CurMission);
  } else if (!OpenPath(path)) {
    return false;
  }
  return !doc.Closing && !doc.Missions.empty() && MissionAt(doc, path) == doc.CurMission;
}

bool frmRWS::GoToFinding(const std::string& path, const Finding* finding) {
  if (!OpenToCheck(path)) return false;
  if (!finding) return true;
  const auto& flights = CurrentMission(session_).Flights;
  const auto flight = std::find_if(flights.begin(), flights.end(), [&](const Flight& one) {
    return EqualNoCase(one.Name, finding->Flight);
  });
  if (!finding->Flight.empty() && flight != flights.end()) {
    const int index = static_cast<int>(flight - flights.begin());
    if (index != session_.Doc.CurFlight) GoTo(path, index);
  }
  const std::string place = PlaceText(*finding, session_.Services.Page);
  Notice(place.empty() ? finding->Text : place + ": " + finding->Text);
  return true;
}

void frmRWS::ShowCompatibility() {
  // The folder may have vanished since the check that lit the button.
  if (!IsMissionShown(session_)) return;
  const auto current = static_cast<std::size_t>(session_.Doc.CurMission);
  const Mission& mission = CurrentMission(session_);
  const auto tables = FreshTables(session_.Services, session_.Tables);
  GameFiles game(session_.Services.Files, session_.Doc.GamePath);
  const auto rows = SuitabilityOf(
      session_, mission, CheckShown(session_, *tables, game, current, missionPanel->Shown()));
  frmCam form(session_, this);
  form.Report.emplace();
  for (std::size_t i = 0; i < rows.size(); ++i) (*form.Report)[i] = {rows[i].Text, rows[i].Warning};
  form.LoadForm();
  Popups.ShowDialog(form);
}

}  // namespace rws
