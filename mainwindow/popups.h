#pragma once

#include <QDialog>
#include <QMenu>
#include <functional>

namespace rws {

/** How the window opens what waits for the user. A test replaces these and works the dialog or the
    menu itself. */
struct Popups {
  /** Shows a dialog and returns when it has closed. */
  std::function<void(QDialog& dialog)> ShowDialog = [](QDialog& dialog) { dialog.exec(); };
  /** Opens a menu there and returns when it has closed. */
  std::function<void(QMenu& menu, QPoint globalPosition)> OpenMenu =
      [](QMenu& menu, QPoint globalPosition) { menu.exec(globalPosition); };
};

}  // namespace rws
