#include "mission/update.h"

#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "mission/backup_index.h"
#include "mission/carry_edits.h"
#include "mission/fields.h"
#include "mission/kept_merge.h"
#include "mission/kept_reader.h"
#include "mission/line_ends.h"
#include "mission/mission_file.h"
#include "mission/pending_lines.h"
#include "mission/untouched.h"
#include "services/error_log.h"
#include "services/numbers.h"
#include "services/paths.h"

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

/** True if another program has written the mission's file since it was read. */
bool ChangedOutside(const Services& services, const Mission& mission) {
  const std::string path = PathOf(mission);
  if (mission.AsRead.empty() || services.Files.IsGone(path)) return false;
  return !IsAsRead(mission, services.Files.ReadFile(path));
}

bool AskToReplace(const Services& services, const std::string& path) {
  const DateTime time = FileSystem::LocalTime(services.Files.Stamp(path));
  const std::string question =
      "Another program has changed \"" + path + "\" since it was read, last on " + TimeText(time) +
      ".\n\nReplace it by the mission as it is here? What stands there now is kept in \"RWS "
      "Backup\".";
  return services.Ask.MsgBox(question, Buttons::YesNo, Icon::Exclamation, kProgramTitle) ==
         Answer::Yes;
}

/** Writes the lines over the mission's file. What another program has put there is replaced only
    when the user agrees, and never without a backup. */
bool ReplaceMission(const Services& services, const Preferences& prefs, const Mission& mission,
                    const LineArray& lines) {
  bool refused = false, backup = prefs.bBackup;
  std::string reason;
  const auto look = [&] {
    if (!ChangedOutside(services, mission)) return;
    refused = !AskToReplace(services, PathOf(mission));
    if (refused || backup) return;
    services.Files.RequireWritable(PathOf(mission));
    backup = true;
  };
  const bool looked = Trap(look, [&](const Fault& caught) {
    LogError(services, caught.Text, "WriteMissionFile");
    reason = caught.Text;
  });
  if (refused) return false;
  if (looked && WriteMissionFile(services, mission, lines, backup, &reason)) {
    if (backup) LimitBackups(services, PathOf(mission), prefs.BackupsKept);
    return true;
  }
  TellFailure(services, "Update fail. Reason unknown. Mission file restored.", reason);
  return false;
}

/** Writes a mission whose file has gone. */
bool WriteAnew(const Services& services, const std::string& path, const LineArray& lines) {
  const auto write = [&] {
    const std::string folder = GetParentFolderName(path);
    if (!services.Files.FolderExists(folder)) throw PathNotFoundFault(folder);
    services.Files.ReplaceFile(path, lines.FileText());
  };
  return Trap(write, [&](const Fault& caught) {
    LogError(services, caught.Text, "SaveMission");
    TellFailure(services, "\"" + path + "\" could not be written.", caught.Text);
  });
}

enum class IfGone { Fail, Write };

Mission SavedState(const Document& doc, const Services& services, const UpdateHooks& hooks,
                   std::size_t mission) {
  return hooks.Saved ? hooks.Saved(mission) : FreshlyRead(doc, services, doc.Missions[mission]);
}

/** The new lines by the edits alone. Where they cannot be made without harm the user may have the
    mission made anew. */
bool BuildKept(Document& doc, const Services& services, LineArray& lines, std::size_t mission,
               const Mission& saved, std::string& reason) {
  Mission& record = doc.Missions[mission];
  if (BuildKeptFile(doc, services, record, lines, &reason)) return true;
  reason = services.Page.ToUtf8(reason);
  const Answer answer = services.Ask.MsgBox(
      "\"" + record.BaseName + "\" cannot be written with its other lines kept as they are.\n\n" +
          reason + "\n\nWrite all of its lines anew instead?",
      Buttons::YesNo, Icon::Exclamation, kProgramTitle);
  if (answer == Answer::Yes) reason = SetKeepsLines(doc, services, record, false, saved);
  return false;
}

bool BuildLines(Document& doc, const Services& services, LineArray& lines, std::size_t mission,
                const ShownValues& shown, const UpdateHooks& hooks, std::string& reason) {
  Mission& record = doc.Missions[mission];
  const bool keeps = WillKeepLines(doc, record);
  if (record.Loaded && (keeps || record.KeepsLines)) {
    const Mission saved = SavedState(doc, services, hooks, mission);
    reason = SetKeepsLines(doc, services, record, keeps, saved);
    if (!reason.empty()) return false;
    if (keeps && !HoldsMission(record.Lines)) {
      reason =
          "\"" + PathOf(record) + "\" cannot be written with its lines kept: " + kNoMission + ".";
      return false;
    }
    if (keeps &&
        BuildKept(doc, services, lines, mission, FreshlyRead(doc, services, record), reason))
      return true;
    if (record.KeepsLines) return false;
  }
  return BuildMissionFile(doc, services, lines, mission, shown, &reason);
}

/** What was written is what is in memory. */
void TakeWritten(Document& doc, const Services& services, const LineArray& lines,
                 std::size_t mission) {
  Mission& record = doc.Missions[mission];
  record.AsRead = lines;
  if (!record.KeepsLines) return;
  record.Lines = lines;
  ReadKeptRecords(doc, services, record);
  if (mission < doc.MissionShadow.size()) doc.MissionShadow[mission] = record;
}

bool UpdateMission(Document& doc, const Services& services, const Preferences& prefs,
                   const ShownValues& shown, std::size_t mission, IfGone ifGone,
                   const UpdateHooks& hooks) {
  LineArray lines;
  std::string reason;
  const Mission before = At(doc.Missions, static_cast<std::ptrdiff_t>(mission));
  // One that was read the other way only to be written is not so when it was not written.
  const auto readAsBefore = [&] {
    if (doc.Missions[mission].KeepsLines != before.KeepsLines) doc.Missions[mission] = before;
  };
  if (!BuildLines(doc, services, lines, mission, shown, hooks, reason)) {
    readAsBefore();
    TellFailure(services, "Update Failed. Reason unknown. Update aborted.", reason);
    return false;
  }
  Mission& record = doc.Missions[mission];
  const std::string path = PathOf(record);
  // A write may have failed only behind the new file: that is then no other program's.
  const auto takeWhatStands = [&] {
    readAsBefore();
    ResumeNext([&] {
      if (services.Files.ReadFile(path) == lines.FileText())
        record.AsRead = record.KeepsLines ? lines : LinesOfFile(lines.FileText());
    });
  };
  bool written = false;
  const auto write = [&] {
    written = ifGone == IfGone::Write && services.Files.IsGone(path)
                  ? WriteAnew(services, path, lines)
                  : ReplaceMission(services, prefs, record, lines);
  };
  Trap(write, [&](const Fault& caught) {
    takeWhatStands();
    throw Fault(caught);
  });
  if (written)
    TakeWritten(doc, services, lines, mission);
  else
    takeWhatStands();
  return written;
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

bool AskAboutLines(Document& doc, const Services& services, const ShownValues& shown,
                   const std::vector<std::size_t>& missions, const AskUntouched& ask) {
  std::vector<std::string> paths;
  for (const auto i : missions) {
    const Mission& mission = doc.Missions[i];
    if (ask && mission.Loaded && !mission.KeepsLines &&
        UntouchedRule(doc, mission) == UntouchedLines::Ask &&
        !CheckMadeAnew(doc, services, mission, shown).KeepsMeaning)
      paths.push_back(PathOf(mission));
  }
  if (paths.empty()) return true;
  const auto choice = ask(paths);
  if (!choice) return false;
  for (const auto& path : paths) doc.UntouchedOf[path] = *choice;
  return true;
}

bool UpdateChanges(Document& doc, const Services& services, const Preferences& prefs,
                   const ShownValues& shown, const UpdateHooks& hooks) {
  bool allWritten = true;
  const bool finished = LogAndLeave(services, "UpdateChanges", [&] {
    std::vector<std::size_t> modified;
    for (std::size_t i = 0; i < doc.Missions.size(); ++i)
      if (doc.Missions[i].Modified) modified.push_back(i);
    if (!AskAboutLines(doc, services, shown, modified, hooks.Ask)) {
      allWritten = false;
      return;
    }
    for (const auto i : modified) {
      // Also when the fault of a mission that has gone ends the loop.
      doc.Missions[i].NotWritten = true;
      const bool done = UpdateMission(doc, services, prefs, shown, i, IfGone::Fail, hooks);
      doc.Missions[i].NotWritten = !done;
      doc.Missions[i].Modified = false;
      allWritten &= done;
      if (done && hooks.Written) hooks.Written(i);
    }
    services.Window.LightUpdate(false);
  });
  return finished && allWritten;
}

bool SaveMission(Document& doc, const Services& services, const Preferences& prefs,
                 const ShownValues& shown, std::size_t mission, const UpdateHooks& hooks) {
  bool written = false;
  LogAndLeave(services, "SaveMission", [&] {
    const auto record = [&]() -> Mission& {
      return At(doc.Missions, static_cast<std::ptrdiff_t>(mission));
    };
    if (mission < doc.Missions.size() && !AskAboutLines(doc, services, shown, {mission}, hooks.Ask))
      return;
    record().NotWritten = true;
    record().Modified = false;
    written = UpdateMission(doc, services, prefs, shown, mission, IfGone::Write, hooks);
    record().NotWritten = !written;
  });
  return written;
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
