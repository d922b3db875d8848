#include <QAccessible>

#include "tests/mainwindow/window_fixture.h"

namespace rws::test {
namespace {

/** Bars over the real window, which has the focus in its list of missions. */
class MessageBarsTest : public WindowTest {
 protected:
  MessageBarsTest() {
    OpenThree();
    Window->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(Window.get()));
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

TEST_F(MessageBarsTest, TakeARoomThatIsBounded) {
  Window->resize(Window->minimumSizeHint());
  for (int i = 0; i < 8; ++i) Show(std::to_string(i), {"A", "B", "C", "D", "E"});
  QTest::qWait(0);
  MessageBar& bar = *Bars().Bar("7");
  EXPECT_EQ(bar.cmd.size(), 4U);
  EXPECT_LE(Bars().height(), Bars().fontMetrics().height() * 10);
  bar.cmd[0]->setFocus();
  Bars().Bar("6")->cmdClose->setFocus();
  Press(Qt::Key_Tab);
  EXPECT_TRUE(bar.cmd[0]->hasFocus());
  EXPECT_FALSE(bar.cmd[0]->visibleRegion().isEmpty()) << "scrolled to where it is seen";
}

TEST_F(MessageBarsTest, ALongPathIsWrappedAndNarrowBarsPutTheirButtonsBelow) {
  MessageBar bar;
  const QString path(300, 'x');
  bar.SetContent({BarKind::Warning, path, {{"Reload", {}}, {"Keep Mine", {}}}, {}});
  for (const int width : {900, bar.minimumSizeHint().width() + 20}) {
    bar.resize(width, 100);
    bar.resize(width, bar.layout()->heightForWidth(width));
    bar.show();
    QTest::qWait(0);
    const bool below = bar.cmd[0]->mapTo(&bar, QPoint()).y() >= bar.lblText->geometry().bottom();
    EXPECT_EQ(below, width < 900) << width;
    EXPECT_GE(bar.lblText->height(), bar.lblText->heightForWidth(bar.lblText->width()));
    EXPECT_GT(bar.lblText->height(), 2 * bar.fontMetrics().height());
  }
}

double Luminance(const QColor& color) {
  return 0.2126 * color.redF() + 0.7152 * color.greenF() + 0.0722 * color.blueF();
}

TEST_F(MessageBarsTest, ColorsFollowThePaletteAsAPair) {
  MessageBar bar;
  for (const auto kind : {BarKind::Info, BarKind::Warning})
    for (const bool dark : {false, true}) {
      bar.SetContent({kind, "Text", {}, {}});
      bar.setPalette(QPalette(dark ? QColor(40, 40, 40) : QColor(240, 240, 240)));
      const auto colors = bar.OwnColors();
      EXPECT_EQ(Luminance(colors.Back) < 0.3, dark);
      EXPECT_GT(std::abs(Luminance(colors.Back) - Luminance(colors.Text)), 0.6);
      EXPECT_EQ(bar.lblText->palette().color(QPalette::WindowText), colors.Text);
      EXPECT_EQ(bar.grab().toImage().pixelColor(bar.width() / 2, 3), colors.Back);
    }
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
