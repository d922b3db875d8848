#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "mission/interrupted.h"
#include "session/half_renamed.h"
#include "tests/support/session_desk.h"

namespace rws::test {

struct Operation;

/** A session in which an operation is about to be run, with a user who agrees to everything. */
struct OperationDesk : SessionDesk {
  OperationDesk(const Operation& operation, bool backups);

  /** What dialogs give, one after another; paths are those of the sandbox. */
  std::deque<std::string> Answers;
  /** All that the user was told, and what the operation gave as its reason. */
  std::string Told;
  /** The window reads the folder anew when the operation is over. */
  bool Rereads = false;
  /** What the program has found at its start. */
  std::vector<Interrupted> Copies;
  std::vector<HalfRenamed> Renames;
};

/** Something that the program does to files of the user's. */
struct Operation {
  const char* Name;
  /** Of "in", joined by ","; a "+" for a briefing. */
  const char* Missions;
  /** "folder/name=content", joined by "|". */
  std::string Others;
  std::function<void(OperationDesk&)> Prepare, Run;
  /** Why a file may stand in the backups alone, where its name was; "" if it may not. */
  const char* MayBeBackupAlone = "";
  /** Why the log alone may tell of a failure; "" if the user is told. */
  const char* OnlyLogged = "";
};

const std::vector<Operation>& Operations();

}  // namespace rws::test
