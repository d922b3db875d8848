#pragma once

#include <QTreeView>

namespace rws {

/** A list of rows and columns of which several rows can be selected. Rows count from 0. It speaks
   when a button or key is released that went down in it, when the selection is final. A click on a
   column's header is passed on and sorts nothing by itself. While another control has the focus the
    selected rows are muted. */
class ReportList : public QTreeView {
  Q_OBJECT

 public:
  explicit ReportList(QWidget* parent = nullptr);

  /** Row of the item that has the focus; -1 is none. */
  int CurrentRow() const { return currentIndex().row(); }
  /** Selected rows, ascending. */
  QList<int> SelectedRows() const;
  /** Selects one row alone and gives it the focus. */
  void SelectOnly(int row);
  /** Selects these rows alone; `focused` gets the focus. */
  void SelectSeveral(const QList<int>& rows, int focused);

 Q_SIGNALS:
  /** `row` is the one that the button went down on, or -1. */
  void MouseReleased(Qt::MouseButton button, int row, QPoint globalPosition);
  /** After the last repeat of the key. */
  void KeyReleased();
  void MenuKeyPressed(QPoint globalPosition);

 protected:
  void RememberPress(const QMouseEvent* event);
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void initViewItemOption(QStyleOptionViewItem* option) const override;

 private:
  Qt::MouseButton pressedButton_ = Qt::NoButton;
  int pressedRow_ = -1;
  int pressedKey_ = 0;
};

}  // namespace rws
