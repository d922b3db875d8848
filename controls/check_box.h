#pragma once

#include <QCheckBox>

namespace rws {

/** A check box that code can show half checked; a click on it then unchecks it. */
class CheckBox : public QCheckBox {
  Q_OBJECT

 public:
  using QCheckBox::QCheckBox;

 protected:
  void nextCheckState() override {
    setCheckState(checkState() == Qt::Unchecked ? Qt::Checked : Qt::Unchecked);
  }
};

}  // namespace rws
