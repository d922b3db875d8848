#include "services/work.h"

#include <cstdint>

namespace rws {

namespace {

/** Whole seconds would jump about; nobody needs them beyond a minute. */
std::string TimeLeft(std::chrono::milliseconds left) {
  const auto seconds = (left.count() + 999) / 1000;
  if (seconds > 90) return "about " + std::to_string((seconds + 30) / 60) + " minutes left";
  if (seconds > 10) return "about " + std::to_string((seconds + 4) / 5 * 5) + " seconds left";
  return "a few seconds left";
}

}  // namespace

std::string WorkText(const WorkStep& step, std::chrono::milliseconds elapsed) {
  // The first files tell little: tables are read then, and disks wake up.
  constexpr std::chrono::milliseconds kEnough{1000};
  std::string text =
      std::string(step.Unit) + " " + std::to_string(step.Done) + " of " + std::to_string(step.Of);
  if (elapsed < kEnough || step.Done == 0 || step.Done >= step.Of) return text;
  const double share = static_cast<double>(step.Of - step.Done) / static_cast<double>(step.Done);
  const auto left = static_cast<std::int64_t>(static_cast<double>(elapsed.count()) * share);
  return text + ", " + TimeLeft(std::chrono::milliseconds(left));
}

std::string WorkEndText(std::size_t done, std::size_t leftOut) {
  std::string text = std::to_string(done) + " done";
  if (leftOut > 0) text += ", " + std::to_string(leftOut) + " left out";
  return text;
}

}  // namespace rws
