#include <gtest/gtest.h>

#include <QSettings>

#include "platform/settings_store.h"
#include "services/settings.h"

namespace rws::test {
namespace {

/** The registry of the user who runs the tests, below a key that no program uses. */
class Registry : public ::testing::Test {
 protected:
  static constexpr char kBase[] = "Software\\Hollowbyte\\RWS Edit Tests";
  static constexpr auto kUser = SettingsRoot::CurrentUser, kClasses = SettingsRoot::ClassesRoot;
  Registry() { Clear(); }
  ~Registry() override { Clear(); }
  static void Clear() {
    QSettings("HKEY_CURRENT_USER\\Software\\Hollowbyte", QSettings::NativeFormat)
        .remove("RWS Edit Tests");
    QSettings("HKEY_CURRENT_USER\\Software\\Classes", QSettings::NativeFormat)
        .remove("RWS Edit.test");
  }
  static QStringList KeysIn(const char* parent) {
    return QSettings(QString("HKEY_CURRENT_USER\\") + parent, QSettings::NativeFormat)
        .childGroups();
  }
  Settings Store{kBase, MakeSettingsStore("")};
};

TEST_F(Registry, KeepsTextsAndNumbersAndForgetsAKeyWhole) {
  const std::string cyrillic = "C:\\Игра\\x, y; =%";
  SetRegValue(Store, kUser, kSetPath, "Path", cyrillic);
  SetRegValue(Store, kUser, kSetPath, "Number", 42);
  const Settings again{kBase, MakeSettingsStore("")};
  EXPECT_EQ(GetRegValue(again, kUser, kSetPath, "path", ""), cyrillic);
  EXPECT_EQ(GetRegValue(again, kUser, kSetPath, "NUMBER", ""), "42");
  EXPECT_TRUE(KeysIn("Software\\Hollowbyte").contains("RWS Edit Tests"));
  DeleteRegKey(Store, kUser, kBase);
  EXPECT_FALSE(KeysIn("Software\\Hollowbyte").contains("RWS Edit Tests"));
  EXPECT_EQ(GetRegValue(again, kUser, kSetPath, "Path", "none"), "none");
  EXPECT_FALSE(KeysIn("Software\\Hollowbyte").contains("RWS Edit Tests")) << "reading makes none";
}

TEST_F(Registry, ClassesAreThoseOfTheUser) {
  const std::string command = "RWS Edit.test\\shell\\open\\command";
  SetRegValue(Store, kClasses, "RWS Edit.test", "", std::string("RWS Edit"));
  SetRegValue(Store, kClasses, command, "", std::string("C:\\a b\\rws-edit.exe %1"));
  EXPECT_EQ(GetRegValue(Store, kClasses, command, "", ""), "C:\\a b\\rws-edit.exe %1");
  EXPECT_EQ(GetRegValue(Store, kClasses, "RWS Edit.test", "", ""), "RWS Edit");
  DeleteRegKey(Store, kClasses, "RWS Edit.test");
  EXPECT_FALSE(KeysIn("Software\\Classes").contains("RWS Edit.test"));
}

}  // namespace
}  // namespace rws::test
