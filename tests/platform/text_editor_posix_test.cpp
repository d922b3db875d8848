#include <gtest/gtest.h>

#include <QTest>
#include <filesystem>

#include "platform/text_editor.h"
#include "tests/support/sandbox.h"

namespace rws::test {
namespace {

TEST(TextEditor, IsTheDesktopsOwnAndGetsThePathWhole) {
  const Sandbox box;
  const auto script = [&](const std::string& name, const std::string& body) {
    std::filesystem::permissions(box.Write("bin/" + name, "#!/bin/sh\n" + body + "\n"),
                                 std::filesystem::perms::owner_all);
  };
  const std::string record = "printf '%s|' \"${0##*/}\" \"$@\" > '" + box.Path("calls") + "'";
  const QByteArray path = qgetenv("PATH");
  qputenv("PATH", QByteArray::fromStdString(box.Path("bin")) + ":" + path);
  qputenv("VISUAL", "vi");
  qputenv("EDITOR", "kate -n");
  const std::string file = box.Path("-a b.mis");
  script("xdg-mime", "[ \"$*\" = 'query default text/plain' ] && echo editor.desktop");
  script("gtk-launch", record);
  EXPECT_GT(OpenInTextEditor(file), 32);
  EXPECT_EQ(box.Read("calls"), "gtk-launch|editor.desktop|" + file + "|");
  script("gtk-launch", "exit 1");
  script("kate", record + "; mv '" + box.Path("calls") + "' '" + box.Path("done") + "'");
  EXPECT_GT(OpenInTextEditor(file), 32);
  EXPECT_TRUE(QTest::qWaitFor([&] { return box.Exists("done"); }));
  EXPECT_EQ(box.Read("done"), "kate|-n|" + file + "|");
  qputenv("PATH", path);
  qunsetenv("VISUAL");
  qunsetenv("EDITOR");
}

}  // namespace
}  // namespace rws::test
