#include "mission/update.h"

#include <type_traits>

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
      allWritten &= UpdateMission(doc, services, prefs, shown, i);
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
  Answer answer = Answer::Yes;
  if (prefs.SavePromptMode == kSaveAsk)
    answer = services.Ask.MsgBox("Do you wish to save the changes to this mission?",
                                 Buttons::YesNoCancel, Icon::Question, kProgramTitle);
  // The keyboard cannot leave a modified mission in this mode, the mouse can; the difference is
  // deliberate.
  if (prefs.SavePromptMode == kSaveNever)
    answer = by == LeaveBy::Mouse ? Answer::No : Answer::Cancel;
  if (answer == Answer::Cancel) return false;
  if (answer == Answer::Yes) return clickUpdate();
  DropEdits(doc, current);
  return true;
}

}  // namespace rws
