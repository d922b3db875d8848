#include "controls/wrapped_label.h"

#include <QPainter>
#include <QTextLayout>
#include <cmath>

namespace rws {

WrappedLabel::WrappedLabel(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  setWordWrap(true);
}

int WrappedLabel::OneLine() const {
  return fontMetrics().size(0, text()).width() + fontMetrics().averageCharWidth();
}

/** Lays the lines out one below the other, of full height each. */
void WrappedLabel::Lay(QTextLayout& layout, int width) const {
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  layout.setTextOption(option);
  layout.setText(QString(text()).replace(u'\n', QChar(QChar::LineSeparator)));
  qreal y = 0;
  layout.beginLayout();
  for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
    line.setLineWidth(width);
    line.setPosition({0, y});
    y += line.height();
  }
  layout.endLayout();
}

int WrappedLabel::heightForWidth(int width) const {
  QTextLayout layout({}, font(), this);
  Lay(layout, width);
  return static_cast<int>(std::ceil(layout.boundingRect().height()));
}

void WrappedLabel::paintEvent(QPaintEvent*) {
  QTextLayout layout({}, font(), this);
  Lay(layout, width());
  QPainter painter(this);
  painter.setPen(palette().color(foregroundRole()));
  layout.draw(&painter, {0, (height() - layout.boundingRect().height()) / 2});
}

}  // namespace rws
