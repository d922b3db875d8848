#include <QPointer>
#include <algorithm>

#include "mainwindow/frmRWS.h"
#include "mission/references.h"
#include "platform/qt_text.h"
#include "session/current.h"
#include "session/doors.h"

namespace rws {

namespace {

constexpr char kReferencesBar[] = "references";
constexpr EditKind kFollow{"RenameReferences", "References"};

std::vector<std::string> NamesOf(const Mission& mission) {
  std::vector<std::string> names;
  for (const auto& flight : mission.Flights) names.push_back(flight.Name);
  return names;
}

}  // namespace

void frmRWS::ConnectReferences() {
  session_.Listeners.push_back([window = QPointer<frmRWS>(this)](const Change& change) {
    if (window && change.Kind && window->session_.Showing == 0) window->LookForReferences();
  });
}

/** The names that flights have now are those that the next edit is compared with. */
void frmRWS::RememberNames() {
  names_ = session_.Doc.Missions.empty() ? std::vector<std::string>()
                                         : NamesOf(CurrentMission(session_));
  bars->Hide(kReferencesBar);
}

/** Flights that an edit has given other names may be named by lines elsewhere. */
void frmRWS::LookForReferences() {
  if (session_.Doc.Missions.empty()) return;
  const Mission& mission = CurrentMission(session_);
  const auto before = std::exchange(names_, NamesOf(mission));
  // Companions that an aircraft brings along come last.
  if (names_.size() < before.size()) return;
  std::vector<std::pair<std::string, std::string>> renamed;
  QStringList places;
  for (std::size_t i = 0; i < before.size(); ++i) {
    if (before[i] == names_[i] ||
        std::find(names_.begin(), names_.end(), before[i]) != names_.end())
      continue;
    const auto found = References(mission, before[i]);
    if (!found.empty()) renamed.emplace_back(before[i], names_[i]);
    for (const auto& place : found) places << FromBytes(session_.Services.Page, place);
  }
  if (!renamed.empty()) OfferToFollow(renamed, places);
}

void frmRWS::OfferToFollow(const std::vector<std::pair<std::string, std::string>>& renamed,
                           const QStringList& places) {
  constexpr qsizetype kMost = 4;
  QString list = QStringList(places.mid(0, kMost)).join(QStringLiteral(", "));
  if (places.size() > kMost) list += tr(" and %1 more").arg(places.size() - kMost);
  const QString from = FromBytes(session_.Services.Page, renamed.front().first);
  BarContent bar{
      BarKind::Info,
      (renamed.size() == 1
           ? tr("These still name the flight by its old name \"%1\": %2.").arg(from, list)
           : tr("These still name flights by their old names: %1.").arg(list)),
      {{tr("Let them follow"),
        [this, renamed] {
          bars->Hide(kReferencesBar);
          Edit(session_, kFollow, [&] {
            for (const auto& [was, is] : renamed)
              RenameReferences(CurrentMission(session_), was, is);
          });
        }}},
      {}};
  bars->Show(kReferencesBar, bar);
}

}  // namespace rws
