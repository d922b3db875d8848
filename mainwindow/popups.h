#pragma once

#include <QMenu>
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
};

}  // namespace rws
