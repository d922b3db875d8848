#include "session/lines_rule.h"

#include <string>

#include "mission/carry_edits.h"
#include "mission/untouched.h"
#include "services/faults.h"
#include "session/recording.h"

namespace rws {

void ReadLines(Session& session, std::size_t mission, bool keeps) {
  Document& doc = session.Doc;
  const auto known = session.History.Known.find(doc.MissionFiles[mission]);
  if (known == session.History.Known.end() || !doc.Missions[mission].Loaded ||
      doc.Missions[mission].KeepsLines == keeps)
    return;
  Mission saved = Thaw(*known->second.Saved);
  const Mission& record = doc.Missions[mission];
  const std::string reason =
      keeps && !HoldsMission(record.AsRead)
          ? "\"" + PathOf(record) + "\" cannot be read with its lines kept: " + kNoMission + "."
          : SetKeepsLines(doc, session.Services, doc.Missions[mission], keeps, saved);
  if (!reason.empty()) {
    // As it is read now, and an Update that would do harm asks.
    doc.UntouchedOf[PathOf(doc.Missions[mission])] = UntouchedLines::Ask;
    session.Services.Ask.MsgBox(reason + "\n\nIt stays as it is.", Buttons::Ok, Icon::Exclamation,
                                kProgramTitle);
    return;
  }
  const bool isLit = doc.Missions[mission].Modified;
  saved = FreshlyRead(doc, session.Services, doc.Missions[mission]);
  MissionState& state = known->second;
  state.Saved = Freeze(saved, nullptr);
  state.Own = Freeze(doc.Missions[mission], state.Saved);
  // Differs from the mission where it did before.
  if (mission < doc.MissionShadow.size()) {
    Mission& shadow = doc.MissionShadow[mission];
    shadow = isLit ? saved : doc.Missions[mission];
    FillShadow(doc.Missions[mission], shadow);
    state.Shadow = Freeze(shadow, state.Own);
  }
  state.Reading = ++session.History.Readings;
}

void ChooseLines(Session& session, std::size_t mission, UntouchedLines choice) {
  Document& doc = session.Doc;
  const std::string title = choice == UntouchedLines::Keep ? "Keep the lines of " : "Write anew ";
  RecordWhole(session, {doc.MissionFiles[mission]}, title + doc.Missions[mission].BaseName, [&] {
    doc.UntouchedOf[PathOf(doc.Missions[mission])] = choice;
    FollowLinesRule(session, mission);
  });
}

void ChooseAsForAll(Session& session, std::size_t mission) {
  session.Doc.UntouchedOf.erase(PathOf(session.Doc.Missions[mission]));
  FollowLinesRule(session, mission);
}

void FollowLinesRule(Session& session, std::size_t mission) {
  const Mission& record = At(session.Doc.Missions, static_cast<std::ptrdiff_t>(mission));
  const bool keeps = WillKeepLines(session.Doc, record);
  if (record.Loaded && record.KeepsLines != keeps) ReadLines(session, mission, keeps);
}

Mission SavedMission(const Session& session, std::size_t mission) {
  const auto known = session.History.Known.find(session.Doc.MissionFiles[mission]);
  return known == session.History.Known.end() || !known->second.Saved
             ? FreshlyRead(session.Doc, session.Services, session.Doc.Missions[mission])
             : Thaw(*known->second.Saved);
}

UpdateHooks HooksOf(Session& session) {
  return {[&session](std::size_t mission) { NoteWritten(session, mission); },
          [&session](std::size_t mission) { return SavedMission(session, mission); },
          session.AskLines};
}

}  // namespace rws
