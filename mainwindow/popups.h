#pragma once

#include <QMenu>
#include <QProgressDialog>
#include <functional>

#include "controls/show_dialog.h"

namespace rws {

/** How the window opens what waits for the user. A test replaces these and works the dialog or the
    menu itself. */
struct Popups {
  /** Shows a dialog and returns when it has closed. */
  rws::ShowDialog ShowDialog = ShowUntilClosed;
  /** Opens a menu there and returns when it has closed. */
  std::function<void(QMenu& menu, QPoint globalPosition)> OpenMenu =
      [](QMenu& menu, QPoint globalPosition) { menu.exec(globalPosition); };
  /** Called after each file of a long tool with the dialog that can cancel it. */
  std::function<void(QProgressDialog& dialog)> ToolStep = [](QProgressDialog&) {};
};

}  // namespace rws
