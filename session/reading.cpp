#include "session/reading.h"

#include <utility>

#include "mission/reader.h"
#include "services/faults.h"
#include "session/recording.h"

namespace rws {

void ReadCurrent(Session& session, Baseline baseline, bool isGone) {
  Document& doc = session.Doc;
  const auto current = static_cast<std::size_t>(doc.CurMission);
  if (!doc.Missions[current].Loaded && !isGone) {
    ResumeNext([&] { LoadMission(doc, session.Services, current); });
    if (doc.Closing) return;
    baseline = Baseline::Take;
    NoteRead(session, current);
  }
  if (baseline == Baseline::Take)
    ResumeNext([&] { doc.MissionShadow[current] = doc.Missions[current]; });
}

bool Reread(Session& session, std::size_t mission) {
  Document& doc = session.Doc;
  if (session.Services.Files.IsGone(doc.MissionFiles[mission])) return false;
  Mission unread;
  unread.DirPath = doc.Missions[mission].DirPath;
  unread.FileName = doc.Missions[mission].FileName;
  unread.BaseName = doc.Missions[mission].BaseName;
  Mission before = std::exchange(doc.Missions[mission], std::move(unread));
  LoadMission(doc, session.Services, mission);
  if (!doc.Missions[mission].Loaded) {
    doc.Missions[mission] = std::move(before);
    return false;
  }
  if (mission < doc.MissionShadow.size()) doc.MissionShadow[mission] = doc.Missions[mission];
  NoteRead(session, mission);
  return true;
}

}  // namespace rws
