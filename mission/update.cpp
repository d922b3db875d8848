#include "mission/update.h"

#include "mission/mission_file.h"
#include "services/error_log.h"
#include "services/numbers.h"

namespace rws {

namespace {

bool SlotChanged(const PlaneSlot& a, const PlaneSlot& b) {
  return a.NumberOn != b.NumberOn || a.NoseArt != b.NoseArt || a.Pilot != b.Pilot ||
         a.Reserved != b.Reserved || a.Skill != b.Skill || a.Skin != b.Skin;
}

bool FlightChanged(const Flight& a, const Flight& b) {
  bool changed = false;
  for (std::size_t i = 0; i < a.Waypoints.size(); ++i) {
    const Waypoint& other = At(b.Waypoints, static_cast<std::ptrdiff_t>(i));
    const Waypoint& own = a.Waypoints[i];
    changed =
        changed || own.Alt != other.Alt || own.Marker != other.Marker || own.Speed != other.Speed;
  }
  for (std::size_t i = 0; i < a.PlaneSlots.size(); ++i)
    changed = changed || SlotChanged(a.PlaneSlots[i], b.PlaneSlots[i]);
  return changed || Val(a.StartTime) != Val(b.StartTime) || a.Fuel != b.Fuel || a.Name != b.Name ||
         a.Status != b.Status || a.Planes != b.Planes || a.OnlyAI != b.OnlyAI ||
         a.Parachute != b.Parachute || a.Class != b.Class || a.Skill != b.Skill ||
         a.Weapons != b.Weapons;
}

bool LinesChanged(const LineArray& a, const LineArray& b) {
  if (a.size() == b.size()) return !(a == b);
  if (a.size() > b.size()) throw SubscriptFault();
  for (std::size_t i = 0; i < a.size(); ++i)
    if (a[i] != b[i]) return true;
  return false;
}

bool ValuesChanged(const Mission& a, const Mission& b) {
  return a.Army != b.Army || a.BriefSoundLine != b.BriefSoundLine ||
         a.CloudHeight != b.CloudHeight || a.CloudType != b.CloudType || a.MapName != b.MapName ||
         a.FileName != b.FileName || a.DirPath != b.DirPath || a.Player != b.Player ||
         a.PlayerNum != b.PlayerNum || a.BriefSound != b.BriefSound || a.Time != b.Time ||
         a.TimeConstant != b.TimeConstant || a.WeaponsConstant != b.WeaponsConstant;
}

/** Walks everything, also behind the first difference: a missing counterpart further on decides. */
bool RecordsDiffer(const Mission& own, const Mission& shadow) {
  bool changed = false;
  for (std::size_t i = 0; i < own.Flights.size(); ++i)
    changed |= FlightChanged(own.Flights[i], At(shadow.Flights, static_cast<std::ptrdiff_t>(i)));
  for (std::size_t i = 0; i < own.BornPlaces.size(); ++i) {
    const auto& other = At(shadow.BornPlaces, static_cast<std::ptrdiff_t>(i));
    changed |= own.BornPlaces[i].Radius != other.Radius || own.BornPlaces[i].Army != other.Army;
  }
  changed |= LinesChanged(own.Lines, shadow.Lines);
  return changed || ValuesChanged(own, shadow);
}

void TellFailure(const Services& services, const char* text) {
  services.Ask.MsgBox(text, Buttons::Ok, Icon::Critical, kProgramTitle);
}

bool UpdateMission(Document& doc, const Services& services, const Preferences& prefs,
                   const ShownValues& shown, std::size_t mission) {
  LineArray lines;
  if (!BuildMissionFile(doc, services, lines, mission, shown)) {
    TellFailure(services, "Update Failed. Reason unknown. Update aborted.");
    return false;
  }
  if (!WriteMissionFile(services, doc.Missions[mission], lines, prefs.bBackup)) {
    TellFailure(services, "Update fail. Reason unknown. Mission file restored.");
    return false;
  }
  return true;
}

}  // namespace

bool MissionChanged(const Document& doc, std::size_t mission) {
  bool changed = false;
  ResumeNext([&] {
    const Mission& own = At(doc.Missions, static_cast<std::ptrdiff_t>(mission));
    const Mission& shadow = At(doc.MissionShadow, static_cast<std::ptrdiff_t>(mission));
    // A removal is told before the walk: the flight that moved up may have more waypoints than the
    // shadow's flight at its place, which would count as unchanged.
    changed = own.Flights.size() < shadow.Flights.size() || RecordsDiffer(own, shadow);
  });
  return changed;
}

void SetModify(Document& doc, const Services& services) {
  LogAndLeave(services, "SetModify", [&] {
    if (doc.bLoading) return;
    Mission& mission = At(doc.Missions, doc.CurMission);
    if (!mission.HasBornPlace && !services.Window.IsUp()) return;
    mission.Modified = MissionChanged(doc, static_cast<std::size_t>(doc.CurMission));
    services.Window.LightUpdate(mission.Modified);
  });
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
