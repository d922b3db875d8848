#include <QAccessible>

#include "tests/mainwindow/window_fixture.h"

namespace rws::test {
namespace {

/** Bars over the real window, which has the focus in its list of missions. */
class MessageBarsTest : public WindowTest {
 protected:
  MessageBarsTest() {
    OpenThree();
    Activate();
    Window->lstMission->setFocus();
  }

  MessageBars& Bars() { return *Window->bars; }
  /** A bar of these buttons, which note what was done. */
  void Show(const std::string& id, const std::vector<const char*>& captions) {
    BarContent content{BarKind::Info, "Text of " + QString::fromStdString(id), {}, {}};
    for (const char* caption : captions)
      content.Buttons.push_back({caption, [this, caption] { Done.push_back(caption); }});
    content.OnClose = [this] { Done.push_back("closed"); };
    Bars().Show(id, content);
  }
  static void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
  }

  std::vector<std::string> Done;
};

TEST_F(MessageBarsTest, AreWorkedByKeyboardAndGiveTheFocusBack) {
  Show("one", {"Restore", "Discard"});
  Show("two", {});
  EXPECT_TRUE(Window->lstMission->hasFocus()) << "a bar takes no focus by itself";
  EXPECT_EQ(Bars().Texts(), QStringList({"Text of one", "Text of two"}));
  Press(Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ(QApplication::focusWidget(), Bars().Bar("two")->cmdClose) << "the last before the list";
  Press(Qt::Key_Escape);
  EXPECT_TRUE(Window->lstMission->hasFocus());
  EXPECT_EQ(Bars().Texts(), QStringList("Text of one"));
  for (int i = 0; i < 3; ++i) Press(Qt::Key_Backtab, Qt::ShiftModifier);
  Press(Qt::Key_Space);
  Press(Qt::Key_Return);
  EXPECT_EQ(Joined(Done), "closed|Restore|Restore");
  EXPECT_EQ(QApplication::focusWidget(), Bars().Bar("one")->cmd[0])
      << "its action has left the bar";
  Bars().Hide("one");
  EXPECT_TRUE(Window->lstMission->hasFocus());
  EXPECT_EQ(Joined(Done), "closed|Restore|Restore") << "the program took it away, not the user";
  EXPECT_FALSE(Bars().isVisible());
}

TEST_F(MessageBarsTest, AClickLeavesTheFocusWhereItIs) {
  Panel().txtWeather->setFocus();
  Show("one", {"Restore"});
  QCoreApplication::processEvents();
  Click(Bars().Bar("one")->cmd[0]);
  Click(Bars().Bar("one")->cmdClose);
  EXPECT_EQ(Joined(Done), "Restore|closed");
  EXPECT_TRUE(Panel().txtWeather->hasFocus());
}

TEST_F(MessageBarsTest, AnotherMessageTakesThePlaceOfTheFirst) {
  Show("one", {"Restore"});
  Show("two", {"Reload"});
  Bars().Bar("one")->cmd[0]->setFocus();
  Show("one", {"Discard"});
  EXPECT_EQ(Bars().Texts(), QStringList({"Text of one", "Text of two"}));
  EXPECT_EQ(Bars().Bar("one")->cmd[0]->text(), "Discard");
  Press(Qt::Key_Space);
  EXPECT_EQ(Joined(Done), "closed") << "a key on its way does not press the other button";
  Bars().Show("two", {BarKind::Info, "", {{"Gone", [this] { Bars().Hide("two"); }}}, {}});
  Bars().Bar("two")->cmd[0]->click();
  QCoreApplication::processEvents();
  EXPECT_TRUE(Bars().Texts().isEmpty());
}

TEST_F(MessageBarsTest, AreMessagesToAScreenReader) {
  Show("one", {"Restore"});
  auto* bar = QAccessible::queryAccessibleInterface(Bars().Bar("one"));
  ASSERT_TRUE(bar);
  EXPECT_EQ(bar->role(), QAccessible::AlertMessage);
  EXPECT_EQ(bar->text(QAccessible::Name), "Text of one");
  EXPECT_FALSE(bar->state().invisible);
}

}  // namespace
}  // namespace rws::test
