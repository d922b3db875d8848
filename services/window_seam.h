#pragma once

#include <functional>

#include "services/work.h"

namespace rws {

/** What the rules ask of the main window. As it stands it answers for a program without one. */
struct WindowSeam {
  std::function<void(bool busy)> ShowBusy = [](bool) {};
  /** Requests the end of the program; procedures on the way up return at once. */
  std::function<void()> Close = [] {};
  /** True while the window is up and not being built. */
  std::function<bool()> IsUp = [] { return false; };
  /** Enables the Update button, pale green, or disables it in the system's colour. */
  std::function<void(bool lit)> LightUpdate = [](bool) {};
  /** Shows how far a work has come that is done on the way to something else, until the step that
      is its last. */
  TellWork Progress = [](const WorkStep&) { return true; };
};

}  // namespace rws
