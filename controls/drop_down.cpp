#include "controls/drop_down.h"

#include <QAbstractItemView>
#include <QScreen>
#include <QWheelEvent>
#include <algorithm>

namespace rws {

DropDown::DropDown(QWidget* parent) : QComboBox(parent) { setFocusPolicy(Qt::StrongFocus); }

void DropDown::Fill(const QStringList& rows) {
  const bool blocked = blockSignals(true);
  clear();
  addItems(rows);
  setCurrentIndex(-1);
  blockSignals(blocked);
}

void DropDown::SelectRow(int row) {
  if (row >= 0 && row < count()) setCurrentIndex(row);
}

void DropDown::showPopup() {
  SizeComboDropDown(*this);
  QComboBox::showPopup();
}

void DropDown::wheelEvent(QWheelEvent* event) {
  if (hasFocus())
    QComboBox::wheelEvent(event);
  else
    event->ignore();
}

void SizeComboDropDown(QComboBox& combo) {
  constexpr int kMargin = 30;
  int widest = 0;
  for (int i = 0; i < combo.count(); ++i)
    widest = std::max(widest, combo.fontMetrics().horizontalAdvance(combo.itemText(i)));
  combo.view()->setMinimumWidth(
      std::min(widest + kMargin, combo.screen()->availableSize().width()));
}

}  // namespace rws
