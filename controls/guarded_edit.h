#pragma once

#include <QLineEdit>
#include <functional>

namespace rws {

/** A text box that can refuse to be left. What was tried elsewhere in the window is swallowed: a
    key, a mnemonic, or the mouse from its press to its release, also on what takes no focus. */
class GuardedEdit : public QLineEdit {
  Q_OBJECT

 public:
  explicit GuardedEdit(QWidget* parent = nullptr);
  ~GuardedEdit() override;

  /** Asked when the box is about to be left; false keeps the focus here. */
  std::function<bool()> MayLeave;
  /** True if the box is not to be left; asking may have put its text right. */
  bool Refuses() const { return MayLeave && !MayLeave(); }

 protected:
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  bool focusNextPrevChild(bool next) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool SwallowsMouse(QEvent* event);

  /** The press that moved the focus has not reached its target yet. */
  bool refusedPress_ = false;
  /** From a refused press on until the next one. */
  bool swallowing_ = false;
};

}  // namespace rws
