#include "mission/line_ends.h"

#include <gtest/gtest.h>

#include "services/faults.h"
#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"

namespace rws {
namespace {

TEST(LineEnds, RepairsOnlyAFileOfOneLineWithTwoLineFeeds) {
  for (const char* bytes : {"", "a", "a\nb", "a\nb\r\n", "a\rb\rc", "a\r\nb\nc\nd"})
    EXPECT_FALSE(RepairedLineEnds(bytes)) << testing::PrintToString(bytes);
  const std::pair<const char*, const char*> rows[] = {
      {"a\nb\nc", "a\r\nb\r\nc\r\n"},
      {"a\nb\n", "a\r\nb\r\n"},
      {"a\nb\nc\r\n", "a\r\nb\r\nc\r\n"},
      {"[MAIN]\n\n  MAP x \n   \n\xFF\n", "[MAIN]\r\n  MAP x \r\n\xFF\r\n"}};
  for (const auto& [bytes, repaired] : rows) EXPECT_EQ(RepairedLineEnds(bytes), repaired);
}

TEST(LineEnds, AFailedRepairLeavesTheOldBytes) {
  std::string old, repaired;
  for (int i = 0; i < 12'000; ++i) old += "  line\n", repaired += "  line\r\n";
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
    EXPECT_TRUE(failed || n >= 6) << "too few steps seen";
  }
}

}  // namespace
}  // namespace rws
