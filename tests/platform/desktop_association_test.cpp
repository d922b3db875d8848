#include "platform/desktop_association.h"

#include <gtest/gtest.h>

#include <QByteArray>
#include <array>
#include <filesystem>

#include "tests/support/sandbox.h"

#ifndef _WIN32
namespace rws::test {
namespace {

/** A user of one's own: folders and tools lie in the sandbox. */
class DesktopAssociationTest : public ::testing::Test {
 protected:
  DesktopAssociationTest() {
    Set(0, "XDG_DATA_HOME", Box.Path("data"));
    Set(1, "XDG_CONFIG_HOME", Box.Path("config"));
    Set(2, "PATH", Box.Path("tools"));
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
  std::string Switch(bool on) { return AssociateDesktop(Files, "/opt/a \\b\"$c 5%/rws-edit", on); }

  Sandbox Box;
  FileSystem Files;
  std::array<std::pair<const char*, QByteArray>, 3> Before;
  const std::string Entry = "data/applications/rws-edit.desktop",
                    Package = "data/mime/packages/rws-edit.xml", List = "config/mimeapps.list";
};

TEST_F(DesktopAssociationTest, WritesItsFilesWithoutAnyToolAndTakesThemBack) {
  EXPECT_EQ(Switch(true), "");
  const std::string entry = Box.Read(Entry), package = Box.Read(Package);
  EXPECT_NE(entry.find("\nExec=\"/opt/a \\\\\\\\b\\\\\"\\\\$c 5%%/rws-edit\" %f\n"),
            std::string::npos)
      << entry;
  EXPECT_NE(package.find("pattern=\"*.properties\" weight=\"10\""), std::string::npos);
  EXPECT_EQ(Switch(true), "") << "its own files may be written again";
  const std::string others = "[Added Associations]\r\nx/y=a.desktop;\r\n[Default Applications]\r\n";
  const std::string mission = "application/x-rws-edit-mission=";
  Box.Write(List, others + mission + "rws-edit.desktop\r\ntext/plain=b.desktop");
  Box.Write("data/applications/mimeapps.list",
            "[Default Applications]\n" + mission + "rws-edit.desktop;c.desktop;\n");
  EXPECT_EQ(Switch(false), "");
  EXPECT_EQ(Box.Read(List), others + "text/plain=b.desktop");
  EXPECT_EQ(Box.Read("data/applications/mimeapps.list"),
            "[Default Applications]\n" + mission + "c.desktop;\n");
  EXPECT_EQ(Box.Names("data/mime/packages"), "");
  EXPECT_FALSE(Box.Exists(Entry));
  EXPECT_EQ(Switch(false), "") << "nothing left to take back";
}

TEST_F(DesktopAssociationTest, TellsTheDesktop) {
  for (const char* tool : {"update-mime-database", "update-desktop-database", "xdg-mime"})
    AddTool(tool, "echo \"${0##*/} $*\" >> '" + Box.Path("calls") + "'");
  EXPECT_EQ(Switch(true), "");
  const std::string both = "update-mime-database " + Box.Path("data/mime") +
                           "\nupdate-desktop-database " + Box.Path("data/applications") + "\n";
  EXPECT_EQ(Box.Read("calls"),
            both + "xdg-mime default rws-edit.desktop application/x-rws-edit-mission\n");
  Box.Write("calls", "");
  EXPECT_EQ(Switch(false), "");
  EXPECT_EQ(Box.Read("calls"), both);
  AddTool("update-mime-database", "echo no room >&2; exit 1");
  const std::string reason = Switch(true);
  EXPECT_NE(reason.find("update-mime-database\": no room"), std::string::npos) << reason;
  EXPECT_FALSE(Box.Exists(Entry) || Box.Exists(Package)) << "nothing stays half switched on";
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
#endif
