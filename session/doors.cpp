#include "session/doors.h"

#include "mission/update.h"
#include "session/recording.h"

namespace rws {

void SetModify(Session& session) {
  LogAndLeave(session.Services, "SetModify", [&] {
    Document& doc = session.Doc;
    if (doc.bLoading) return;
    Mission& mission = At(doc.Missions, doc.CurMission);
    if (!mission.HasBornPlace && !session.Services.Window.IsUp()) return;
    mission.Modified = MissionChanged(doc, static_cast<std::size_t>(doc.CurMission));
    session.Services.Window.LightUpdate(mission.Modified);
  });
}

void Notify(Session& session, const EditKind* kind) {
  Record(session, kind);
  const Change change{kind, static_cast<std::size_t>(session.Doc.CurMission)};
  for (const auto& listener : session.Listeners) listener(change);
}

bool KeepsShownLines(const Session& session) {
  const auto& missions = session.Doc.Missions;
  const auto current = static_cast<std::size_t>(session.Doc.CurMission);
  return current < missions.size() && missions[current].KeepsLines;
}

}  // namespace rws
