#pragma once

#include <memory>

#include "services/shell.h"

namespace rws {

/** The running desktop. Sound that the toolkit cannot play is opened with the desktop's player. */
Shell MakeQtShell();

}  // namespace rws
