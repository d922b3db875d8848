#pragma once

#include <string>

#include "tests/robot/action.h"
#include "tests/robot/stage.h"

namespace rws::robot {

/** Does what the action tells in the window that takes the user's events now. Returns when all that
    it has opened is closed. */
void Perform(Stage& stage, const Action& action);

/** Closes the dialog or menu that is open, in one of the ways. */
void CloseOne(Stage& stage);

/** Kind of the action and what it was done to last. */
std::string LastDeed();

}  // namespace rws::robot
