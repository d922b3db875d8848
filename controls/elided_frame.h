#pragma once

#include <QGroupBox>
#include <QLayout>
#include <QStyleOptionGroupBox>

namespace rws {

/** A frame whose caption may be wider than it: the end of the caption then gives way to dots, and
    the tool tip tells it whole. */
class ElidedFrame : public QGroupBox {
  Q_OBJECT

 public:
  using QGroupBox::QGroupBox;

  /** Shows a text as it is: "&" marks no key. */
  void SetCaption(const QString& caption) {
    caption_ = caption;
    setToolTip(caption);
    setTitle(Escaped(caption));
  }
  const QString& Caption() const { return caption_; }

  QSize minimumSizeHint() const override {
    return {layout() ? layout()->totalMinimumSize().width() : 0,
            QGroupBox::minimumSizeHint().height()};
  }

 protected:
  void initStyleOption(QStyleOptionGroupBox* option) const override {
    QGroupBox::initStyleOption(option);
    const int room = width() - 2 * fontMetrics().height();
    option->text = Escaped(fontMetrics().elidedText(caption_, Qt::ElideRight, room));
  }

 private:
  static QString Escaped(QString text) {
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
  }

  QString caption_;
};

}  // namespace rws
