#include "mission/update.h"

#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "mission/fields.h"
#include "mission/mission_file.h"
#include "services/error_log.h"
#include "services/numbers.h"

namespace rws {

namespace {

/** True if the walk over `own` finds an element for which `shadow` has no counterpart. */
bool HoldsMore(const Mission& own, const Mission& shadow) {
  if (own.Flights.size() > shadow.Flights.size()) return true;
  for (std::size_t i = 0; i < own.Flights.size(); ++i)
    if (own.Flights[i].Waypoints.size() > shadow.Flights[i].Waypoints.size()) return true;
  return own.BornPlaces.size() > shadow.BornPlaces.size() || own.Lines.size() > shadow.Lines.size();
}

bool LinesDiffer(const LineArray& own, const LineArray& shadow) {
  if (own.size() == shadow.size()) return !(own == shadow);
  for (std::size_t i = 0; i < own.size(); ++i)
    if (own[i] != shadow[i]) return true;
  return false;
}

template <class Record>
bool RecordsDiffer(const Record& own, const Record& shadow);

/** The elements of `own` against their counterparts, which `HoldsMore` has looked for. */
template <class Array>
bool ElementsDiffer(const Array& own, const Array& shadow) {
  for (std::size_t i = 0; i < own.size(); ++i)
    if (RecordsDiffer(own[i], shadow[i])) return true;
  return false;
}

template <class Value>
bool ValuesDiffer(const Value& own, const Value& shadow, Compared how) {
  if constexpr (requires { FieldsOf<std::decay_t<decltype(own[0])>>::kTable; }) {
    return how == Compared::Inside && ElementsDiffer(own, shadow);
  } else if constexpr (std::is_same_v<Value, std::string>) {
    if (how == Compared::ByValue) return Val(own) != Val(shadow);
    return how == Compared::Exactly && own != shadow;
  } else if constexpr (std::is_same_v<Value, LineArray>) {
    return how == Compared::Exactly && LinesDiffer(own, shadow);
  } else {
    return how == Compared::Exactly && !(own == shadow);
  }
}

template <class Record>
bool RecordsDiffer(const Record& own, const Record& shadow) {
  bool differ = false;
  ForEachField<Record>([&](const auto& field) {
    differ = differ || ValuesDiffer(own.*field.Pointer, shadow.*field.Pointer, field.How);
  });
  return differ;
}

void TellFailure(const Services& services, std::string text, const std::string& reason) {
  if (!reason.empty()) text += "\n\n" + reason;
  services.Ask.MsgBox(text, Buttons::Ok, Icon::Critical, kProgramTitle);
}

constexpr char kSaveQuestion[] = "Do you wish to save the changes to this mission?";

Answer AskToSave(const Services& services, const Preferences& prefs, LeaveBy by,
                 const std::string& question) {
  if (prefs.SavePromptMode == kSaveAsk)
    return services.Ask.MsgBox(question, Buttons::YesNoCancel, Icon::Question, kProgramTitle);
  if (prefs.SavePromptMode == kSaveAlways) return Answer::Yes;
  // The keyboard cannot leave a modified mission in this mode, the mouse can; the difference is
  // deliberate.
  return by == LeaveBy::Mouse ? Answer::No : Answer::Cancel;
}

std::vector<std::size_t> PendingMissions(const Document& doc) {
  std::vector<std::size_t> pending;
  for (std::size_t i = 0; i < doc.Missions.size(); ++i)
    if (doc.Missions[i].Modified || doc.Missions[i].NotWritten) pending.push_back(i);
  return pending;
}

/** Names the missions when it is not the current one alone. */
std::string PendingQuestion(const Document& doc, const std::vector<std::size_t>& pending) {
  std::string question = kSaveQuestion;
  if (pending.size() == 1 && std::cmp_equal(pending[0], doc.CurMission)) return question;
  question += "\n\nNot written yet:";
  for (const auto i : pending) question += "\n" + doc.Missions[i].BaseName;
  return question;
}

bool UpdateMission(Document& doc, const Services& services, const Preferences& prefs,
                   const ShownValues& shown, std::size_t mission) {
  LineArray lines;
  std::string reason;
  if (!BuildMissionFile(doc, services, lines, mission, shown, &reason)) {
    TellFailure(services, "Update Failed. Reason unknown. Update aborted.", reason);
    return false;
  }
  if (!WriteMissionFile(services, doc.Missions[mission], lines, prefs.bBackup, &reason)) {
    TellFailure(services, "Update fail. Reason unknown. Mission file restored.", reason);
    return false;
  }
  return true;
}

}  // namespace

bool MissionChanged(const Document& doc, std::size_t mission) {
  if (mission >= doc.Missions.size() || mission >= doc.MissionShadow.size()) return false;
  const Mission& own = doc.Missions[mission];
  const Mission& shadow = doc.MissionShadow[mission];
  // A removal is told before all else: the flight that moved up may have more waypoints than the
  // shadow's flight at its place, which would count as unchanged.
  if (own.Flights.size() < shadow.Flights.size()) return true;
  return !HoldsMore(own, shadow) && RecordsDiffer(own, shadow);
}

bool UpdateChanges(Document& doc, const Services& services, const Preferences& prefs,
                   const ShownValues& shown) {
  bool allWritten = true;
  const bool done = LogAndLeave(services, "UpdateChanges", [&] {
    for (std::size_t i = 0; i < doc.Missions.size(); ++i) {
      if (!doc.Missions[i].Modified) continue;
      // Also when the fault of a mission that has gone ends the loop.
      doc.Missions[i].NotWritten = true;
      doc.Missions[i].NotWritten = !UpdateMission(doc, services, prefs, shown, i);
      allWritten &= !doc.Missions[i].NotWritten;
      doc.Missions[i].Modified = false;
    }
    services.Window.LightUpdate(false);
  });
  return done && allWritten;
}

void DropEdits(Document& doc, std::size_t mission) {
  Mission unread;
  unread.DirPath = doc.MissionShadow[mission].DirPath;
  unread.FileName = doc.MissionShadow[mission].FileName;
  unread.BaseName = doc.MissionShadow[mission].BaseName;
  doc.Missions[mission] = unread;
}

bool WarnSave(Document& doc, const Services& services, const Preferences& prefs, LeaveBy by,
              const std::function<bool()>& clickUpdate) {
  const auto current = static_cast<std::size_t>(doc.CurMission);
  if (!doc.Missions[current].Modified) return true;
  const Answer answer = AskToSave(services, prefs, by, kSaveQuestion);
  if (answer == Answer::Cancel) return false;
  if (answer == Answer::Yes) return clickUpdate();
  DropEdits(doc, current);
  return true;
}

bool IsAnyPending(const Document& doc) { return !PendingMissions(doc).empty(); }

bool SettlePending(Document& doc, const Services& services, const Preferences& prefs,
                   const std::function<bool()>& clickUpdate) {
  const auto pending = PendingMissions(doc);
  if (pending.empty()) return true;
  const Answer answer = AskToSave(services, prefs, LeaveBy::Mouse, PendingQuestion(doc, pending));
  if (answer == Answer::Cancel) return false;
  for (const auto i : pending) {
    if (answer == Answer::Yes)
      doc.Missions[i].Modified = true;
    else
      DropEdits(doc, i);
  }
  return answer != Answer::Yes || clickUpdate();
}

}  // namespace rws
