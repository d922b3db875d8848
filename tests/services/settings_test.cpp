#include <gtest/gtest.h>

#include <array>

#include "services/faults.h"
#include "services/ini_file.h"
#include "services/ini_settings.h"
#include "services/setting_values.h"
#include "services/text.h"
#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"

namespace rws {
namespace {

constexpr auto kUser = SettingsRoot::CurrentUser;

TEST(Settings, KeywordDefaultsAndDeletedKeys) {
  std::map<std::string, std::string> values;
  Settings settings{"", test::MemorySettings(values)};
  WriteSetting(settings, setting::GamePath, "/il2");
  DeleteRegKey(settings, kUser, "set path");
  EXPECT_TRUE(values.empty()) << "without a base key the keyword stands for nothing";

  settings.BaseKey = kSettingsBaseKey;
  SetRegValue(settings, kUser, "Set Path", "GamePath", std::string("/il2"));
  SetRegValue(settings, kUser, "set path", "RWSLockWT", std::string("true"));
  SetRegValue(settings, kUser, "set path", "Backup", std::string());
  SetRegValue(settings, kUser, settings.BaseKey + "\\sub", "v", std::int32_t{-7});
  SetRegValue(settings, kUser, "other", "v", std::string("1"));
  const auto read = [&](const char* key, const char* name) {
    return GetRegValue(settings, kUser, key, name, "none");
  };
  EXPECT_EQ(read("set path", "GAMEPATH"), "/il2");
  EXPECT_EQ(read("Software\\Hollowbyte\\RWS Edit", "GamePath"), "/il2");
  EXPECT_EQ(read("set path", "Backup"), "none") << "an empty text reads as the default";
  EXPECT_EQ(read("Software\\Hollowbyte\\RWS Edit\\sub", "v"), "-7");
  EXPECT_TRUE(ReadFlag(settings, setting::LockWT) && ReadFlag(settings, setting::Backup));
  settings.Backend.Read = [](auto...) -> std::optional<SettingData> { throw OverflowFault(); };
  EXPECT_EQ(read("set path", "GamePath"), "none");
  DeleteRegKey(settings, kUser, kSetPath);
  EXPECT_EQ(values.size(), 1u);
}

TEST(IniSettings, ChangeTheirOwnLineAlone) {
  const test::Sandbox box;
  const auto open = [&](const char* name) {
    return Settings{std::string(kSettingsBaseKey), IniSettings(FileSystem(), box.Path(name))};
  };
  const Settings settings = open("of/mine/a.ini");
  WriteSetting(settings, setting::GamePath, "/il2");
  SetRegValue(settings, kUser, kSetPath, "Number", 42);
  SetRegValue(settings, SettingsRoot::ClassesRoot, "rws.mis", "", std::string("open"));
  EXPECT_EQ(box.Read("of/mine/a.ini"),
            "[HKEY_CURRENT_USER]\nSoftware\\Hollowbyte\\RWS%20Edit\\GamePath=/il2\n"
            "Software\\Hollowbyte\\RWS%20Edit\\Number=42\n[HKEY_CLASSES_ROOT]\nrws.mis\\.=open\n");
  EXPECT_EQ(GetRegValue(settings, kUser, kSetPath, "number", ""), "42");
  EXPECT_EQ(GetRegValue(settings, SettingsRoot::ClassesRoot, "rws.mis", "", ""), "open");
  const std::string theirs =
      "\xEF\xBB\xBF[hkey_current_user]\r\nA\\b=1\r\n; A\\b=2\r\njunk\r\na\\B = 3 \r\n\r\n"
      "[open\nA\\b=4\n%zz=";
  const Settings outside = open("c.ini");
  box.Write("c.ini", "A\\b=1\n[HKEY_CURRENT_USER]\n");
  EXPECT_EQ(GetRegValue(outside, kUser, "A", "b", ""), "");
  box.Write("b.ini", theirs);
  const Settings other = open("b.ini");
  EXPECT_EQ(GetRegValue(other, kUser, "A", "b", ""), "3") << "of two the later one counts";
  SetRegValue(other, kUser, "a", "B", std::string("5"));
  SetRegValue(other, kUser, "A", "c", std::string("6"));
  SetRegValue(other, kUser, "AB", "d", std::string("7"));
  const std::string now = Replace(theirs, "B = 3 \r\n", "B=5\r\nA\\c=6\nAB\\d=7\n") + "\n";
  EXPECT_EQ(box.Read("b.ini"), now);
  DeleteRegKey(other, kUser, "a");
  EXPECT_EQ(box.Read("b.ini"), Replace(Replace(now, "A\\b=1\r\n", ""), "a\\B=5\r\nA\\c=6\n", ""));
  for (const auto& [name, told] : {std::pair{"b.ini/below.ini", "b.ini"}, {"of", "of"}})
    EXPECT_FALSE(Trap([&] { WriteSetting(open(name), setting::GamePath, "x"); },
                      [&](const Fault& caught) {
                        EXPECT_TRUE(Contains(caught.Text, box.Path(told))) << caught.Text;
                      }));
}

TEST(IniSettings, ReadWhatIsTypedByHand) {
  const std::pair<const char*, const char*> rows[] = {{" 3\t", "3"},
                                                      {"a , \tb c ,", "a, b c, "},
                                                      {"\" a, \" , b", " a, , b"},
                                                      {"C:\\Games", "C:\\Games"},
                                                      {"x\\", "x\\"},
                                                      {"\\x41z\\101", "AzA"},
                                                      {"@Invalid()", ""},
                                                      {"@ByteArray(x", "@ByteArray(x"},
                                                      {"x)", "x)"}};
  for (const auto& [value, text] : rows)
    EXPECT_EQ(StoredSetting("[HKEY_CURRENT_USER]\nA\\b=" + std::string(value), kUser, "A", "b"),
              text)
        << value;
}

TEST(IniFile, Reads) {
  const test::Sandbox box;
  const std::string file = box.Write(
      "skin.ini", test::Crlf({"Code=outside", "[Other]", "Code=1", "[Skin]", "; Code=remark",
                              " code = JG 54 = x ", "Code=second",
                              "Void=", "Long=" + std::string(300, 'x'), "[Skin]", "Name=late"}));
  const std::array<std::string, 3> rows[] = {
      {"SKIN", "CODE", "JG 54 = x"}, {"other", "Code", "1"},
      {"Skin", "Void", ""},          {"Skin", "Name", "none"},
      {"Absent", "Code", "none"},    {"Skin", "Long", std::string(256, 'x')}};
  for (const auto& [section, key, value] : rows)
    EXPECT_EQ(ReadIniValue(Services(), file, section, key, "none"), value) << section << key;
  EXPECT_EQ(ReadIniValue(Services(), box.Path("gone.ini"), "Skin", "Code", "none"), "none");
}

TEST(IniFile, WritesAndKeepsAllOtherLines) {
  const test::Sandbox box;
  const Services services;
  const std::string file = box.Path("skin.ini");
  WriteIniValue(services, file, "Skin", "Code", "JG 54");
  WriteIniValue(services, file, "Skin", "Name", "   ");
  EXPECT_EQ(box.Read("skin.ini"), "[Skin]\r\nCode=JG 54\r\nName=Empty\r\n");
  box.Write("skin.ini", test::Crlf({"junk", "[skin]", "; remark", "code=1", "", "[B]", "Code=2"}));
  WriteIniValue(services, file, "Skin", "Code", "3");
  WriteIniValue(services, file, "Skin", "New", "4");
  WriteIniValue(services, file, "C", "Code", "5");
  EXPECT_EQ(box.Read("skin.ini"), test::Crlf({"junk", "[skin]", "; remark", "Code=3", "New=4", "",
                                              "[B]", "Code=2", "[C]", "Code=5"}));
  EXPECT_EQ(WithIniValue("\n", "C", "Code", "5"), "\r\n[C]\r\nCode=5\r\n");
  EXPECT_THROW(WriteIniValue(services, box.Path("gone/skin.ini"), "C", "Code", "5"), Fault);
}

}  // namespace
}  // namespace rws
