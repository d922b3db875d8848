#include "map/forms/frmFlightTable.h"

#include <QHeaderView>
#include <QVBoxLayout>
#include <algorithm>

#include "controls/layouts.h"
#include "map/flight_clock.h"
#include "map/map_units.h"
#include "platform/qt_text.h"
#include "services/numbers.h"

namespace rws {

namespace {

bool BeginsWithNumber(const std::string& text) {
  const std::size_t place = text.front() == '-' ? 1 : 0;
  return place < text.size() && text[place] >= '0' && text[place] <= '9';
}

/** The sum of two metres and three kilometres is told by their units. */
double NumberOf(const std::string& text) {
  const double number = Val(text);
  return text.ends_with(" km") || text.ends_with(" miles") ? number * 1000 : number;
}

/** Below zero, zero, or above it, as the first comes before, with or behind the second. */
int Compared(const std::string& a, const std::string& b) {
  const bool isTime = a.find(':') != std::string::npos;
  if (BeginsWithNumber(a) && BeginsWithNumber(b) && !isTime) {
    const double first = NumberOf(a), second = NumberOf(b);
    if (first != second) return first < second ? -1 : 1;
  }
  return a.compare(b);
}

ReportList* List(const char* name, const QString& accessibleName, QAbstractItemModel* model) {
  auto* list = Named(new ReportList, name, accessibleName);
  list->setModel(model);
  list->setSelectionMode(QAbstractItemView::SingleSelection);
  list->header()->setSortIndicatorShown(true);
  list->header()->setSortIndicator(-1, Qt::AscendingOrder);
  list->header()->setSectionsClickable(true);
  list->header()->setToolTip(QObject::tr("Click to sort"));
  return list;
}

void Select(ReportList* list, int row) {
  if (row < 0)
    list->selectionModel()->clear();
  else if (list->CurrentRow() != row || list->SelectedRows() != QList<int>{row})
    list->SelectOnly(row);
}

/** As wide as the texts, once there are some. */
void FitColumns(ReportList* list, bool wasEmpty) {
  if (!wasEmpty) return;
  for (int i = 0; i < list->model()->columnCount(); ++i) list->resizeColumnToContents(i);
}

}  // namespace

template <std::size_t Columns>
void TextTable<Columns>::Order(std::vector<Row>& rows) const {
  if (by_ < 0) return;
  const auto column = static_cast<std::size_t>(by_);
  std::stable_sort(rows.begin(), rows.end(), [&](const Row& a, const Row& b) {
    const std::string &first = a.second[column], &second = b.second[column];
    if (first.empty() || second.empty()) return !first.empty() && second.empty();
    const int order = Compared(first, second);
    return descending_ ? order > 0 : order < 0;
  });
}

template <std::size_t Columns>
void TextTable<Columns>::SetTexts(std::vector<Texts> texts) {
  std::vector<Row> rows;
  rows.reserve(texts.size());
  for (auto& each : texts) rows.emplace_back(rows.size(), std::move(each));
  Order(rows);
  if (rows.empty() || rows.size() != this->rows_.size()) return this->SetRows(std::move(rows));
  this->rows_ = std::move(rows);
  Q_EMIT this->dataChanged(this->index(0, 0), this->index(this->rowCount() - 1, int(Columns) - 1));
}

template <std::size_t Columns>
void TextTable<Columns>::sort(int column, Qt::SortOrder order) {
  by_ = column < int(Columns) ? column : -1;
  descending_ = order == Qt::DescendingOrder;
  auto rows = this->rows_;
  Order(rows);
  this->SetRows(std::move(rows));
}

template <std::size_t Columns>
int TextTable<Columns>::PlaceOf(std::size_t number) const {
  const auto row = std::find_if(this->rows_.begin(), this->rows_.end(),
                                [&](const Row& each) { return each.first == number; });
  return row == this->rows_.end() ? -1 : static_cast<int>(row - this->rows_.begin());
}

template <std::size_t Columns>
std::string TextTable<Columns>::Copied() const {
  std::vector<Texts> texts;
  for (const auto& row : this->rows_) texts.push_back(row.second);
  return TabbedText(headings_, texts);
}

template <std::size_t Columns>
QVariant TextTable<Columns>::data(const QModelIndex& index, int role) const {
  const Row* row = this->RowOf(index);
  if (!row || role != Qt::DisplayRole) return {};
  return QString::fromStdString(row->second[static_cast<std::size_t>(index.column())]);
}

template <std::size_t Columns>
QVariant TextTable<Columns>::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole || orientation != Qt::Horizontal) return {};
  return QString::fromStdString(headings_[static_cast<std::size_t>(section)]);
}

template class TextTable<kFlightColumns>;
template class TextTable<kPointColumns>;

frmFlightTable::frmFlightTable(const Services& services, QWidget* parent)
    : Dialog(services, "frmFlightTable", parent) {
  setModal(false);
  Build();
  const auto sorts = [this](ReportList* list, const char* name, const auto& mark) {
    On(list->header(), &QHeaderView::sortIndicatorChanged, name,
       [this, list, mark](int column, Qt::SortOrder order) {
         isFilling_ = true;
         list->model()->sort(column, order);
         mark();
         isFilling_ = false;
       });
  };
  sorts(lstFlights, "lstFlights_Sort",
        [this] { Select(lstFlights, selected_ ? flights_->PlaceOf(*selected_) : -1); });
  sorts(lstPoints, "lstPoints_Sort", [] {});
  On(lstFlights->selectionModel(), &QItemSelectionModel::currentRowChanged, "lstFlights_Click",
     [this](const QModelIndex& current, const QModelIndex&) { FlightRowChosen(current); });
  On(lstPoints->selectionModel(), &QItemSelectionModel::currentRowChanged, "lstPoints_Click",
     [this](const QModelIndex& current, const QModelIndex&) { PointRowChosen(current); });
  On(cmd[0], &QPushButton::clicked, "cmd_Click", [this] { Copy(); });
  On(cmd[1], &QPushButton::clicked, "cmd_Click", [this] { close(); });
}

void frmFlightTable::Build() {
  setWindowTitle(tr("Flights at a moment"));
  flights_ = new TextTable<kFlightColumns>(FlightHeadings(), this);
  points_ = new TextTable<kPointColumns>(PointHeadings(), this);
  lblMoment = Named(new QLabel, "lblMoment", tr("Time of the mission"));
  lblMoment->setTextFormat(Qt::PlainText);
  lstFlights = List("lstFlights", tr("Flights"), flights_);
  lstPoints = List("lstPoints", tr("Waypoints of the selected flight"), points_);
  tabTables = Named(new QTabWidget, "tabTables", tr("Tables"));
  tabTables->addTab(lstFlights, tr("&Flights"));
  tabTables->addTab(lstPoints, tr("&Waypoints"));
  cmd = {Button("cmd(0)", tr("&Copy"), tr("Copy the table as text")),
         Button("cmd(1)", tr("C&lose"), tr("Close window and Exit"))};
  for (auto* button : cmd) button->setAutoDefault(false);
  auto* whole = new QVBoxLayout(this);
  whole->addWidget(lblMoment);
  whole->addWidget(tabTables, 1);
  whole->addLayout(ButtonRow({cmd[0], cmd[1]}));
  constexpr int kLetters = 150, kLines = 24;
  resize(fontMetrics().averageCharWidth() * kLetters, fontMetrics().lineSpacing() * kLines);
}

void frmFlightTable::Refresh(const MapTextSources& from, double minute,
                             std::optional<std::size_t> selected,
                             std::optional<std::size_t> point) {
  const auto& routes = from.Model.Scene.Routes;
  isFilling_ = true;
  const bool noFlights = flights_->rowCount() == 0, noPoints = points_->rowCount() == 0;
  selected_ = selected && *selected < routes.size() ? selected : std::nullopt;
  lblMoment->setText(QString::fromStdString(TimeOfDay(from.Model.Time, minute) + ", " +
                                            MinutesText(minute) + " after the mission's start"));
  flights_->SetTexts(FlightTable(from, minute));
  points_->SetTexts(selected_ ? PointTable(from, *selected_) : std::vector<PointTexts>());
  FitColumns(lstFlights, noFlights);
  FitColumns(lstPoints, noPoints);
  tabTables->setTabText(1, selected_
                               ? tr("&Waypoints of %1")
                                     .arg(FromBytes(services_.Page, routes[*selected_].Name)
                                              .replace(QLatin1Char('&'), QStringLiteral("&&")))
                               : tr("&Waypoints"));
  Select(lstFlights, selected_ ? flights_->PlaceOf(*selected_) : -1);
  Select(lstPoints, point ? points_->PlaceOf(*point) : -1);
  isFilling_ = false;
}

void frmFlightTable::Copy() {
  const bool isFlights = tabTables->currentWidget() == lstFlights;
  services_.System.SetClipboard(isFlights ? flights_->Copied() : points_->Copied());
}

void frmFlightTable::FlightRowChosen(const QModelIndex& current) {
  if (isFilling_ || !current.isValid()) return;
  selected_ = flights_->Rows()[static_cast<std::size_t>(current.row())].first;
  Q_EMIT FlightChosen(*selected_);
}

void frmFlightTable::PointRowChosen(const QModelIndex& current) {
  if (isFilling_ || !current.isValid() || !selected_) return;
  Q_EMIT PointChosen(*selected_, points_->Rows()[static_cast<std::size_t>(current.row())].first);
}

}  // namespace rws
