#include "mainwindow/tool_progress.h"

#include <QCoreApplication>
#include <limits>
#include <utility>

namespace rws {

ToolProgress::ToolProgress(QWidget& window, QStatusBar& bar,
                           std::function<void(QProgressDialog&)> step)
    : bar_(bar), dialog_(&window), step_(std::move(step)) {
  dialog_.setObjectName(QStringLiteral("toolProgress"));
  dialog_.setWindowTitle(window.windowTitle());
  // It shows itself by what it expects; here it comes after a fixed time.
  dialog_.setMinimumDuration(std::numeric_limits<int>::max());
  dialog_.setAutoClose(false);
  dialog_.setAutoReset(false);
  dialog_.setMinimumWidth(dialog_.fontMetrics().averageCharWidth() * 50);
}

bool ToolProgress::Told(std::size_t done, std::size_t of) {
  constexpr qint64 kShownAfterMilliseconds = 500;
  if (done == of) {
    // Left standing, the last would hide the panels for good; cleared later, a failure would go
    // too.
    bar_.clearMessage();
    return true;
  }
  const QString text = QCoreApplication::translate("frmRWS", "File %1 of %2").arg(done).arg(of);
  bar_.showMessage(text);
  if (!sinceFirst_.isValid()) sinceFirst_.start();
  dialog_.setLabelText(text);
  dialog_.setMaximum(static_cast<int>(of));
  dialog_.setValue(static_cast<int>(done));
  if (!dialog_.isVisible() && sinceFirst_.elapsed() >= kShownAfterMilliseconds &&
      !dialog_.wasCanceled())
    dialog_.show();
  step_(dialog_);
  if (!dialog_.wasCanceled()) return true;
  // Taking back what was done may last as long.
  bar_.showMessage(QCoreApplication::translate("frmRWS", "Cancelling ..."));
  return false;
}

}  // namespace rws
