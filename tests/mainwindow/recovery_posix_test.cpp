#include "tests/mainwindow/unsaved_fixture.h"

namespace rws::test {
namespace {

using RecoveryByLinkTest = UnsavedTest;

TEST_F(RecoveryByLinkTest, EditsComeBackIntoTheFolderOnShow) {
  ClickRow(1);
  Edit();
  Window->mnuExit->trigger();
  Box.Link("again", "missions");
  StartAnew("again");
  EXPECT_EQ(Press("Restore"), "");
  EXPECT_EQ(Rows(), "a|*b|c");
  Save();
  EXPECT_NE(FileText("b").find("CloudType 5"), std::string::npos);
}

}  // namespace
}  // namespace rws::test
