#include <gtest/gtest.h>

#include "services/error_log.h"
#include "tests/support/sandbox.h"

namespace rws {
namespace {

TEST(ErrorLog, OneLineAnEntryAndNeverAFailure) {
  const test::Sandbox box;
  Services services;
  services.AppPath = box.Path();
  LogError(services, "Disk full.", "LoadMission");
  EXPECT_FALSE(LogAndLeave(services, "CInt", [] { throw OverflowFault(); }));
  EXPECT_TRUE(LogAndLeave(services, "Fine", [] {}));
  const std::string log = "Disk full.LoadMission\r\nOverflowCInt\r\n";
  EXPECT_EQ(box.Read("Error.txt"), log);
  for (const char* unwritable : {"gone", "Error.txt"}) {
    services.AppPath = box.Path(unwritable);
    EXPECT_NO_THROW(LogError(services, "text", "name")) << unwritable;
  }
  EXPECT_EQ(box.Names() + box.Read("Error.txt"), "Error.txt" + log);
}

}  // namespace
}  // namespace rws
