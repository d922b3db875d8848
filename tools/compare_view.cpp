#include "tools/compare_view.h"

#include <QAction>
#include <QEvent>
#include <QFontDatabase>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QTextLayout>
#include <QVBoxLayout>
#include <algorithm>
#include <functional>
#include <utility>

#include "controls/layouts.h"
#include "platform/qt_text.h"

namespace rws {

namespace {

/** The lit row shows in the column of the numbers; the text keeps the colour of its difference, and
    words that differ lie on a stronger one and are underlined. */
class SideDelegate : public QStyledItemDelegate {
 public:
  SideDelegate(const CompareModel& model, QObject* parent)
      : QStyledItemDelegate(parent), model_(model) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override {
    const auto marks = model_.Marks(index);
    if (marks.empty()) return QStyledItemDelegate::paint(painter, option, index);
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    const QString text = std::exchange(cell.text, QString());
    const QStyle* style = cell.widget->style();
    style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget);
    // Where the style puts the text of a cell.
    const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, cell.widget) + 1;
    const QRect place =
        style->subElementRect(QStyle::SE_ItemViewItemText, &cell, cell.widget).isEmpty()
            ? cell.rect
            : cell.rect.adjusted(margin, 0, -margin, 0);
    DrawMarked(*painter, text, marks, cell, place);
  }

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    if (CompareModel::IsText(index.column()))
      option->state &= ~(QStyle::State_Selected | QStyle::State_HasFocus);
  }

 private:
  void DrawMarked(QPainter& painter, const QString& text, const std::vector<LetterSpan>& marks,
                  const QStyleOptionViewItem& cell, const QRect& place) const {
    QTextCharFormat format;
    format.setBackground(model_.MarkColor());
    format.setFontUnderline(true);
    QList<QTextLayout::FormatRange> ranges;
    for (const auto& mark : marks) ranges.push_back({mark.First, mark.Count, format});
    QTextLayout layout(text, cell.font);
    QTextOption plain;
    plain.setWrapMode(QTextOption::NoWrap);
    layout.setTextOption(plain);
    layout.setFormats(ranges);
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    painter.save();
    painter.setClipRect(cell.rect);
    painter.setPen(cell.palette.color(QPalette::Text));
    layout.draw(&painter,
                QPointF(place.left(), place.top() + (place.height() - line.height()) / 2));
    painter.restore();
  }

  const CompareModel& model_;
};

/** One of the two lists. Return opens a folded row also where the desktop does not count it as an
    activation. */
class SideView : public QTableView {
 public:
  using QTableView::QTableView;

  std::function<void()> Resized;

  /** Up and down only: a text is wider than the view, and a click on it would move it. */
  void scrollTo(const QModelIndex& index, ScrollHint hint) override {
    const int left = horizontalScrollBar()->value();
    QTableView::scrollTo(index, hint);
    horizontalScrollBar()->setValue(left);
  }

 protected:
  void resizeEvent(QResizeEvent* event) override {
    QTableView::resizeEvent(event);
    if (Resized) Resized();
  }
  void keyPressEvent(QKeyEvent* event) override {
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && currentIndex().isValid()) {
      Q_EMIT doubleClicked(currentIndex());
      return;
    }
    if (event->key() == Qt::Key_Left || event->key() == Qt::Key_Right) {
      horizontalScrollBar()->triggerAction(event->key() == Qt::Key_Left
                                               ? QAbstractSlider::SliderSingleStepSub
                                               : QAbstractSlider::SliderSingleStepAdd);
      return;
    }
    // Home and End go to the ends of the text; the view alone would go to those of the row.
    if (event->key() == Qt::Key_Home || event->key() == Qt::Key_End) {
      const int row = event->key() == Qt::Key_Home ? 0 : model()->rowCount() - 1;
      setCurrentIndex(model()->index(row, currentIndex().column()));
      return;
    }
    QTableView::keyPressEvent(event);
  }
};

}  // namespace

CompareView::CompareView(const CodePage& page, QWidget* parent)
    : QWidget(parent), Model(page, this) {
  Build();
  Connect();
}

QTableView* CompareView::MakeSide(CompareModel::Column number, const char* name) {
  auto* list = Named(new SideView, name);
  list->Resized = [this] { FitColumns(); };
  list->setModel(&Model);
  list->setItemDelegate(new SideDelegate(Model, list));
  for (int column = 0; column < CompareModel::kColumns; ++column)
    list->setColumnHidden(column, CompareModel::SideOf(column) != CompareModel::SideOf(number));
  // Beside the number, where it stays in sight when the lines are long.
  list->horizontalHeader()->moveSection(CompareModel::kLabel, CompareModel::kNewText);
  list->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  list->setSelectionBehavior(QAbstractItemView::SelectRows);
  list->setSelectionMode(QAbstractItemView::SingleSelection);
  list->setEditTriggers(QAbstractItemView::NoEditTriggers);
  list->setTabKeyNavigation(false);
  list->setShowGrid(false);
  list->setWordWrap(false);
  list->setTextElideMode(Qt::ElideNone);
  list->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  list->horizontalHeader()->hide();
  list->horizontalHeader()->setMinimumSectionSize(1);
  list->verticalHeader()->hide();
  list->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  list->verticalHeader()->setMinimumSectionSize(1);
  const QFontMetrics metrics(list->font());
  list->verticalHeader()->setDefaultSectionSize(metrics.height() + 2);
  constexpr int kLeastLetters = 30, kLeastRows = 6;
  list->setMinimumSize(metrics.averageCharWidth() * kLeastLetters, metrics.height() * kLeastRows);
  return list;
}

void CompareView::Build() {
  lstSide = {MakeSide(CompareModel::kOldNumber, "lstSide(0)"),
             MakeSide(CompareModel::kNewNumber, "lstSide(1)")};
  lstSide[1]->setSelectionModel(lstSide[0]->selectionModel());
  for (auto& label : lblSide) {
    label = new QLabel;
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
  }
  NameEach(lblSide, "lblSide");
  lblCounts = Named(new QLabel, "lblCounts");
  lblPlace = Named(new QLabel, "lblPlace");
  cmdGo = {Button("cmdGo(0)", tr("&Previous Difference"), tr("Alt+Up")),
           Button("cmdGo(1)", tr("&Next Difference"), tr("Alt+Down"))};
  PlaceControls();
}

void CompareView::PlaceControls() {
  auto* sides = new QGridLayout;
  for (int side = 0; side < std::ssize(lstSide); ++side) {
    const auto index = static_cast<std::size_t>(side);
    sides->addWidget(lblSide[index], 0, side, Qt::AlignBottom);
    sides->addWidget(lstSide[index], 1, side);
    sides->setColumnStretch(side, 1);
  }
  sides->setRowStretch(1, 1);
  auto* below = new QHBoxLayout;
  below->addWidget(lblCounts, 1);
  below->addWidget(lblPlace);
  for (auto* button : cmdGo) {
    button->setAutoDefault(false);
    below->addWidget(button);
  }
  auto* whole = new QVBoxLayout(this);
  whole->setContentsMargins(0, 0, 0, 0);
  whole->addLayout(sides, 1);
  whole->addLayout(below);
  TabOrder({lstSide[0], lstSide[1], cmdGo[kPrevious], cmdGo[kNext]});
}

void CompareView::Connect() {
  for (const bool forward : {false, true}) {
    connect(cmdGo[forward ? kNext : kPrevious], &QPushButton::clicked, this,
            [this, forward] { Go(forward); });
    auto* key = new QAction(this);
    key->setShortcut(Qt::ALT | (forward ? Qt::Key_Down : Qt::Key_Up));
    key->setShortcutContext(Qt::WindowShortcut);
    connect(key, &QAction::triggered, this, [this, forward] { Go(forward); });
    addAction(key);
  }
  for (auto* list : lstSide) {
    auto* other = lstSide[list == lstSide[0] ? 1 : 0];
    connect(list, &QTableView::doubleClicked, this, &CompareView::Open);
    connect(list->verticalScrollBar(), &QScrollBar::valueChanged, other->verticalScrollBar(),
            &QScrollBar::setValue);
    connect(list->horizontalScrollBar(), &QScrollBar::valueChanged, other->horizontalScrollBar(),
            &QScrollBar::setValue);
  }
  connect(lstSide[0]->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          &CompareView::ShowPlace);
}

void CompareView::SetCaptions(const QString& before, const QString& after) {
  const std::array<QString, 2> captions{before, after};
  for (std::size_t side = 0; side < captions.size(); ++side) {
    lblSide[side]->setText(captions[side]);
    lstSide[side]->setAccessibleName(captions[side]);
  }
}

void CompareView::SetTexts(std::string before, std::string after) {
  Model.SetTexts(std::move(before), std::move(after));
  lblCounts->setText(FromPath(DifferenceText(Model.Counts(), Model.SameBytes())));
  const auto starts = DifferenceRows(Model.Rows());
  for (auto* button : cmdGo) button->setEnabled(!starts.empty());
  RowsChanged();
  Select(starts.empty() ? 0 : static_cast<int>(starts[0]));
  ShowPlace();
}

int CompareView::CurrentRow() const { return lstSide[0]->currentIndex().row(); }

void CompareView::Select(int row) {
  const QModelIndex index =
      Model.index(std::min(row, Model.rowCount() - 1), CompareModel::kOldText);
  if (!index.isValid()) return;
  lstSide[0]->selectionModel()->setCurrentIndex(
      index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  for (const int column : {CompareModel::kOldNumber, CompareModel::kNewNumber}) {
    auto* list = lstSide[CompareModel::SideOf(column)];
    list->scrollTo(Model.index(row, column), QAbstractItemView::PositionAtCenter);
    list->horizontalScrollBar()->setValue(0);
  }
}

void CompareView::Go(bool forward) {
  const auto starts = DifferenceRows(Model.Rows());
  if (starts.empty()) return;
  const auto row = static_cast<std::size_t>(std::max(CurrentRow(), 0));
  const auto behind = std::upper_bound(starts.begin(), starts.end(), row);
  const auto here = std::lower_bound(starts.begin(), starts.end(), row);
  if (forward) return Select(static_cast<int>(behind == starts.end() ? starts.front() : *behind));
  Select(static_cast<int>(here == starts.begin() ? starts.back() : *(here - 1)));
}

void CompareView::Open(const QModelIndex& index) {
  const int row = index.row();
  if (!Model.Unfold(row)) return;
  RowsChanged();
  lstSide[0]->selectionModel()->setCurrentIndex(
      Model.index(row, index.column()),
      QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

void CompareView::ShowPlace() {
  const auto& rows = Model.Rows();
  const int row = CurrentRow();
  const auto starts = DifferenceRows(rows);
  QString place;
  if (row >= 0 && rows[static_cast<std::size_t>(row)].Kind != HunkKind::Same) {
    const auto behind =
        std::upper_bound(starts.begin(), starts.end(), static_cast<std::size_t>(row));
    place = tr("Difference %1 of %2").arg(behind - starts.begin()).arg(starts.size());
  } else if (!starts.empty()) {
    place = starts.size() == 1 ? tr("1 difference") : tr("%1 differences").arg(starts.size());
  }
  lblPlace->setText(place);
}

void CompareView::FitColumns() {
  const int letter = QFontMetrics(lstSide[0]->font()).averageCharWidth();
  const int number = (Model.LongestNumber() + 3) * letter;
  constexpr int kLabelLetters = 12;
  const int label = Model.LabelOf ? kLabelLetters * letter : 0;
  lstSide[1]->setColumnHidden(CompareModel::kLabel, label == 0);
  for (auto* list : lstSide) {
    const int before = number + (list == lstSide[1] ? label : 0);
    const int text =
        std::max((Model.LongestLine() + 2) * letter, list->viewport()->width() - before);
    for (int column = 0; column < CompareModel::kColumns; ++column)
      list->setColumnWidth(column, CompareModel::IsText(column) ? text : number);
    list->setColumnWidth(CompareModel::kLabel, label);
  }
}

void CompareView::RowsChanged() {
  FitColumns();
  // At once: a side whose scroll bar did not know of its rows yet would hold the other one back.
  for (auto* list : lstSide) list->doItemsLayout();
}

void CompareView::ShowColors() {
  const QPalette& colors = lstSide[0]->palette();
  Model.SetDark(colors.color(QPalette::Base).lightness() <
                colors.color(QPalette::Text).lightness());
}

void CompareView::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) ShowColors();
}

void CompareView::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  ShowColors();
  if (CurrentRow() >= 0) Select(CurrentRow());
}

}  // namespace rws
