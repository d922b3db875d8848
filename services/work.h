#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

/** Work that may last, told in the same words wherever it is done. */
namespace rws {

/** How far a work has come. */
struct WorkStep {
  std::size_t Done = 0, Of = 0;
  std::string_view Name = {};  // what is in hand, in the system's spelling; "" for nothing
  std::string_view Unit = "File";
};

/** Is told every step; false once the user gives up. */
using TellWork = std::function<bool(const WorkStep& step)>;

/** "File 3 of 17, about 12 seconds left"; without the time while it is too early to tell. */
std::string WorkText(const WorkStep& step, std::chrono::milliseconds elapsed);

/** How a work ended: "17 done", "17 done, 2 left out". */
std::string WorkEndText(std::size_t done, std::size_t leftOut);

}  // namespace rws
