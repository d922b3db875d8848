#include <QBrush>
#include <QFont>
#include <algorithm>

#include "platform/qt_text.h"
#include "services/numbers.h"
#include "tools/compare_view.h"

namespace rws {

namespace {

/** A longer line would be drawn for seconds; no mission has one. */
constexpr std::size_t kLongestShown = 2000;

enum Look { kAdded, kGone, kChanged, kAbsent, kFolded, kLooks };

struct Colors {
  QColor Ground, Text;
};

const Colors& ColorsOf(Look look, bool dark) {
  static const Colors kLight[kLooks] = {{QColor(0xd7, 0xf5, 0xdd), QColor(0x0a, 0x3d, 0x18)},
                                        {QColor(0xfd, 0xe0, 0xdd), QColor(0x6b, 0x0f, 0x0a)},
                                        {QColor(0xff, 0xf1, 0xc9), QColor(0x4d, 0x38, 0x00)},
                                        {QColor(0xe9, 0xe9, 0xe9), QColor(0x50, 0x50, 0x50)},
                                        {QColor(0xe3, 0xec, 0xf8), QColor(0x24, 0x45, 0x70)}};
  static const Colors kDark[kLooks] = {{QColor(0x1d, 0x44, 0x28), QColor(0xd3, 0xf7, 0xdc)},
                                       {QColor(0x5a, 0x23, 0x20), QColor(0xff, 0xdc, 0xd8)},
                                       {QColor(0x4f, 0x43, 0x0f), QColor(0xff, 0xf0, 0xbf)},
                                       {QColor(0x38, 0x38, 0x3c), QColor(0xb0, 0xb0, 0xb0)},
                                       {QColor(0x27, 0x36, 0x4d), QColor(0xcf, 0xe0, 0xfa)}};
  return (dark ? kDark : kLight)[look];
}

QColor MarkColorOf(bool dark) { return dark ? QColor(0x8a, 0x6d, 0x10) : QColor(0xff, 0xcf, 0x5c); }

std::size_t IndexOf(const CompareRow& row, std::size_t side) {
  return side == 0 ? row.Old : row.New;
}

/** The look of a cell; none of an equal line. */
Look LookOf(const CompareRow& row, int column) {
  if (row.Folded > 0) return kFolded;
  if (row.Kind == HunkKind::Same) return kLooks;
  // Of a line that has gone it is still to be told whose doing that is.
  const bool isAbsent = IndexOf(row, CompareModel::SideOf(column)) == CompareRow::kNoLine;
  if (isAbsent && column != CompareModel::kLabel) return kAbsent;
  if (row.Kind == HunkKind::Changed) return kChanged;
  return row.Kind == HunkKind::Added ? kAdded : kGone;
}

QString SignOf(Look look) {
  switch (look) {
    case kAdded:
      return QStringLiteral("+");
    case kGone:
      return QStringLiteral("-");
    case kChanged:
      return QStringLiteral("~");
    default:
      return QStringLiteral(" ");
  }
}

}  // namespace

void CompareModel::SetTexts(std::string before, std::string after) {
  beginResetModel();
  texts_ = {std::move(before), std::move(after)};
  sameBytes_ = texts_[0] == texts_[1];
  for (std::size_t side = 0; side < texts_.size(); ++side) lines_[side] = SplitLines(texts_[side]);
  const auto hunks = DiffLines(lines_[0], lines_[1]);
  counts_ = CountDifferences(hunks);
  rows_ = MakeCompareRows(hunks);
  endResetModel();
}

bool CompareModel::Unfold(int row) {
  if (row < 0 || row >= rowCount()) return false;
  const auto at = static_cast<std::size_t>(row);
  const CompareRow folded = rows_[at];
  if (folded.Folded == 0) return false;
  const auto hidden = HiddenRows(folded);
  rows_[at] = hidden[0];
  Q_EMIT dataChanged(index(row, 0), index(row, kColumns - 1));
  beginInsertRows({}, row + 1, row + static_cast<int>(hidden.size()) - 1);
  rows_.insert(rows_.begin() + row + 1, hidden.begin() + 1, hidden.end());
  endInsertRows();
  return true;
}

void CompareModel::SetDark(bool dark) {
  if (dark == dark_) return;
  dark_ = dark;
  if (rowCount() > 0) Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, kColumns - 1));
}

QColor CompareModel::MarkColor() const { return MarkColorOf(dark_); }

std::string_view CompareModel::LineOf(const CompareRow& row, std::size_t side) const {
  const std::size_t line = IndexOf(row, side);
  return line == CompareRow::kNoLine ? std::string_view() : lines_[side][line];
}

std::vector<ByteSpan> CompareModel::ChangedSpans(const CompareRow& row, std::size_t side) const {
  if (row.Kind != HunkKind::Changed) return {};
  const auto shown = [&](std::size_t of) { return LineOf(row, of).substr(0, kLongestShown); };
  const ChangedWords words = FindChangedWords(shown(0), shown(1));
  return side == 0 ? words.Old : words.New;
}

std::vector<LetterSpan> CompareModel::Marks(const QModelIndex& index) const {
  std::vector<LetterSpan> marks;
  if (!index.isValid() || !IsText(index.column())) return marks;
  const CompareRow& row = rows_[static_cast<std::size_t>(index.row())];
  // A byte is a letter.
  for (const auto& span : ChangedSpans(row, SideOf(index.column())))
    marks.push_back({static_cast<int>(span.First), static_cast<int>(span.Count)});
  return marks;
}

int CompareModel::LongestLine() const {
  std::size_t longest = 0;
  for (const auto& row : rows_) {
    if (row.Folded > 0) continue;
    if (row.Old != CompareRow::kNoLine) longest = std::max(longest, lines_[0][row.Old].size());
    if (row.New != CompareRow::kNoLine) longest = std::max(longest, lines_[1][row.New].size());
  }
  return static_cast<int>(std::min(longest, kLongestShown));
}

int CompareModel::LongestNumber() const {
  const auto most = std::max(lines_[0].size(), lines_[1].size());
  return static_cast<int>(GroupedNumber(most).size());
}

int CompareModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int CompareModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kColumns;
}

QString CompareModel::Number(const CompareRow& row, int column) const {
  const std::size_t line = IndexOf(row, SideOf(column));
  if (row.Folded > 0 || line == CompareRow::kNoLine) return {};
  return FromPath(GroupedNumber(line + 1)) + QLatin1Char(' ') + SignOf(LookOf(row, column));
}

QString CompareModel::Text(const CompareRow& row, int column) const {
  if (row.Folded > 0) return tr("... %1 equal lines ...").arg(FromPath(GroupedNumber(row.Folded)));
  const std::string_view bytes = LineOf(row, SideOf(column));
  const QString text = FromBytes(page_, bytes.substr(0, kLongestShown));
  return bytes.size() > kLongestShown ? text + QStringLiteral(" ...") : text;
}

QString CompareModel::Label(const CompareRow& row) const {
  const ChangeLabel label =
      LabelOf && row.Kind != HunkKind::Same ? LabelOf(row, LineOf(row, 1)) : ChangeLabel::None;
  if (label == ChangeLabel::None) return {};
  return label == ChangeLabel::Edit ? tr("your edit") : tr("rewritten");
}

QString CompareModel::Spoken(const CompareRow& row, int column) const {
  const QString label = Label(row);
  const QString whose = label.isEmpty() ? label : QStringLiteral(", ") + label;
  const std::size_t side = SideOf(column);
  const std::string words = WordsOf(LineOf(row, side), ChangedSpans(row, side));
  switch (LookOf(row, column)) {
    case kAdded:
      return tr("added%1: %2").arg(whose, Text(row, column));
    case kGone:
      return tr("gone%1: %2").arg(whose, Text(row, column));
    case kChanged:
      if (words.empty()) return tr("changed%1: %2").arg(whose, Text(row, column));
      return tr("changed%1: %2; what differs: %3")
          .arg(whose, Text(row, column), FromBytes(page_, words));
    case kAbsent:
      return tr("no line here");
    default:
      return Text(row, column);
  }
}

QVariant CompareModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rowCount()) return {};
  const CompareRow& row = rows_[static_cast<std::size_t>(index.row())];
  const Look look = LookOf(row, index.column());
  const bool isNumber = !IsText(index.column()) && index.column() != kLabel;
  switch (role) {
    case Qt::DisplayRole:
      if (index.column() == kLabel) return Label(row);
      return IsText(index.column()) ? Text(row, index.column()) : Number(row, index.column());
    case Qt::AccessibleTextRole:
      if (index.column() == kLabel) return Label(row);
      return IsText(index.column()) ? Spoken(row, index.column()) : Number(row, index.column());
    case Qt::ToolTipRole:
      return look == kFolded ? tr("Double-click or Return shows these lines") : QVariant();
    case Qt::TextAlignmentRole:
      return static_cast<int>((isNumber ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    case Qt::BackgroundRole:
      return look == kLooks ? QVariant() : QBrush(ColorsOf(look, dark_).Ground);
    case Qt::ForegroundRole:
      return look == kLooks ? QVariant() : QBrush(ColorsOf(look, dark_).Text);
    default:
      return {};
  }
}

}  // namespace rws
