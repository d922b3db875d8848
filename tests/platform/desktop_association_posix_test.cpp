#include <gtest/gtest.h>

#include <QByteArray>
#include <array>
#include <filesystem>

#include "platform/desktop_association.h"
#include "services/text.h"
#include "tests/support/places.h"
#include "tests/support/sandbox.h"

namespace rws::test {
namespace {

/** A user of one's own: folders and tools lie in the sandbox. */
class DesktopAssociationTest : public ::testing::Test {
 protected:
  DesktopAssociationTest() {
    Set(0, "XDG_DATA_HOME", Box.Path("data"));
    Set(1, "XDG_CONFIG_HOME", Box.Path("config"));
    Set(2, "PATH", Box.Path("tools"));
    Set(3, "XDG_DATA_DIRS", Box.Path("share"));
    Set(4, "XDG_CONFIG_DIRS", Box.Path("etc"));
    Set(5, "XDG_CURRENT_DESKTOP", "Odd:Plain");
    AddTool("update-mime-database", kRenewTypes);
  }
  ~DesktopAssociationTest() override {
    for (const auto& [name, value] : Before) qputenv(name, value);
  }
  void Set(std::size_t i, const char* name, const std::string& value) {
    Before[i] = {name, qgetenv(name)};
    qputenv(name, QByteArray::fromStdString(value));
  }
  void AddTool(const std::string& name, const std::string& script) {
    std::filesystem::permissions(Box.Write("tools/" + name, "#!/bin/sh\n" + script + "\n"),
                                 std::filesystem::perms::owner_all);
  }
  /** What the package brings, and the desktop makes of it. */
  void Install() {
    AddTool("rws-edit", "");
    Box.Write("share/applications/rws-edit.desktop", "[Desktop Entry]\n");
    Box.Write(
        "share/applications/mimeinfo.cache",
        "[MIME Cache]\n" + Mission + "rws-edit.desktop;\n" + Briefing + "rws-edit.desktop;\n");
    Box.Write("share/mime/packages/rws-edit.xml", "");
    Box.Write("share/mime/globs2", "50:application/x-rws-edit-mission:*.mis\n");
    Program = Box.Path("tools/rws-edit");
  }
  std::string Switch(bool on) { return AssociateDesktop(Files, Program, on); }
  bool Is() { return IsDesktopAssociated(Files); }

  /** Stands for the desktop's tool: the type is known while its file is there. */
  static constexpr char kRenewTypes[] =
      "/bin/rm -f \"$1/globs2\"; test ! -e \"$1/packages/rws-edit.xml\" ||"
      " echo 50:application/x-rws-edit-mission:*.mis > \"$1/globs2\"";
  Sandbox Box;
  FileSystem Files;
  std::array<std::pair<const char*, QByteArray>, 6> Before;
  std::string Program = "/opt/a \\b\"$c 5%/rws-edit";
  const std::string Entry = "data/applications/rws-edit.desktop",
                    Package = "data/mime/packages/rws-edit.xml", List = "config/mimeapps.list",
                    Mission = "application/x-rws-edit-mission=",
                    Briefing = "application/x-rws-edit-briefing=";
};

TEST_F(DesktopAssociationTest, WritesThePackagedFilesAndTakesThemBack) {
  EXPECT_FALSE(Is());
  const std::string others =
      "[Added Associations]\r\nx/y=a.desktop;\r\n[Default Applications]\r\n" + Mission +
      "c.desktop;\ntext/plain=b.desktop";
  Box.Write(List, others);
  for (const char* again : {"first", "again"}) {
    SCOPED_TRACE(again);
    EXPECT_EQ(Switch(true), "");
    EXPECT_TRUE(Is());
    EXPECT_EQ(Box.Read(List),
              "[Added Associations]\r\nx/y=a.desktop;\r\n[Default Applications]\r\n" + Briefing +
                  "rws-edit.desktop;\n" + Mission + "rws-edit.desktop;c.desktop;\n" +
                  "text/plain=b.desktop");
  }
  const std::string entry = Box.Read(Entry);
  EXPECT_TRUE(Contains(entry, "\nExec=\"/opt/a \\\\\\\\b\\\\\"\\\\$c 5%%/rws-edit\" %f\n"))
      << entry;
  for (const auto& [own, packaged] :
       {std::pair(Package, "rws-edit-mime.xml"), std::pair(Entry, "rws-edit.desktop")}) {
    const std::string source = Files.ReadFile(SourceFolder() + "/packaging/" + packaged);
    for (const auto line : SplitAt(source, '\n')) {
      if (line.starts_with("Exec=")) continue;
      EXPECT_NE(Box.Read(own).find(line), std::string::npos) << line;
    }
  }
  EXPECT_EQ(Switch(false), "");
  EXPECT_FALSE(Is());
  EXPECT_EQ(Box.Read(List), others) << "the default from before is back";
  EXPECT_FALSE(Box.Exists(Package) || Box.Exists(Entry));
  EXPECT_EQ(Switch(false), "") << "nothing left to take back";
}

TEST_F(DesktopAssociationTest, WithThePackageTheUsersDefaultDecides) {
  Install();
  EXPECT_TRUE(Is()) << "the package's own default";
  Box.Write("share/applications/c.desktop", "");
  const std::string other = "[Default Applications]\n" + Mission + "gone.desktop;c.desktop;\n";
  Box.Write(List, other);
  EXPECT_FALSE(Is());
  EXPECT_EQ(Switch(true), "");
  EXPECT_TRUE(Is());
  EXPECT_FALSE(Box.Exists(Entry) || Box.Exists(Package)) << "the package's files serve";
  EXPECT_EQ(Switch(false), "");
  EXPECT_EQ(Box.Read(List), other);
  Box.Write(List, "");
  EXPECT_EQ(Switch(false), "");
  EXPECT_FALSE(Is()) << "declined, since the package offers it to all users";
  EXPECT_EQ(Box.Read(List), "[Removed Associations]\n" + Briefing + "rws-edit.desktop;\n" +
                                Mission + "rws-edit.desktop;\n");
  EXPECT_EQ(Switch(true), "");
  EXPECT_TRUE(Is());
  EXPECT_EQ(Box.Read(List).find("[Removed Associations]\n["), 0u) << Box.Read(List);
}

TEST_F(DesktopAssociationTest, AnotherCopyThanThePackagedOneGetsItsOwnEntry) {
  Install();
  Program = "/home/me/build/rws-edit";
  EXPECT_EQ(Switch(true), "");
  EXPECT_TRUE(Box.Exists(Entry));
}

TEST_F(DesktopAssociationTest, TellsWhatComesBeforeTheUsersList) {
  const std::pair<const char*, std::string> rivals[] = {
      {"config/plain-mimeapps.list", "[Default Applications]\n" + Mission + "c.desktop\n"},
      {"share/mime/globs2", "60:application/x-other:*.mis\n"}};
  Box.Write("share/applications/c.desktop", "");
  for (const auto& [name, text] : rivals) {
    SCOPED_TRACE(name);
    Box.Write(name, text);
    EXPECT_NE(Switch(true).find("The desktop's own settings come first"), std::string::npos);
    EXPECT_FALSE(Is() || Box.Exists(Entry) || Box.Exists(Package));
    Box.Write(name, "");
  }
}

TEST_F(DesktopAssociationTest, NothingStaysHalfSwitchedOn) {
  AddTool("update-mime-database", "echo no room >&2; exit 1");
  const std::string reason = Switch(true);
  EXPECT_NE(reason.find("update-mime-database\": no room"), std::string::npos) << reason;
  EXPECT_FALSE(Box.Exists(Entry) || Box.Exists(Package));
  std::filesystem::remove(Box.Path("tools/update-mime-database"));
  EXPECT_NE(Switch(true).find("\"update-mime-database\" installed?"), std::string::npos);
  EXPECT_FALSE(Box.Exists(Entry) || Box.Exists(Package));
}

TEST_F(DesktopAssociationTest, LeavesFilesOfOthersAlone) {
  Box.Write(Entry, "[Desktop Entry]\nName=mine\n");
  EXPECT_NE(Switch(true).find("rws-edit.desktop"), std::string::npos);
  EXPECT_EQ(Switch(false), "");
  EXPECT_EQ(Box.Read(Entry), "[Desktop Entry]\nName=mine\n");
  EXPECT_FALSE(Box.Exists(Package));
}

}  // namespace
}  // namespace rws::test
