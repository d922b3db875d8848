#pragma once

#include <array>
#include <cstdint>
#include <string_view>

/** What the values of a home base may be. */
namespace rws {

struct HomeBaseColor {
  std::string_view Name;
  std::uint8_t Red, Green, Blue;
};
/** In the order of `BornPlace.Army`. "None" stands for the system's own button colour. */
inline constexpr std::array<HomeBaseColor, 17> kHomeBaseColors{{{"None", 0, 0, 0},
                                                                {"Red", 192, 0, 0},
                                                                {"Blue", 0, 0, 192},
                                                                {"Green", 0, 162, 0},
                                                                {"Gold", 192, 192, 0},
                                                                {"Purple", 192, 0, 192},
                                                                {"Aqua", 0, 192, 192},
                                                                {"Maroon", 128, 0, 0},
                                                                {"Navy", 0, 0, 128},
                                                                {"Emerald", 0, 64, 0},
                                                                {"Olive", 89, 128, 12},
                                                                {"Magenta", 128, 0, 128},
                                                                {"Teal", 0, 128, 128},
                                                                {"Orange", 231, 101, 26},
                                                                {"Turquoise", 0, 163, 157},
                                                                {"Brown", 140, 102, 54},
                                                                {"Salad", 64, 128, 64}}};

/** The sizes that the slider can show, in meters. */
inline constexpr int kLeastRadius = 500, kLargestRadius = 9950;

}  // namespace rws
