#include "library/edited_mission.h"

#include <utility>

#include "mission/kept_merge.h"
#include "mission/kept_reader.h"
#include "mission/line_ends.h"
#include "mission/reader.h"
#include "mission/untouched.h"
#include "mission/writer.h"
#include "services/error_log.h"

namespace rws {

namespace {

void RequireMission(const Mission& mission) {
  if (!mission.Loaded) throw ValueFault("the mission cannot be read");
  if (!HoldsMission(mission.Lines)) throw ValueFault(kNoMission);
}

}  // namespace

Document ReadOneMission(const Document& base, const Services& services, const std::string& path,
                        std::string bytes, bool keepsLines) {
  Document doc;
  doc.Maps = base.Maps;
  doc.GamePath = base.GamePath;
  doc.MissionFiles = {path};
  LoadMissionArray(doc, services);
  if (keepsLines) {
    ReadKeptMission(doc, services, doc.Missions[0], std::move(bytes));
    return doc;
  }
  if (auto repaired = RepairedLineEnds(bytes)) bytes = std::move(*repaired);
  ReadMissionText(doc, services, 0, std::move(bytes));
  return doc;
}

LineArray BuildOneMission(Document& doc, const Services& services) {
  const Mission& mission = doc.Missions[0];
  LineArray lines;
  std::string reason;
  const Services silent = Silent(services);
  const bool built = mission.KeepsLines ? BuildKeptFile(doc, silent, mission, lines, &reason)
                                        : BuildMissionFile(doc, silent, lines, 0, {}, &reason);
  if (!built)
    throw Fault(fault::InvalidCall,
                "cannot build the new text of \"" + doc.MissionFiles[0] + "\"" +
                    (reason.empty() ? "" : ": " + services.Page.ToUtf8(reason)));
  return lines;
}

bool EditKeepsLines(const EditContext& context, const std::string& path) {
  const Document& base = context.Base;
  const auto own = base.UntouchedOf.find(path);
  return (own == base.UntouchedOf.end() ? base.Untouched : own->second) != UntouchedLines::Anew;
}

bool EditedMission::IsEdited() const {
  const Mission& edited = Doc.Missions[0];
  if (edited.Flights.size() != Before.Flights.size()) return true;
  for (const auto& place : Outcome.Places)
    if (ReadValue(Before, place) != ReadValue(edited, place)) return true;
  return false;
}

EditedMission EditRecords(const EditContext& context, const EditOrder& order,
                          const std::string& path, std::string bytes) {
  const EditRules rules{context.Tables, context.Services, context.Force};
  EditedMission mission;
  mission.Doc = ReadOneMission(context.Base, context.Services, path, std::move(bytes),
                               EditKeepsLines(context, path));
  RequireMission(mission.Doc.Missions[0]);
  mission.Before = mission.Doc.Missions[0];
  std::vector<ValuePlace> without;
  while (true) {
    mission.Outcome = EditMission(mission.Doc.Missions[0], order, rules, without);
    if (mission.Outcome.Refused.empty() || !context.LeavesImpossible) break;
    for (auto& refused : mission.Outcome.Refused) {
      without.push_back(refused.Place);
      mission.Left.push_back(std::move(refused));
    }
    mission.Doc.Missions[0] = mission.Before;
  }
  return mission;
}

LineArray BuildEdited(const EditContext& context, EditedMission& mission) {
  const std::string& path = mission.Doc.MissionFiles[0];
  const Mission edited = mission.Doc.Missions[0];
  LineArray lines = BuildOneMission(mission.Doc, context.Services);
  const bool keeps = edited.KeepsLines;
  const Document read =
      ReadOneMission(context.Base, context.Services, path, lines.FileText(), keeps);
  auto& faults = mission.Outcome.Faults;
  for (const auto& text : LostValues(edited, read.Missions[0], mission.Outcome.Places))
    faults.push_back(text + ": the value would be lost" +
                     (keeps ? "" : " when all lines are written anew"));
  if (read.Missions[0].Flights.size() != edited.Flights.size())
    faults.emplace_back("flights would be lost");
  return lines;
}

}  // namespace rws
