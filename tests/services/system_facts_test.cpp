#include "services/system_facts.h"

#include <gtest/gtest.h>

#include "services/error_log.h"
#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"

namespace rws {
namespace {

TEST(SystemFacts, OsNames) {
  EXPECT_EQ(GetOSName({2, 5, 0, ""}), "Windows 2000");
  EXPECT_EQ(GetOSName({1, 4, 5, ""}), "");
  EXPECT_EQ(GetOSName({3, 5, 0, ""}), "Failed");
  Services services;
  OsVersion version{2, 5, 1, "own name"};
  services.System.Version = [&] { return version; };
  EXPECT_EQ(SystemVersionText(services), "Windows XP");
  for (const int platform : {0, 1}) {
    version.Platform = platform;
    EXPECT_EQ(SystemVersionText(services), "own name") << platform;
  }
}

TEST(SystemFacts, OpenFileTellsCodesUpTo32) {
  test::World world;
  for (const int code : {0, 32, 33}) {
    world.Services.System.Execute = [&](const std::string& verb, const std::string& path) {
      EXPECT_EQ(verb + " " + path, "open /a.txt");
      return code;
    };
    if (code < 33) world.Script.Expect("No program assocationed in Windows!");
    OpenFile(world.Services, "/a.txt");
  }
}

TEST(ErrorLog, OneLineAnEntryAndNeverAFailure) {
  const test::Sandbox box;
  Services services;
  services.AppPath = box.Path();
  LogError(services, "Disk full.", "LoadMission");
  EXPECT_FALSE(LogAndLeave(services, "CInt", [] { throw OverflowFault(); }));
  EXPECT_TRUE(LogAndLeave(services, "Fine", [] {}));
  services.AppPath = box.Path("gone");
  EXPECT_NO_THROW(LogError(services, "text", "name"));
  EXPECT_EQ(box.Names() + box.Read("Error.txt"),
            "Error.txtDisk full.LoadMission\r\nOverflowCInt\r\n");
}

}  // namespace
}  // namespace rws
