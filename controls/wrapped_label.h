#pragma once

#include <QLabel>
#include <QTextLayout>

namespace rws {

/** A text of several lines that breaks between words and, where a path leaves it no other way,
    inside them. It is as high as its width makes it and can be made as narrow as need be. */
class WrappedLabel : public QLabel {
  Q_OBJECT

 public:
  explicit WrappedLabel(QWidget* parent = nullptr);

  /** Width of the text in one line. */
  int OneLine() const;
  int heightForWidth(int width) const override;
  QSize sizeHint() const override { return {OneLine(), heightForWidth(OneLine())}; }
  QSize minimumSizeHint() const override { return {0, fontMetrics().height()}; }

 protected:
  void paintEvent(QPaintEvent*) override;

 private:
  void Lay(QTextLayout& layout, int width) const;
};

}  // namespace rws
