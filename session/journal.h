#pragma once

#include <string>
#include <utility>

#include "session/session.h"

namespace rws {

/** While it lives, what the program does to files of the user's is noted in the history's journal,
    and what is about to be deleted or replaced is copied into the store before. A file that cannot
    be kept is deleted all the same, as the user wants it, and a notice tells that this cannot be
    undone. */
class Journaling {
 public:
  explicit Journaling(Session& session);
  ~Journaling();
  Journaling(const Journaling&) = delete;
  Journaling& operator=(const Journaling&) = delete;

 private:
  Session& session_;
};

/** While it lives, what is done to files is not noted. */
class PausedJournal {
 public:
  explicit PausedJournal(Session& session)
      : journal_(session.History.Journal), before_(std::exchange(journal_.Paused, true)) {}
  ~PausedJournal() { journal_.Paused = before_; }
  PausedJournal(const PausedJournal&) = delete;
  PausedJournal& operator=(const PausedJournal&) = delete;

 private:
  FileJournal& journal_;
  bool before_;
};

/** Makes a step of what has been noted; nothing when that is nothing. Missions that were renamed
    are known by their new names. Edits
    of missions whose files were taken away belong to it. Files that are `apart` have nothing to do
    with each other when the step is undone. */
void AddFileStep(Session& session, const std::string& title, bool apart = false);

/** Runs a command that works on files, as one step. */
template <class Command>
void RecordFiles(Session& session, const std::string& title, Command&& command) {
  // Also when a fault ends it: what was done until then can be undone.
  struct Recorded {
    ~Recorded() { AddFileStep(To, Title); }
    Session& To;
    const std::string& Title;
  } recorded{session, title};
  const Journaling journaling(session);
  command();
}

}  // namespace rws
