#include "mission/line_ends.h"

#include <gtest/gtest.h>

#include "services/faults.h"
#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"

namespace rws {
namespace {

TEST(LineEnds, RepairsOnlyAFileOfOneLineWithTwoLineFeeds) {
  struct Row {
    const char* Bytes;
    std::optional<std::string> Repaired;
  };
  const Row rows[] = {
      {"", {}},
      {"a", {}},
      {"a\nb", {}},
      {"a\nb\r\n", {}},
      {"a\rb\rc", {}},
      {"a\r\nb\nc\nd", {}},
      {"a\nb\nc", "a\r\nb\r\nc\r\n"},
      {"a\nb\n", "a\r\nb\r\n"},
      {"a\nb\nc\r\n", "a\r\nb\r\nc\r\n"},
      {"[MAIN]\n\n  MAP x \n   \n\xFF\n", "[MAIN]\r\n  MAP x \r\n\xFF\r\n"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.Bytes));
    EXPECT_EQ(RepairedLineEnds(row.Bytes), row.Repaired);
  }
}

TEST(LineEnds, AFailedRepairLeavesTheOldBytes) {
  std::string old;
  for (int i = 0; i < 12'000; ++i) old += "  line\n";
  const std::string repaired = *RepairedLineEnds(old);
  bool failed = true;
  for (int n = 0; failed; ++n) {
    test::Sandbox box;
    test::World world;
    const std::string path = box.Write("m.mis", old);
    failed = false;
    std::string action;
    world.Services.Files.BeforeStep = [&, left = n](const FileStep& step) mutable {
      if (left-- != 0) return;
      failed = true;
      action = step.Action;
      throw FileFault(fault::FileIo, step.Action, step.Path, "no space left");
    };
    NormaliseLineEnds(world.Services, path);
    SCOPED_TRACE(std::to_string(n) + " " + action);
    const bool hasName = !failed || action == "sync folder";
    EXPECT_TRUE(box.Read("m.mis") == (hasName ? repaired : old));
    EXPECT_EQ(box.Names(), "m.mis");
    EXPECT_TRUE(world.Log.empty());
    if (!failed) {
      EXPECT_GE(n, 6);
    }
  }
}

}  // namespace
}  // namespace rws
