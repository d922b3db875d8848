#include "session/saving.h"

#include "mission/update.h"
#include "services/paths.h"
#include "session/lines_rule.h"
#include "session/reading.h"
#include "session/recording.h"

namespace rws {

namespace {

/** A mission of another folder, written from what is known of it. */
bool SaveAway(Session& session, const std::string& path) {
  auto& known = session.History.Known;
  Document doc;
  doc.MissionFiles = {path};
  doc.Missions = {Thaw(*known.at(path).Own)};
  NameMission(doc.Missions[0], path);
  doc.MissionShadow = doc.Missions;
  doc.GamePath = session.Doc.GamePath;
  doc.Maps = session.Doc.Maps;
  doc.Untouched = session.Doc.Untouched;
  doc.UntouchedOf = session.Doc.UntouchedOf;
  const UpdateHooks hooks{nullptr, [&](std::size_t) { return Thaw(*known.at(path).Saved); },
                          session.AskLines};
  const bool written = SaveMission(doc, session.Services, session.Prefs, {}, 0, hooks);
  session.Doc.UntouchedOf = doc.UntouchedOf;
  if (!written) return false;
  known.erase(path);
  return true;
}

}  // namespace

bool SaveOne(Session& session, const std::string& path, const ShownValues& shown) {
  const std::ptrdiff_t listed = MissionAt(session.Doc, path);
  if (listed < 0) return SaveAway(session, path);
  const auto mission = static_cast<std::size_t>(listed);
  Record(session, nullptr);
  if (!SaveMission(session.Doc, session.Services, session.Prefs, shown, mission, HooksOf(session)))
    return false;
  NoteWritten(session, mission);
  CloseStep(session);
  Reread(session, mission);
  return true;
}

bool RevertOne(Session& session, std::size_t mission, const std::string& title) {
  bool read = false;
  RecordWhole(session, {session.Doc.MissionFiles[mission]}, title,
              [&] { read = Reread(session, mission); });
  return read;
}

}  // namespace rws
