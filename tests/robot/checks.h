#pragma once

#include <set>
#include <string>
#include <utility>

#include "tests/robot/stage.h"

namespace rws::robot {

/** What is wrong with the window and the session behind it, now that nothing is under way: its
    kind, ":" and the particulars. "" if nothing is. */
class Checks {
 public:
  explicit Checks(Stage& stage) : stage_(stage) {}

  std::string Look();
  /** Takes back and saves all; looks at memory and disk before and behind it. */
  std::string LookAtTheEnd();

 private:
  void Find(const std::string& fault);
  void Same(const char* what, const std::string& shown, const std::string& held);
  void Same(const char* what, double shown, double held);
  void Log();
  void Lit();
  void Commands();
  void Mission();
  void Flight();
  void Plane(std::size_t plane);
  void Light();
  void Memory(std::size_t mission);
  void Memory();
  void BackToStart();
  void File(const std::string& path, const std::string& bytes);

  Stage& stage_;
  /** The first fault. */
  std::string found_;
  /** The question about edits kept a mission on show that is not the one lit. */
  bool cancelled_ = false;
  /** Missions for which Update is not what the comparison tells, as it may be. */
  std::set<std::string> unlit_;
  std::pair<std::size_t, std::size_t> steps_;
};

}  // namespace rws::robot
