#include "tests/support/failing_step.h"

#include <gtest/gtest.h>

#include "services/faults.h"

namespace rws::test {

void FailingStep::During(FileSystem& files, const std::function<void()>& operation,
                         const std::string& reason) {
  files.BeforeStep = [this, reason, left = number_](const FileStep& step) mutable {
    if (--left != 0) return;
    action_ = step.Action;
    path_ = step.Path;
    throw FileFault(fault::FileIo, step.Action, step.Path, reason);
  };
  operation();
  files.BeforeStep = nullptr;
}

void FailSteps(FileSystem& files, const std::string& action, const std::string& ending,
               const std::string& reason) {
  files.BeforeStep = [=](const FileStep& step) {
    if ((action.empty() || step.Action == action) && step.Path.ends_with(ending))
      throw FileFault(fault::FileIo, step.Action, step.Path, reason);
  };
}

int ForEachFailingStep(const std::function<void(FailingStep&)>& round) {
  int failures = 0;
  while (!testing::Test::HasFailure()) {
    FailingStep step(failures + 1);
    SCOPED_TRACE("step " + std::to_string(failures + 1) + " fails");
    round(step);
    if (!step.Failed()) break;
    ++failures;
  }
  return failures;
}

}  // namespace rws::test
