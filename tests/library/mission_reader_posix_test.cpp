#include <gtest/gtest.h>
#include <sys/stat.h>

#include "library/mission_reader.h"
#include "tests/support/sandbox.h"

namespace rws {
namespace {

// Who opened it would wait for a writer.
TEST(ReadingMissionsPosix, WaitsForNoPipe) {
  const test::Sandbox box;
  const std::string pipe = box.Path("pipe.mis");
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  MissionReader reader{FileSystem(), CodePage()};
  reader.Add({{box.Path()}});
  EXPECT_TRUE(reader.Wait().empty());
  reader.Add({{}, {pipe}});
  const auto facts = reader.Wait();
  ASSERT_EQ(facts.size(), 1U);
  EXPECT_EQ(facts[0].Fault, MissionFault::Unreadable);
  box.Write("a.mis", "[MAIN]\r\n");
  ASSERT_EQ(::mkfifo(box.Path("a.properties").c_str(), 0600), 0);
  reader.Add({{}, {box.Path("a.mis")}});
  EXPECT_EQ(reader.Wait().size(), 1U);
}

}  // namespace
}  // namespace rws
