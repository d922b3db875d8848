#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "tests/robot/stage.h"

namespace rws::robot {

/** What a user does; the numbers choose among what is there when it is played. */
struct Action {
  std::size_t What;
  std::array<std::uint32_t, 4> N;
};
/** Closes what is open. */
constexpr std::size_t kClose = 8;

/** The same for the same seed on every system; `Stage` takes what `SetupOf` gives. */
std::uint32_t SetupOf(std::uint32_t seed);
Action ActionOf(std::uint32_t seed, std::uint32_t number);

/** Does what the action tells in the window that takes the user's events now. Returns when all that
    it has opened is closed. */
void Perform(Stage& stage, const Action& action);

/** Kind of the action and what it was done to last. */
const std::string& LastDeed();

}  // namespace rws::robot
