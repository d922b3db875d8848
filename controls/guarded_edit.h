#pragma once

#include <QLineEdit>
#include <functional>

namespace rws {

/** A text box that can refuse to be left. The click, key or mnemonic that tried to leave it is
    swallowed with it. */
class GuardedEdit : public QLineEdit {
  Q_OBJECT

 public:
  explicit GuardedEdit(QWidget* parent = nullptr);
  ~GuardedEdit() override;

  /** Asked when the box is about to be left; false keeps the focus here. */
  std::function<bool()> MayLeave;

 protected:
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  bool focusNextPrevChild(bool next) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool Refuses() const { return MayLeave && !MayLeave(); }

  bool swallowPress_ = false, swallowRelease_ = false;
};

}  // namespace rws
