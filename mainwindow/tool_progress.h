#pragma once

#include <QElapsedTimer>
#include <QProgressDialog>
#include <QStatusBar>
#include <cstddef>
#include <functional>

namespace rws {

/** Shows how far a tool has come: in the status bar, and from half a second on in a dialog whose
    Cancel stops the tool. */
class ToolProgress {
 public:
  /** `step` is called after each file. */
  ToolProgress(QWidget& window, QStatusBar& bar, std::function<void(QProgressDialog&)> step);

  /** False once the user has cancelled; behind the last file it is too late for that. */
  bool Told(std::size_t done, std::size_t of);

 private:
  QStatusBar& bar_;
  QProgressDialog dialog_;
  QElapsedTimer sinceFirst_;
  std::function<void(QProgressDialog&)> step_;
};

}  // namespace rws
