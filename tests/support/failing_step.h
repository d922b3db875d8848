#pragma once

#include <functional>
#include <string>

#include "services/file_system.h"

namespace rws::test {

/** Lets one step of an operation on the disk fail. */
class FailingStep {
 public:
  explicit FailingStep(int number) : number_(number) {}

  /** Runs the operation; its step of this number, counted from 1, ends in a fault with `reason`. */
  void During(FileSystem& files, const std::function<void()>& operation,
              const std::string& reason = "disk full");

  /** False when the operation came to its end before that step. */
  bool Failed() const { return !action_.empty(); }
  /** Of the step that failed; "" if none did. */
  const std::string& Action() const { return action_; }
  const std::string& Path() const { return path_; }

 private:
  int number_;
  std::string action_, path_;
};

/** From now on each step of this action ends in a fault with `reason`; "" stands for every action.
    With an `ending` only those whose path ends so. */
void FailSteps(FileSystem& files, const std::string& action, const std::string& ending = "",
               const std::string& reason = "disk full");

/** Calls `round` again and again, in which the first, then the second step fails and so on, until
    a round meets no failure or a test has failed. A round begins afresh, runs the operation and
    looks at what is left. Gives the number of rounds in which a step failed. */
int ForEachFailingStep(const std::function<void(FailingStep&)>& round);

}  // namespace rws::test
