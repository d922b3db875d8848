#pragma once

#include <QGroupBox>
#include <QPaintEvent>
#include <QStyleOptionGroupBox>
#include <QStylePainter>

namespace rws {

/** A frame with a caption. A control in it that changes has the frame behind it painted again, but
    not the caption: to lay that out is a tenth of all that an edit costs. */
class GroupFrame : public QGroupBox {
 public:
  using QGroupBox::QGroupBox;

 protected:
  void paintEvent(QPaintEvent* event) override {
    QStyleOptionGroupBox option;
    initStyleOption(&option);
    if (contentsRect().contains(event->rect())) option.subControls &= ~QStyle::SC_GroupBoxLabel;
    QStylePainter(this).drawComplexControl(QStyle::CC_GroupBox, option);
  }
};

}  // namespace rws
