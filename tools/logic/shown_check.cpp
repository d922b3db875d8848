#include "tools/logic/shown_check.h"

#include <algorithm>
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

std::string BriefingOf(const Services& services, const Mission& mission) {
  std::string briefing;
  ResumeNext([&] {
    for (const auto& listed : ListedMissions(services.Files.ListFolder(mission.DirPath)))
      if (listed.Name == mission.FileName) briefing = listed.Briefing;
  });
  return briefing;
}

}  // namespace

std::shared_ptr<const CheckTables> FreshTables(const Services& services) {
  Services quiet = services;
  quiet.Ask.MsgBox = [](const std::string&, Buttons, Icon, const std::string&) {
    return Answer::Ok;
  };
  return ReadCheckTables(quiet);
}

CheckedMission CheckShown(const Session& session, const CheckTables& tables, GameFiles& game,
                          std::size_t mission, const ShownValues& shown) {
  const Mission& record = At(session.Doc.Missions, static_cast<std::ptrdiff_t>(mission));
  CheckedMission checked{PathOf(record), "", {}};
  Trap(
      [&] {
        MissionToCheck wanted{checked.Path, LinesOf(session, mission, shown),
                              KindOfFolder(record.DirPath), false,
                              BriefingOf(session.Services, record)};
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
  CloseStep(session);
  Edit(session, kMend, [&] {
    Mission& mission = CurrentMission(session);
    for (const auto& finding : findings) {
      if (!finding.Mend) continue;
      // A copy, since what fails half way is of no use.
      Mission mended = mission;
      EditOutcome edited = EditMission(mended, {{*finding.Mend}, {}}, rules);
      const bool isNamed = !edited.Named.empty() && edited.Named[0] == 1;
      if (edited.Faults.empty() && isNamed) {
        mission = std::move(mended);
        ++outcome.Mended;
      } else {
        const std::string fault = edited.Faults.empty() ? finding.Mend->Text : edited.Faults[0];
        outcome.Faults.push_back(session.Services.Page.ToUtf8(fault));
      }
    }
  });
  CloseStep(session);
  return outcome;
}

}  // namespace rws
