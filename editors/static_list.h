#pragma once

#include <vector>

#include "controls/report_list.h"
#include "controls/row_model.h"
#include "editors/logic/stationary_aircraft.h"
#include "services/code_page.h"

namespace rws {

/** The rows of the list of parked aircraft. Columns: aircraft, flyable, country, and two sort keys
    that are never shown. */
class StaticListModel : public RowModel<StaticRow> {
  Q_OBJECT

 public:
  explicit StaticListModel(const CodePage& page, QObject* parent = nullptr);

  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  QString Text(const StaticRow& row, int column) const;

  const CodePage& page_;
};

/** `lstStatic`: the parked aircraft of the current mission. A row's place says nothing about its
    aircraft. */
class StaticList : public ReportList {
  Q_OBJECT

 public:
  explicit StaticList(const CodePage& page, QWidget* parent = nullptr);

  /** Shows these rows in the order that the headers were clicked for. What was selected stays so;
      without a selection the first row gets it. */
  void SetRows(std::vector<StaticRow> rows);
  int RowCount() const { return model_.rowCount(); }
  const StaticRow& At(int row) const;
  /** The aircraft of the selected rows, in list order. */
  std::vector<std::size_t> SelectedPlanes() const;
  /** Sorts by country and aircraft, as all columns do; every call turns the order round. */
  void Sort();

 private:
  enum class Order { OfLines, Ascending, Descending };

  void Select(const std::vector<std::size_t>& planes, std::ptrdiff_t current);
  void FitColumns();

  const CodePage& page_;
  StaticListModel model_;
  Order order_ = Order::OfLines;
};

}  // namespace rws
