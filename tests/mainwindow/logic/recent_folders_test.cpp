#include "mainwindow/logic/recent_folders.h"

#include <gtest/gtest.h>

#include "services/setting_values.h"
#include "tests/support/doubles.h"

namespace rws::test {
namespace {

TEST(RecentFolders, KeepTheLastTenNewestFirst) {
  World world;
  const Services& services = world.Services;
  const auto all = [&] { return Joined(RecentFolders(services)); };
  EXPECT_EQ(all(), "");
  for (const char* folder : {"/a", "/b, \"c\"; %1|", "/a/", "", "/x\n/y", "/x\r"})
    AddRecentFolder(services, folder);
  EXPECT_EQ(all(), "/a|/b, \"c\"; %1|");
  for (int i = 0; i < 12; ++i) AddRecentFolder(services, "/f" + std::to_string(i));
  AddRecentFolder(services, "/f5");
  EXPECT_EQ(all(), "/f5|/f11|/f10|/f9|/f8|/f7|/f6|/f4|/f3|/f2");
  AddRecentFolder(services, "/F5");
  EXPECT_EQ(RecentFolders(services)[1] == "/f5", FileSystem::MindsCase());
  WriteSetting(services.Settings, setting::RecentFolders, "\n\n/z\n");
  EXPECT_EQ(all(), "/z");
  AddRecentFolder(services, "C:\\");
  EXPECT_EQ(RecentFolders(services)[0], "C:\\");
  ClearRecentFolders(services);
  EXPECT_EQ(all(), "");
}

}  // namespace
}  // namespace rws::test
