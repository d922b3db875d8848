#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "session/frozen.h"
#include "session/session.h"

/** Unsaved edits on disk, in "Recovery" beside the log: they outlive the end of the program. */
namespace rws {

/** Unsaved edits that an earlier run has left. */
struct Recovered {
  std::string File;
  /** Full path of the mission. */
  std::string Path;
  /** When they were kept: "2026-11-20 18:03". */
  std::string Time;
  rws::Mission Mission;
  /** Why they cannot be read; "" for those that can. */
  std::string Fault;
  /** The mission has got another name, which `File` does not tell yet. */
  bool Renamed = false;
};

/** What of edits lies on disk. */
struct RecoveryState {
  struct Kept {
    FrozenMission Own;
    std::string File;
    /** Files of earlier edits of the mission, which go with it. */
    std::vector<std::string> Earlier;
  };
  /** This run's, by the mission's path. */
  std::map<std::string, Kept> Written;
  /** What earlier runs have left, until the user restores or discards it. */
  std::vector<Recovered> Offered;
  /** The last failure has been told. */
  bool Told = false;
};

/** Brings the files of "Recovery" to what is unsaved now: writes those that have changed, each
    whole or not at all, and deletes those of missions that no longer differ. Edits follow a rename
    of their mission, also those that are only offered. Gives the reason of a failure, "" for none;
    what was on disk before is still there then. */
std::string KeepUnsaved(Session& session, RecoveryState& state);

/** Keeps what earlier runs have left for this one, until `held` is dropped. False while another run
    that keeps its edits in the same folder is under way: some of them are its own. */
bool HoldRecovered(const Services& services, std::shared_ptr<void>& held);

/** What earlier runs have left, sorted by path and time. A mission that has been renamed since is
    known by what its file holds. Edits that the mission's file holds, which were saved just before
    the end, are forgotten. */
std::vector<Recovered> FindRecovered(const Services& services);

/** The mission file that saving the edits would make. */
std::string TextOf(const Services& services, const Recovered& recovered);

/** Brings edits back as unsaved ones, in one step of the history: those of missions of the folder
    that is open, also where the file has gone. Of several for one mission each has a step of its
    own, the latest comes last. Their files stay until the edits are saved. Gives the paths of the
    missions. */
std::vector<std::string> RestoreRecovered(Session& session, RecoveryState& state,
                                          const std::vector<Recovered>& recovered);

/** True if the mission's file is no longer the one that the edits were made on. */
bool HasChangedSince(const Services& services, const Recovered& recovered);

/** The edits are no longer needed. */
void DiscardRecovered(const Services& services, const Recovered& recovered);

}  // namespace rws
