#pragma once

#include <QDialog>
#include <functional>

namespace rws {

/** Shows a modal form until it is closed. A test puts a function in its place that works the form
    directly. */
using ShowDialog = std::function<void(QDialog& dialog)>;

/** The one that the user gets. */
inline void ShowUntilClosed(QDialog& dialog) { dialog.exec(); }

}  // namespace rws
