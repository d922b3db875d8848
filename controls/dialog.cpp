#include "controls/dialog.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>

#include "services/help_file.h"

namespace rws {

void Dialog::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_F1) return ShowHelp();
  auto* focus = focusWidget();
  if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier && focus) {
    // Not every system makes a menu event of it.
    const QPoint middle = focus->rect().center();
    QContextMenuEvent menu(QContextMenuEvent::Keyboard, middle, focus->mapToGlobal(middle));
    QApplication::sendEvent(focus, &menu);
    return;
  }
  if (event->matches(QKeySequence::Cancel) && !MayDrop()) return;
  QDialog::keyPressEvent(event);
}

bool Dialog::MayDrop() const {
  if (!HoldsUnstored()) return true;
  return services_.Ask.MsgBox("Your changes are not stored yet.\nDo you want to drop them?",
                              Buttons::YesNo, Icon::Question, kProgramTitle) == Answer::Yes;
}

void Dialog::ShowHelp() const { OpenHelp(services_, objectName().toStdString()); }

}  // namespace rws
