#include "tests/kill/killed_child.h"

#include <signal.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdint>

namespace rws::test {

namespace {

constexpr int kRefused = 77, kCallStop = SIGTRAP | 0x80;

[[noreturn]] void Child(const std::function<void()>& operation) {
  if (::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) ::_exit(kRefused);
  ::raise(SIGSTOP);
  operation();
  ::_exit(0);
}

ChildEnd EndOf(int status) {
  if (!WIFEXITED(status)) return ChildEnd::Crashed;
  if (WEXITSTATUS(status) == kRefused) return ChildEnd::Refused;
  return WEXITSTATUS(status) == 0 ? ChildEnd::Finished : ChildEnd::Crashed;
}

}  // namespace

ChildEnd RunAndKill(const std::function<void()>& operation, int call) {
  const pid_t child = ::fork();
  if (child < 0) return ChildEnd::Refused;
  if (child == 0) Child(operation);
  int status = 0;
  ::waitpid(child, &status, 0);
  if (!WIFSTOPPED(status)) return EndOf(status);
  ::ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
  // A call stops the child twice, before it and behind it.
  for (std::int64_t stops = 0;;) {
    const bool stopped = ::ptrace(PTRACE_SYSCALL, child, nullptr, nullptr) == 0;
    ::waitpid(child, &status, 0);
    if (!stopped || !WIFSTOPPED(status)) return EndOf(status);
    if (WSTOPSIG(status) != kCallStop || stops++ != std::int64_t{2} * call) continue;
    ::kill(child, SIGKILL);
    ::waitpid(child, &status, 0);
    return ChildEnd::Killed;
  }
}

}  // namespace rws::test
