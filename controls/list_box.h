#pragma once

#include <QMap>
#include <QStringList>
#include <QStringListModel>
#include <set>

#include "controls/report_list.h"

namespace rws {

/** The texts of a list box, some of them struck out or marked. */
class RowTexts : public QStringListModel {
  Q_OBJECT

 public:
  using QStringListModel::QStringListModel;

  /** Why a row is struck out, by row; told by its tip and to a screen reader. */
  QMap<int, QString> Struck;
  /** Rows with a mark, and what it means in words. */
  std::set<int> Marked;
  QString Mark;

  QVariant data(const QModelIndex& index, int role) const override;

 private:
  QStringList Remarks(int row) const;
};

/** A list of texts, one selected; -1 is none. A right click selects nothing by itself, and neither
    a click beside the rows nor one with Ctrl takes the selection away. Tens of thousands of rows
    are not felt. */
class ListBox : public ReportList {
  Q_OBJECT

 public:
  explicit ListBox(QWidget* parent = nullptr);

  void SetRows(const QStringList& rows);
  void SetRowText(int row, const QString& text) { rows_.setData(rows_.index(row), text); }
  /** Strikes a row out until the rows are set anew; `why` is told. */
  void StrikeRow(int row, const QString& why);
  /** Marks these rows, and no others, by an asterisk before their text, which itself stays as it
      is; `meaning` says the mark in words. Lasts until the rows are set anew. */
  void MarkRows(std::set<int> rows, const QString& meaning);
  int RowCount() const { return rows_.rowCount(); }
  /** Selects a row and brings it into view; a row that is not there selects none. */
  void SelectRow(int row) { SelectOnly(row); }
  /** A text in the place of the rows when there are none; read to the user as well. */
  void SetEmptyText(const QString& text);
  QString EmptyText() const { return emptyText_; }

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                       const QEvent* event) const override;

 private:
  RowTexts rows_;
  QString emptyText_;
};

}  // namespace rws
