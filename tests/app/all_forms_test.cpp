#include <QAbstractButton>
#include <QGroupBox>
#include <QLabel>
#include <QMenuBar>
#include <map>
#include <set>

#include "tests/app/forms_fixture.h"

namespace rws::test {
namespace {

std::string NameOf(const QWidget* control) {
  return control->metaObject()->className() + (" " + control->objectName()).toStdString();
}
bool IsInteractive(const QWidget* control) {
  return control->focusPolicy() != Qt::NoFocus && control->isVisible() &&
         !control->objectName().startsWith("qt_");
}

TEST_F(AllFormsTest, EveryControlHasANameForScreenReaders) {
  ForEachForm([](QWidget& form) {
    for (const auto* control : form.findChildren<QWidget*>())
      EXPECT_FALSE(IsInteractive(control) && control->accessibleName().isEmpty())
          << NameOf(control);
  });
}

TEST_F(AllFormsTest, TabReachesEveryControl) {
  ForEachForm([](QWidget& form) {
    form.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
    std::set<const QWidget*> reached;
    for (int i = 0; i < 200; ++i) {
      QWidget* focus = form.focusWidget() ? form.focusWidget() : &form;
      reached.insert(focus);
      QTest::keyClick(focus, Qt::Key_Tab);
    }
    for (const auto* control : form.findChildren<QWidget*>()) {
      // One button of a group of options stands for all; the arrow keys go on from it. A menu bar
      // is opened by Alt.
      const bool counts = IsInteractive(control) && control->isEnabled() &&
                          (control->focusPolicy() & Qt::TabFocus) && !control->focusProxy() &&
                          !qobject_cast<const QMenuBar*>(control) &&
                          !control->inherits("QRadioButton");
      const auto* owner = control->parentWidget();
      EXPECT_TRUE(!counts || reached.count(control) || reached.count(owner)) << NameOf(control);
    }
  });
}

TEST_F(AllFormsTest, F1OpensTheHelpOfTheDialog) {
  Box.Write("program/RWS.HLP.html", "help");
  std::size_t forms = 0;
  ForEachForm([&](QWidget& form) {
    if (&form == Window.get()) return;
    ++forms;
    QTest::keyClick(form.focusWidget() ? form.focusWidget() : &form, Qt::Key_F1);
    const std::string section = "#" + form.objectName().toStdString() + "\"";
    EXPECT_NE(Box.Read("program/RWS.HLP.at.html").find(section), std::string::npos);
  });
  EXPECT_EQ(World_.ShellCalls.size(), forms);
}

TEST_F(AllFormsTest, NoTwoMnemonicsOfAWindowAreEqual) {
  ForEachForm([](QWidget& form) {
    std::map<QChar, std::string> owners;
    const auto take = [&](const QString& text, const std::string& owner) {
      for (qsizetype at = text.indexOf('&'); at >= 0 && at + 1 < text.size();
           at = text.indexOf('&', at + 2)) {
        if (text[at + 1] == '&') continue;
        const QChar key = text[at + 1].toLower();
        EXPECT_TRUE(owners.emplace(key, owner).second)
            << QString(key).toStdString() << ": " << owners[key] << " and " << owner;
        return;
      }
    };
    for (const auto* control : form.findChildren<QWidget*>()) {
      // A dialog's parent is the main window.
      if (!control->isVisible() || control->window() != &form) continue;
      if (const auto* label = qobject_cast<const QLabel*>(control); label && label->buddy())
        take(label->text(), NameOf(label));
      else if (const auto* button = qobject_cast<const QAbstractButton*>(control))
        take(button->text(), NameOf(button));
      else if (const auto* group = qobject_cast<const QGroupBox*>(control))
        take(group->title(), NameOf(group));
      else if (const auto* bar = qobject_cast<const QMenuBar*>(control))
        for (const auto* menu : bar->actions()) take(menu->text(), "menu");
    }
    for (const auto* menu : form.findChildren<QMenu*>()) {
      owners.clear();
      for (const auto* entry : menu->actions())
        take(entry->text(), menu->objectName().toStdString());
    }
  });
}

}  // namespace
}  // namespace rws::test
