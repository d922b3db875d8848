#include "tools/logic/shown_check.h"

#include <map>
#include <utility>

#include "library/briefings.h"
#include "library/facts.h"
#include "mission/pending_lines.h"
#include "mission/untouched.h"
#include "services/faults.h"
#include "session/current.h"
#include "session/doors.h"
#include "session/lines_rule.h"
#include "session/recording.h"
#include "values/mission_edit.h"

namespace rws {

namespace {

constexpr EditKind kMend{"MendShown", "Mending"};

/** The lines that an Update would write; a fault tells why there are none. */
LineArray LinesOf(const Session& session, std::size_t index, const ShownValues& shown) {
  const Mission& mission = session.Doc.Missions[index];
  if (!IsUnsaved(session, index)) return mission.AsRead;
  PendingLines pending =
      LookAhead(session.Doc, session.Services, mission, shown, SavedMission(session, index),
                mission.KeepsLines ? PendingPart::Kept : PendingPart::Anew);
  const std::string& fault = mission.KeepsLines ? pending.KeptFault : pending.AnewFault;
  if (!fault.empty()) throw Fault(fault::InvalidCall, fault);
  return std::move(mission.KeepsLines ? pending.Kept : pending.Anew);
}

/** Why some of the sets cannot be done, by their places. */
std::map<std::size_t, std::string> NotMended(const EditOutcome& edited,
                                             const std::vector<Assignment>& sets) {
  std::map<std::size_t, std::string> reasons;
  for (const auto& refused : edited.Refused)
    reasons.emplace(refused.Place.Set, refused.Place.Text + ": " + refused.Reason);
  for (std::size_t i = 0; i < sets.size(); ++i)
    if (edited.Named[i] != 1) reasons.emplace(i, sets[i].Text);
  return reasons;
}

/** "" for a folder that cannot be listed, too. */
std::string BriefingName(const Services& services, const std::string& path) {
  std::string briefing;
  ResumeNext([&] { briefing = BriefingFileOf(services.Files, path); });
  return briefing;
}

}  // namespace

std::shared_ptr<const CheckTables> FreshTables(const Services& services, const Catalogues& inUse) {
  Services quiet = services;
  quiet.Ask.MsgBox = [](const std::string&, Buttons, Icon, const std::string&) {
    return Answer::Ok;
  };
  return ReadCheckTables(quiet, inUse);
}

CheckedMission CheckShown(const Session& session, const CheckTables& tables, GameFiles& game,
                          std::size_t mission, const ShownValues& shown) {
  const Mission& record = At(session.Doc.Missions, static_cast<std::ptrdiff_t>(mission));
  CheckedMission checked{PathOf(record), "", {}};
  Trap(
      [&] {
        MissionToCheck wanted{checked.Path, LinesOf(session, mission, shown),
                              KindOfFolder(record.DirPath), false,
                              BriefingName(session.Services, checked.Path)};
        wanted.KindGuessed = wanted.Kind == MissionKind::Unknown;
        if (wanted.KindGuessed) {
          MissionFacts facts;
          FactsReader().Read(wanted.Lines.FileText(), facts);
          wanted.Kind = GuessedKind(facts);
        }
        checked.Findings = CheckMission(tables, game, wanted);
      },
      [&](const Fault& caught) { checked.FaultText = caught.Text; });
  return checked;
}

MendOutcome MendShown(Session& session, const std::vector<Finding>& findings) {
  MendOutcome outcome;
  const EditRules rules{session.Tables, session.Services, true};
  std::vector<Assignment> sets;
  for (const auto& finding : findings)
    if (finding.Mend) sets.push_back(*finding.Mend);
  CloseStep(session);
  Edit(session, kMend, [&] {
    Mission& mission = CurrentMission(session);
    while (!sets.empty()) {
      // A copy of all, since what fails half way is of no use.
      Mission mended = mission;
      const EditOutcome edited = EditMission(mended, {sets, {}}, rules);
      const auto reasons = NotMended(edited, sets);
      if (reasons.empty()) {
        mission = std::move(mended);
        outcome.Mended = sets.size();
        break;
      }
      for (auto reason = reasons.rbegin(); reason != reasons.rend(); ++reason)
        sets.erase(sets.begin() + static_cast<std::ptrdiff_t>(reason->first));
      for (const auto& [set, reason] : reasons)
        outcome.Faults.push_back(session.Services.Page.ToUtf8(reason));
    }
  });
  CloseStep(session);
  return outcome;
}

}  // namespace rws
