#pragma once

#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <array>
#include <optional>

#include "controls/dialog.h"
#include "controls/report_list.h"
#include "controls/row_model.h"
#include "map/map_texts.h"

namespace rws {

/** Rows of texts, UTF-8, that can be sorted by any column: by number where both begin with one,
    empty cells last. Each row keeps the number that it had when it was set. */
template <std::size_t Columns>
class TextTable : public RowModel<std::pair<std::size_t, std::array<std::string, Columns>>> {
 public:
  using Texts = std::array<std::string, Columns>;
  using Row = std::pair<std::size_t, Texts>;

  TextTable(const Texts& headings, QObject* parent)
      : RowModel<Row>(int(Columns), parent), headings_(headings) {}

  /** Where as many rows were there before, they are changed in place. */
  void SetTexts(std::vector<Texts> texts);
  void sort(int column, Qt::SortOrder order) override;
  /** The place at which the row of a number is shown; -1 for none. */
  int PlaceOf(std::size_t number) const;
  /** All as it is shown, to be copied. */
  std::string Copied() const;

  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  void Order(std::vector<Row>& rows) const;

  Texts headings_;
  int by_ = -1;
  bool descending_ = false;
};

extern template class TextTable<kFlightColumns>;
extern template class TextTable<kPointColumns>;

/** What the map shows at a moment, as text: all flights, and the points of the selected one. Does
    not stop work on the map. Routes are indexes in the scene. */
class frmFlightTable : public Dialog {
  Q_OBJECT

 public:
  explicit frmFlightTable(const Services& services, QWidget* parent = nullptr);

  /** Shows a mission at a minute; `selected` and `point` are marked without a signal. */
  void Refresh(const MapTextSources& from, double minute, std::optional<std::size_t> selected,
               std::optional<std::size_t> point);

  QLabel* lblMoment;
  QTabWidget* tabTables;
  ReportList *lstFlights, *lstPoints;
  /** Copy, Close. */
  std::array<QPushButton*, 2> cmd;

 Q_SIGNALS:
  void FlightChosen(std::size_t route);
  void PointChosen(std::size_t route, std::size_t point);

 private:
  void Build();
  void Copy();
  void FlightRowChosen(const QModelIndex& current);
  void PointRowChosen(const QModelIndex& current);

  TextTable<kFlightColumns>* flights_;
  TextTable<kPointColumns>* points_;
  std::optional<std::size_t> selected_;
  bool isFilling_ = false;
};

}  // namespace rws
