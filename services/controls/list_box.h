#pragma once

#include <QListView>
#include <QStringList>
#include <QStringListModel>

namespace rws {

/** A list of texts, one selected. Rows count from 0, -1 is none. It speaks when a button or key is
    released, not when the selection moves; a right click selects nothing by itself. Tens of
   thousands of rows are not felt. */
class ListBox : public QListView {
  Q_OBJECT

 public:
  explicit ListBox(QWidget* parent = nullptr);

  void SetRows(const QStringList& rows);
  int RowCount() const { return rows_.rowCount(); }
  int CurrentRow() const { return currentIndex().row(); }
  /** Selects a row and brings it into view; a row that is not there selects none. */
  void SelectRow(int row);

 Q_SIGNALS:
  /** A button went up in the list after it had gone down there; `row` is the one it went down on.
   */
  void MouseReleased(Qt::MouseButton button, int row, QPoint globalPosition);
  /** The last repeat of a key that had gone down in the list. */
  void KeyReleased();
  /** The menu key. */
  void MenuKeyPressed(QPoint globalPosition);

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  QStringListModel rows_;
  Qt::MouseButton pressedButton_ = Qt::NoButton;
  int pressedRow_ = -1;
  int pressedKey_ = 0;
};

}  // namespace rws
