#pragma once

#include <QAbstractTableModel>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <array>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "services/code_page.h"
#include "tools/logic/change_rows.h"
#include "tools/logic/compare_rows.h"

namespace rws {

/** A stretch of the letters that a cell shows. */
struct LetterSpan {
  int First, Count;
};

/** Rows of two texts side by side. Columns: number and text of the old line, then of the new one,
    and last whose doing a difference is. A line is decoded when it is shown. */
class CompareModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { kOldNumber, kOldText, kNewNumber, kNewText, kLabel, kColumns };
  /** 0 for the old text and 1 for the new one. */
  static std::size_t SideOf(int column) { return column < kNewNumber ? 0 : 1; }
  static bool IsText(int column) { return column == kOldText || column == kNewText; }

  /** What the last column says of a row; without it that column is not shown. */
  std::function<ChangeLabel(const CompareRow& row, std::string_view newLine)> LabelOf;

  CompareModel(const CodePage& page, QObject* parent) : QAbstractTableModel(parent), page_(page) {}

  void SetTexts(std::string before, std::string after);
  /** Puts the rows that a folded row hides in its place; false for any other row. */
  bool Unfold(int row);
  /** Light or dark colours, by what is behind the text. */
  void SetDark(bool dark);
  /** Behind the words of a changed line that differ. */
  QColor MarkColor() const;

  const std::vector<CompareRow>& Rows() const { return rows_; }
  const DiffCounts& Counts() const { return counts_; }
  bool SameBytes() const { return sameBytes_; }
  /** The line of a row on a side; "" where it has none. */
  std::string_view LineOf(const CompareRow& row, std::size_t side) const;
  /** The words of a cell that differ from those beside it. */
  std::vector<LetterSpan> Marks(const QModelIndex& index) const;
  /** Characters of the longest line that is shown, and of the highest line number. */
  int LongestLine() const;
  int LongestNumber() const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;

 private:
  QString Number(const CompareRow& row, int column) const;
  QString Text(const CompareRow& row, int column) const;
  QString Label(const CompareRow& row) const;
  std::vector<ByteSpan> ChangedSpans(const CompareRow& row, std::size_t side) const;
  /** What a screen reader says: the colours in words. */
  QString Spoken(const CompareRow& row, int column) const;

  const CodePage& page_;
  std::array<std::string, 2> texts_;
  /** Views into the texts. */
  std::array<std::vector<std::string_view>, 2> lines_;
  std::vector<CompareRow> rows_;
  DiffCounts counts_;
  bool sameBytes_ = true, dark_ = false;
};

/** Shows two texts side by side: equal lines beside each other, long stretches of them folded to a
    row that Return or a double click opens; what was added, has gone or has changed in colours and
    with a sign; in a changed line the words that differ are marked. Both sides scroll together.
   Alt+Down and Alt+Up go from difference to difference.
 */
class CompareView : public QWidget {
  Q_OBJECT

 public:
  explicit CompareView(const CodePage& page, QWidget* parent = nullptr);

  /** What stands over the sides. */
  void SetCaptions(const QString& before, const QString& after);
  /** Shows two texts of mission bytes and goes to their first difference. */
  void SetTexts(std::string before, std::string after);
  /** Goes to the difference behind the row that is lit, or before it; from the last one on to the
      first. */
  void Go(bool forward);
  int CurrentRow() const;
  /** Goes to a row, or to the last one. */
  void Select(int row);

  CompareModel Model;
  std::array<QLabel*, 2> lblSide;
  std::array<QTableView*, 2> lstSide{};
  /** What differs, and which difference is lit. */
  QLabel *lblCounts, *lblPlace;
  enum Command : std::size_t { kPrevious, kNext };
  std::array<QPushButton*, 2> cmdGo;

 protected:
  void changeEvent(QEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void Build();
  QTableView* MakeSide(CompareModel::Column number, const char* name);
  void Connect();
  void PlaceControls();
  void FitColumns();
  void RowsChanged();
  void ShowColors();
  void ShowPlace();
  void Open(const QModelIndex& index);
};

}  // namespace rws
