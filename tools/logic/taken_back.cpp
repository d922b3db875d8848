#include "tools/logic/taken_back.h"

#include <utility>

#include "mission/carry_edits.h"
#include "mission/update.h"
#include "services/faults.h"
#include "session/lines_rule.h"
#include "session/recording.h"

namespace rws {

namespace {

void PutRecord(Session& session, std::size_t mission, Mission record) {
  Document& doc = session.Doc;
  MissionState& state = session.History.Known.at(doc.MissionFiles[mission]);
  const bool isAnew = !record.KeepsLines;
  Mission& own = doc.Missions[mission] = std::move(record);
  // A mission that is made anew has been read once more, without what showing changes.
  if (isAnew) {
    state.Saved = Freeze(FreshlyRead(doc, session.Services, own), nullptr);
    state.Reading = ++session.History.Readings;
  }
  if (mission < doc.MissionShadow.size()) {
    Mission& shadow = doc.MissionShadow[mission] = Thaw(*state.Saved);
    FillShadow(own, shadow);
    own.Modified = MissionChanged(doc, mission);
    shadow.Modified = own.Modified;
    state.Shadow = Freeze(shadow, state.Saved);
  }
  // Nor is an Update still owed that had failed over what is no longer there.
  own.NotWritten = own.NotWritten && !SameContent(*Freeze(own, state.Saved), *state.Saved);
  state.Own = Freeze(own, state.Saved);
}

}  // namespace

std::optional<std::size_t> TakeChangeBack(Session& session, std::size_t mission,
                                          const ChangedLine& line) {
  Document& doc = session.Doc;
  const Mission& record = At(doc.Missions, static_cast<std::ptrdiff_t>(mission));
  if (!session.History.Known.contains(doc.MissionFiles[mission])) return {};
  TakenBack taken = TakeBack(doc, session.Services, record, SavedMission(session, mission), line);
  if (!taken.Record) return {};
  RecordWhole(session, {doc.MissionFiles[mission]}, "Change taken back in " + record.BaseName,
              [&] { PutRecord(session, mission, std::move(*taken.Record)); });
  return taken.Others;
}

}  // namespace rws
