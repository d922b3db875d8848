#include "platform/start.h"

#include <gtest/gtest.h>

#include "platform/icons.h"

namespace rws::test {
namespace {

TEST(Start, OnlyTheProgramsNameIsTakenFromTheCommandLine) {
  constexpr char16_t kProgram[] = u"C:\\Users\\Max Muster\\RWS\\rws-edit.exe";
  const struct {
    QString Line, Behind;
  } cases[] = {
      {"\"C:\\x y\\rws-edit.exe\" \"C:\\my missions\\a.mis\"", "\"C:\\my missions\\a.mis\""},
      {"\"C:\\x y\\rws-edit.exe\"C:\\a.mis", "C:\\a.mis"},
      {"\"C:\\x y\\rws-edit.exe\"", ""},
      {"\"C:\\x y\\rws-edit.exe", ""},
      {"rws-edit.exe", ""},
      {"rws-edit.exe  -restore ", "-restore"},
      // As Explorer starts what the registry names without quotes.
      {"c:\\users\\max muster\\rws\\RWS-EDIT.EXE C:\\my missions\\a.mis", "C:\\my missions\\a.mis"},
      {"C:\\Users\\Max Muster\\RWS\\rws-edit.exe", ""},
      {"C:\\Users\\Max Muster\\RWS\\rws-edit.exe.old a", "Muster\\RWS\\rws-edit.exe.old a"},
      {"", ""},
  };
  for (const auto& [line, behind] : cases) {
    SCOPED_TRACE(line.toStdString());
    EXPECT_EQ(BehindProgram(line, QString::fromUtf16(kProgram)).toStdString(),
              behind.toStdString());
  }
}

TEST(Icons, AreThereInTheSizesThatScreensAskFor) {
  for (const char* name : {"groups/ussr", "toolbar/undo", "sound"}) {
    SCOPED_TRACE(name);
    const QIcon icon = ProgramIcon(QLatin1String(name));
    for (const int size : {16, 32, 64})
      EXPECT_EQ(icon.pixmap(QSize(size, size), 1.0).width(), size);
  }
  EXPECT_TRUE(ProgramIcon("groups/nobody").isNull());
}

}  // namespace
}  // namespace rws::test
