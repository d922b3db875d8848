#include <QtWidgets>
#include <map>
#include <set>

#include "platform/qt_text.h"
#include "services/help_file.h"
#include "tests/app/forms_fixture.h"
#include "tests/support/places.h"

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

QString HelpText() {
  QFile file(FromPath(SourceFolder() + "/data/" + kHelpFile));
  EXPECT_TRUE(file.open(QIODevice::ReadOnly));
  return QString::fromUtf8(file.readAll());
}

TEST_F(AllFormsTest, TheHelpTellsOfEveryFormMenuEntryAndButton) {
  const QString help = HelpText();
  ForEachForm([&help](QWidget& form) {
    EXPECT_TRUE(help.contains("<h2 id=\"" + form.objectName() + "\">"));
    // What the map shows is told in sentences.
    if (form.objectName().startsWith("frmMap")) return;
    QStringList captions;
    for (const auto* entry : form.findChildren<QAction*>()) captions << entry->text();
    for (const auto* button : form.findChildren<QAbstractButton*>()) captions << button->text();
    captions.replaceInStrings("&&", "\n").replaceInStrings("&", "").replaceInStrings("\n", "&");
    // Without what is counted, and texts of the user's own.
    captions.replaceInStrings(QRegularExpression(" \\(\\d+\\)$|.*: $"), "").removeAll("Pop");
    for (const QString& caption : captions)
      EXPECT_TRUE(help.contains(">" + caption.toHtmlEscaped() + "</")) << caption.toStdString();
  });
}

TEST(Help, StandsAloneAndItsLinksLead) {
  const QString help = HelpText();
  EXPECT_FALSE(help.contains(QRegularExpression("<script|<img|<link|src=|url\\(|https?:")));
  auto links = QRegularExpression("href=\"([^\"]*)\"").globalMatch(help);
  ASSERT_TRUE(links.hasNext());
  while (links.hasNext()) {
    const QString link = links.next().captured(1);
    EXPECT_TRUE(link.startsWith('#') && help.contains("id=\"" + link.mid(1) + "\""))
        << link.toStdString();
  }
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
      const auto* label = qobject_cast<const QLabel*>(control);
      if (label ? label->buddy() != nullptr : control->inherits("QAbstractButton"))
        take(control->property("text").toString(), NameOf(control));
      else if (control->inherits("QGroupBox"))
        take(control->property("title").toString(), NameOf(control));
      else if (control->inherits("QMenuBar"))
        for (const auto* menu : control->actions()) take(menu->text(), "menu");
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
