#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "library/edited_mission.h"
#include "mission/mission_file.h"
#include "services/work.h"

/** Edits of many missions in two steps: a plan that changes nothing and can be looked at, and its
    application, which writes each mission whole or not at all. Reasons are UTF-8, values in the
    encoding of mission text. */
namespace rws {

/** A value of a mission that becomes another one, or that cannot. */
struct PlannedValue {
  ValueOf Of = ValueOf::Mission;
  std::uint32_t Index = 0;  // of a plane, waypoint or home base, from 0
  std::string_view Field;   // "" for a flight that is removed
  std::string Flight;       // "" for a value of no flight
  std::string Old, New;
  std::string WhyNot;  // "" for a value that is changed
};

struct PlannedMission {
  std::string Path;
  /** SHA-1 of the bytes that the plan is about; "" for whatever they are. */
  std::string Sum;
  std::vector<PlannedValue> Values;
  /** Why it is left out; "" if it is not. */
  std::string WhyNot;
  /** False if the user leaves it out. */
  bool IsWanted = true;

  /** True if it would be written. */
  bool Changes() const;
};

struct EditPlan {
  EditOrder Order;
  std::vector<PlannedMission> Missions;
  /** How many values or flights each entry of the order names in all missions. */
  std::vector<std::size_t> Named;
  bool IsCancelled = false;
};

/** What who runs an edit is asked and told; any may be missing. */
struct EditHooks {
  /** Before each mission, with how many are done, and once behind the last. False cancels. */
  TellWork Going;
  /** Why a mission is to be left out; "" if it is not. */
  std::function<std::string(const std::string& path)> Refuses;
  /** Before a mission is written over `old`; a fault leaves it out. */
  std::function<void(const std::string& path, const std::string& old)> Before;
  /** Behind each call of `Before`: whether the mission's file holds the new text. */
  std::function<void(const std::string& path, const std::string& text, bool isWritten)> After;
};

/** Works out what the order changes in each mission, and touches nothing. Cancelled, the plan is of
    those missions that were looked at. */
EditPlan PlanEdits(const EditContext& context, EditOrder order,
                   const std::vector<std::string>& paths, const EditHooks& hooks);

/** A plan for whatever the missions hold when it is applied. */
EditPlan UnseenPlan(EditOrder order, const std::vector<std::string>& paths);

struct LeftOut {
  std::string Path, Reason;
};

struct EditReport {
  std::vector<std::string> Done;
  std::vector<LeftOut> Left;
  /** Wanted missions that nobody has touched: behind the one at which the user cancelled, or whose
      old text could not be put back. */
  std::vector<std::string> NotTried;
  /** Why the run was ended; "" for a cancel too. */
  std::string Stopped;
  /** What the user should know. */
  std::vector<LeftOut> Warnings;
  std::vector<std::size_t> Named;
};

/** How edited missions are written. */
struct EditWriting {
  /** With the folder for backups and copies. */
  const rws::Services& Services;
  bool Backup = true;
  /** "" for "RWS Backup". */
  std::string BackupFolder = {};
  /** How many dated backups of a mission stay there; 0 is all. */
  int BackupsKept = 0;
};

/** Writes the missions of a plan that are wanted, one after the other: each is read again, and left
    out where it has changed since, is read-only or would not be what was planned. At every moment
    each file is whole, the old one or the new one. */
EditReport ApplyEdits(const EditContext& context, const EditPlan& plan, const EditWriting& writing,
                      const EditHooks& hooks);

/** A fault for a mission that may not be replaced. */
void RequireReplaceable(const Services& services, const std::string& path);

/** "17 done, 2 left out". */
std::string EndText(const EditReport& report);
/** The same, and behind it a line for each mission with the reason. */
std::string ReportText(const CodePage& page, const EditReport& report);

}  // namespace rws
