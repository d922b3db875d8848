#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace rws::robot {

/** What a user may do. The numbers of an action choose among what is there when it is played. */
enum class Kind {
  Click,
  Row,
  Drag,
  Wheel,
  Key,
  Type,
  Shortcut,
  Menu,
  Close,
  Resize,
  Outside,
  Timers,
  Count
};

struct Action {
  Kind What = Kind::Click;
  std::array<std::uint32_t, 4> N{};
};

/** One run of the program from its start on. The bits of `Setup` choose its settings. */
struct Episode {
  std::uint32_t Setup = 0;
  std::vector<Action> Actions;
};

/** The same actions for the same seed on every system. */
Episode MakeEpisode(std::uint32_t seed, std::size_t actions);

/** A line for the setup and one for each action. */
std::string ToText(const Episode& episode);
/** What `ToText` made; without actions if it is no such text. */
Episode FromText(const std::string& text);

}  // namespace rws::robot
