#pragma once

#include <QList>
#include <QSet>
#include <QStringList>
#include <QTableView>

namespace rws {

class GridCells;
class GridEditor;

struct GridColumn {
  QString Heading;  // its blanks are part of the column's width
  Qt::Alignment Align = Qt::AlignLeft;
  /** Numbers can be typed into it. */
  bool Editable = false;
  bool operator==(const GridColumn&) const = default;
};

/** A table of texts with a current cell, a rectangle of selected cells and columns that can be
    typed into. Rows and columns count from 1; row 0 is the headings, 0 is also none. Thousands of
    rows are not felt. */
class Grid : public QTableView {
  Q_OBJECT

 public:
  struct Cells {
    int FirstRow = 0, LastRow = 0, FirstCol = 0, LastCol = 0;
    int RowCount() const { return FirstRow == 0 ? 0 : LastRow - FirstRow + 1; }
  };

  explicit Grid(QWidget* parent = nullptr);

  /** Other columns than before become as wide as their headings. */
  void SetColumns(const QList<GridColumn>& columns);
  /** Replaces all rows. Those in `fixed` are dimmed and cannot be typed into; `why` is their tool
      tip. The current cell, the selection and the place scrolled to stay as they are when the
     number of rows does; else the first cell becomes the current one. */
  void SetRows(const QList<QStringList>& rows, const QSet<int>& fixed = {},
               const QString& why = {});

  /** Replaces the texts of a row; one that is not there changes nothing. */
  void SetRow(int row, const QStringList& texts);

  int Row() const { return currentIndex().row() + 1; }
  int Col() const { return currentIndex().column() + 1; }
  int RowCount() const;
  bool IsFixed(int row) const;
  Cells Selection() const;
  QString Text(int row, int column) const;
  /** Shows a text in a cell; one that is not there changes nothing. */
  void SetText(int row, int column, const QString& text);
  /** Ends the edit of a cell with what has been typed. */
  void FinishEdit();

  QSize sizeHint() const override;

 Q_SIGNALS:
  void CurrentCellChanged(int row, int column);
  void EditBegan(int row, int column);
  /** The cell shows the text already. Not sent for an edit given up with Escape. */
  void EditEnded(int row, int column, const QString& text);
  /** A mouse button was released over a cell, the selection being final, or its key was pressed:
      Space the left one, the Menu key or Shift+F10 the right one. */
  void MouseReleased(Qt::MouseButton button, QPoint globalPosition);

 protected:
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  /** Numbers typed for a cell that takes none would lead to another row, which then took them. */
  void keyboardSearch(const QString&) override {}
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  void WidenColumns(const QList<QStringList>& rows);
  void RememberPress(const QMouseEvent* event);

  GridCells* cells_;
  GridEditor* editor_;
  Qt::MouseButton pressedButton_ = Qt::NoButton;
};

}  // namespace rws
