#pragma once

#include <QElapsedTimer>
#include <QProgressDialog>
#include <QStatusBar>
#include <functional>

#include "services/work.h"

namespace rws {

/** Shows how far a long work has come: in the status bar, and from half a second on in a dialog
   with the file in hand and the time that is left, whose Cancel ends the work. */
class WorkProgress {
 public:
  /** `bar` may be null. `step` is called with the dialog after each step. */
  WorkProgress(
      QWidget& window, QStatusBar* bar,
      std::function<void(QProgressDialog&)> step = [](QProgressDialog&) {});
  WorkProgress(const WorkProgress&) = delete;
  WorkProgress& operator=(const WorkProgress&) = delete;

  /** False once the user has cancelled; behind the last step it is too late for that. */
  bool Told(const WorkStep& step);
  /** For who lets events come between two steps. */
  bool IsCancelled() const { return dialog_.wasCanceled(); }

 private:
  void Show(const WorkStep& step);
  void TellBar(const QString& text);

  QStatusBar* bar_;
  QProgressDialog dialog_;
  QElapsedTimer sinceFirst_, sincePainted_;
  std::function<void(QProgressDialog&)> step_;
};

}  // namespace rws
