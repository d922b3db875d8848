#pragma once

#include <QStringList>
#include <QStringListModel>

#include "controls/report_list.h"

namespace rws {

/** A list of texts, one selected; -1 is none. A right click selects nothing by itself. Tens of
    thousands of rows are not felt. */
class ListBox : public ReportList {
  Q_OBJECT

 public:
  explicit ListBox(QWidget* parent = nullptr);

  void SetRows(const QStringList& rows);
  void SetRowText(int row, const QString& text) { rows_.setData(rows_.index(row), text); }
  int RowCount() const { return rows_.rowCount(); }
  /** Selects a row and brings it into view; a row that is not there selects none. */
  void SelectRow(int row) { SelectOnly(row); }

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;

 private:
  QStringListModel rows_;
};

}  // namespace rws
