#pragma once

#include <functional>
#include <string>

namespace rws::test {

enum class ChildEnd {
  /** Killed as it was about to make the system call. */
  Killed,
  /** Came to its end with fewer calls than that. */
  Finished,
  /** This system lets no process watch another. */
  Refused,
  /** Ended in a way of its own: a fault that nothing caught, a signal. */
  Crashed
};

/** Number of a call that no child comes to: it runs to its own end. */
inline constexpr int kNoCall = 1 << 30;

/** Runs `operation` in a child of this process and kills it there, before its system call of this
    number, counted from 0, is made. What the operation does to memory is not seen here. */
ChildEnd RunAndKill(const std::function<void()>& operation, int call);

}  // namespace rws::test
