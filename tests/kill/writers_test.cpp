// Two programs write one mission again and again, and a reader beside them looks at it.

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <set>

#include "mission/mission_file.h"
#include "services/text.h"
#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"

namespace rws::test {
namespace {

/** More than is written, or read, in one piece. */
constexpr int kLines = 400;

/** A mission in which every line tells who wrote it, and when. */
std::string TextOf(char writer, int round) {
  const std::string line =
      "  " + std::string(1, writer) + std::to_string(round) + std::string(200, 'x') + "\r\n";
  std::string text;
  for (int i = 0; i < kLines; ++i) text += line;
  return text;
}

/** Who wrote it; 0 for a text that is not whole. */
char WriterOf(const std::string& text) {
  const std::string line = text.substr(0, text.find('\n') + 1);
  if (line.empty() || text.size() != line.size() * kLines) return 0;
  for (std::size_t at = 0; at < text.size(); at += line.size())
    if (text.compare(at, line.size(), line) != 0) return 0;
  return line[2];
}

/** Ends the process: 0 if each write was done. */
[[noreturn]] void Write(const Services& services, const Mission& mission, char writer, int rounds) {
  for (int round = 1; round <= rounds; ++round) {
    std::string reason;
    const LineArray lines = LineArray::FromFile(TextOf(writer, round));
    if (WriteMissionFile(services, mission, lines, false, &reason)) continue;
    std::cerr << writer << round << ": " << reason << std::endl;
    ::_exit(1);
  }
  ::_exit(0);
}

/** True as long as the process runs; else its exit code is in `code`. */
bool Runs(pid_t process, int& code) {
  int status = 0;
  if (code >= 0 || ::waitpid(process, &status, WNOHANG) == 0) return code < 0;
  code = WIFEXITED(status) ? WEXITSTATUS(status) : 99;
  return false;
}

TEST(TwoWriters, NeverMixTheirTexts) {
  UseQuickFolder();
  const char* wanted = std::getenv("RWS_WRITES");
  const int rounds = (wanted ? std::atoi(wanted) : 300) / 2;
  Sandbox box;
  World world(box.Path("app"));
  box.MakeFolder("app");
  const std::string path = box.Write("m/a.mis", TextOf('a', 0));
  Mission mission;
  mission.FileName = "a.mis";
  mission.DirPath = box.Path("m/");
  pid_t writers[2];
  int codes[2] = {-1, -1};
  for (int i = 0; i < 2; ++i) {
    writers[i] = ::fork();
    ASSERT_GE(writers[i], 0);
    if (writers[i] == 0) Write(world.Services, mission, i == 0 ? 'a' : 'b', rounds);
  }
  int reads = 0, mixed = 0, missing = 0;
  std::set<char> seen;
  for (bool one = true, other = true; one || other; ++reads) {
    one = Runs(writers[0], codes[0]);
    other = Runs(writers[1], codes[1]);
    const std::string text = box.Read("m/a.mis");
    missing += text == "<none>";
    const char writer = WriterOf(text);
    mixed += writer == 0;
    seen.insert(writer);
  }
  EXPECT_EQ(codes[0] + codes[1], 0);
  EXPECT_EQ(mixed, 0);
  EXPECT_EQ(missing, 0);
  EXPECT_EQ(seen.size(), 2U) << "the reader must have met both";
  EXPECT_EQ(box.Names("m") + "|" + box.Names("app"), "a.mis|") << "nothing is left beside it";
  std::cout << 2 * rounds << " writes, " << reads << " reads, " << mixed << " mixed\n";
}

}  // namespace
}  // namespace rws::test
