#include "mission/line_ends.h"

#include <gtest/gtest.h>

#include "tests/support/doubles.h"
#include "tests/support/failing_step.h"
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
  const int steps = test::ForEachFailingStep([&](test::FailingStep& step) {
    test::Sandbox box;
    test::World world;
    const std::string path = box.Write("m.mis", old);
    step.During(world.Services.Files, [&] { NormaliseLineEnds(world.Services, path); });
    SCOPED_TRACE(step.Action());
    const bool hasName = !step.Failed() || step.Action() == "sync folder";
    EXPECT_TRUE(box.Read("m.mis") == (hasName ? repaired : old));
    EXPECT_EQ(box.Names(), "m.mis");
    EXPECT_TRUE(world.Log.empty());
  });
  EXPECT_GE(steps, 6);
}

}  // namespace
}  // namespace rws
