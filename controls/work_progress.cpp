#include "controls/work_progress.h"

#include <QCoreApplication>
#include <limits>
#include <utility>

namespace rws {

namespace {

/** Texts that change faster cannot be read, and painting them would slow the work down. */
constexpr qint64 kPaintedEveryMilliseconds = 50;

}  // namespace

WorkProgress::WorkProgress(QWidget& window, QStatusBar* bar,
                           std::function<void(QProgressDialog&)> step)
    : bar_(bar), dialog_(&window), step_(std::move(step)) {
  dialog_.setObjectName(QStringLiteral("toolProgress"));
  dialog_.setWindowTitle(QString(window.windowTitle()).remove(QStringLiteral("[*]")));
  // What the work goes over must not be edited meanwhile, nor in a window that has no owner.
  dialog_.setWindowModality(Qt::ApplicationModal);
  // It shows itself by what it expects; here it comes after a fixed time.
  dialog_.setMinimumDuration(std::numeric_limits<int>::max());
  dialog_.setAutoClose(false);
  dialog_.setAutoReset(false);
  dialog_.setMinimumWidth(dialog_.fontMetrics().averageCharWidth() * 60);
}

bool WorkProgress::Told(const WorkStep& step) {
  constexpr qint64 kShownAfterMilliseconds = 500;
  if (step.Done == step.Of) {
    // Left standing, the last would hide the panels for good; cleared later, a failure would go
    // too.
    if (bar_ && sinceFirst_.isValid()) bar_->clearMessage();
    return true;
  }
  if (!sinceFirst_.isValid()) sinceFirst_.start();
  dialog_.setMaximum(static_cast<int>(step.Of));
  if (!sincePainted_.isValid() || sincePainted_.elapsed() >= kPaintedEveryMilliseconds) Show(step);
  dialog_.setValue(static_cast<int>(step.Done));
  if (!dialog_.isVisible() && sinceFirst_.elapsed() >= kShownAfterMilliseconds &&
      !dialog_.wasCanceled())
    dialog_.show();
  step_(dialog_);
  if (!dialog_.wasCanceled()) return true;
  // Taking back what was done may last as long.
  TellBar(QCoreApplication::translate("frmRWS", "Cancelling ..."));
  return false;
}

void WorkProgress::Show(const WorkStep& step) {
  sincePainted_.start();
  const QString text =
      QString::fromStdString(WorkText(step, std::chrono::milliseconds(sinceFirst_.elapsed())));
  TellBar(text);
  const auto name = QString::fromUtf8(step.Name.data(), static_cast<qsizetype>(step.Name.size()));
  const QString shown =
      dialog_.fontMetrics().elidedText(name, Qt::ElideMiddle, dialog_.minimumWidth() * 9 / 10);
  dialog_.setLabelText(shown.isEmpty() ? text : shown + QLatin1Char('\n') + text);
}

void WorkProgress::TellBar(const QString& text) {
  if (bar_) bar_->showMessage(text);
}

}  // namespace rws
