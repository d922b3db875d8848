#pragma once

#include <QHash>
#include <QIcon>
#include <vector>

#include "controls/report_list.h"
#include "controls/row_model.h"
#include "mainwindow/logic/flight_rows.h"
#include "services/code_page.h"

namespace rws {

/** The rows of the flight list in their sort order. Columns: aircraft, group, squadron and flight,
   and two sort keys that are never shown. */
class FlightListModel : public RowModel<FlightRow> {
  Q_OBJECT

 public:
  explicit FlightListModel(const CodePage& page, QObject* parent = nullptr);

  void SortRows(FlightSort by, bool descending);

  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  QString Text(const FlightRow& row, int column) const;
  QString ToolTip(const FlightRow& row, int column) const;
  QString Spoken(const FlightRow& row) const;

  const QIcon& IconOf(const FlightRow& row) const;

  const CodePage& page_;
  /** Pictures by group, made once: a list of flights has few groups. */
  mutable QHash<QString, QIcon> icons_;
};

/** What is selected in the list of flights, in its order. */
struct FlightSelection {
  std::vector<int> Rows;
  std::vector<std::size_t> Flights;
  /** Names of their aircraft. */
  std::vector<std::string> Planes;
  /** The flight that has the list's focus, or the first selected one when that is not selected; -1
      without one. */
  int Focused = -1;
  /** They were chosen as several, with the mouse: an edit goes to all of them. */
  bool Several = false;
};

/** `lstPlanes`: the flights of the current mission. A row's place says nothing about its flight. */
class FlightList : public ReportList {
  Q_OBJECT

 public:
  FlightList(const CodePage& page, QWidget* parent);

  /** Shows these rows sorted by aircraft, none selected. */
  void SetRows(std::vector<FlightRow> rows);
  int RowCount() const { return model_.rowCount(); }
  const FlightRow& At(int row) const;
  /** Row of a flight, or -1. */
  int RowOf(int flight) const;
  /** What a command or an edit applies to. */
  FlightSelection Selection() const;

  /** "" after a rebuild, "single" or "multiple" after a selection with the mouse. */
  std::string Tag;

 private:
  void HeaderClicked(int column);
  void FitColumns();

  FlightListModel model_;
  bool descending_ = false;
};

}  // namespace rws
