#include <gtest/gtest.h>

#include "services/faults.h"
#include "services/setting_values.h"
#include "tests/support/doubles.h"

namespace rws {
namespace {

constexpr auto kUser = SettingsRoot::CurrentUser;

TEST(Settings, KeywordStandsForTheBaseKey) {
  std::map<std::string, std::string> values;
  Settings settings{"", test::MemorySettings(values)};
  SetRegValue(settings, kUser, "set path", "GamePath", std::string("/il2"));
  DeleteRegKey(settings, kUser, "set path");
  EXPECT_TRUE(values.empty());
  EXPECT_EQ(GetRegValue(settings, kUser, "set path", "GamePath", "none"), "none");

  settings.BaseKey = kSettingsBaseKey;
  SetRegValue(settings, kUser, "Set Path", "GamePath", std::string("/il2"));
  EXPECT_EQ(GetRegValue(settings, kUser, "set path", "GAMEPATH", "none"), "/il2");
  EXPECT_EQ(GetRegValue(settings, kUser, "Software\\Hollowbyte\\RWS Edit", "GamePath", ""), "/il2");
  EXPECT_EQ(GetRegValue(settings, SettingsRoot::ClassesRoot, "set path", "GamePath", "none"),
            "none");
}

TEST(Settings, EmptyTextAndFailuresGiveTheDefault) {
  std::map<std::string, std::string> values;
  Settings settings{"key", test::MemorySettings(values)};
  SetRegValue(settings, kUser, "set path", "Text", std::string());
  SetRegValue(settings, kUser, "set path", "Number", std::int32_t{-7});
  EXPECT_EQ(GetRegValue(settings, kUser, "set path", "Text", "default"), "default");
  EXPECT_EQ(GetRegValue(settings, kUser, "set path", "Number", "default"), "-7");
  settings.Backend.Read = [](auto...) -> std::optional<SettingData> { throw OverflowFault(); };
  EXPECT_EQ(GetRegValue(settings, kUser, "set path", "Number", "default"), "default");
}

TEST(Settings, KeysAreDeletedWithAllBelow) {
  const test::World world;
  const auto& settings = world.Services.Settings;
  WriteSetting(settings, setting::LockWT, "true");
  SetRegValue(settings, kUser, kSetPath, "BackUp", std::string("FALSE"));
  SetRegValue(settings, kUser, std::string(kSettingsBaseKey) + "\\sub", "v", std::string("1"));
  SetRegValue(settings, kUser, "other", "v", std::string("1"));
  EXPECT_TRUE(ReadFlag(settings, setting::LockWT));
  EXPECT_FALSE(ReadFlag(settings, setting::Backup));
  DeleteRegKey(settings, kUser, kSetPath);
  DeleteRegKey(settings, kUser, "never there");
  EXPECT_FALSE(ReadFlag(settings, setting::LockWT));
  EXPECT_TRUE(ReadFlag(settings, setting::Backup));
  EXPECT_EQ(world.SettingTexts.size(), 1u);
}

}  // namespace
}  // namespace rws
