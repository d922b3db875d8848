#include "map/forms/briefing_pdf.h"

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QCoreApplication>
#include <QLocale>
#include <QPdfWriter>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextTable>
#include <algorithm>

#include "platform/qt_text.h"
#include "services/faults.h"

namespace rws {

namespace {

constexpr int kDots = 600;          // per inch
constexpr double kScreenDots = 96;  // what the map is painted for
constexpr double kMargin = 15;      // millimetres
constexpr double kLetters = 9.5, kTableLetters = 7.5, kTitleLetters = 17, kCaptionLetters = 12;
constexpr double kMapShare = 0.5;   // of the first page
constexpr double kMapRatio = 0.75;  // height by width

/** One run of pages. */
class Pages {
 public:
  Pages(QIODevice& device, const BriefingPages& what) : what_(what), writer_(&device) {
    const bool isLetter = QLocale().measurementSystem() == QLocale::ImperialUSSystem;
    writer_.setPageSize(QPageSize(isLetter ? QPageSize::Letter : QPageSize::A4));
    writer_.setPageMargins(QMarginsF(kMargin, kMargin, kMargin, kMargin), QPageLayout::Millimeter);
    writer_.setResolution(kDots);
    writer_.setTitle(what.Title);
    page_ = QSizeF(writer_.width(), writer_.height());
    foot_ = Points(kLetters * 2);
    Fill();
  }

  /** False when the writer refused. */
  bool Write() {
    QPainter painter;
    if (!painter.begin(&writer_)) return false;
    const int count = document_.pageCount();
    for (int i = 0; i < count; ++i) {
      if (i > 0 && !writer_.newPage()) return false;
      WritePage(painter, i);
      if (i == 0) PaintMap(painter);
      WriteFoot(painter, i + 1, count);
    }
    return painter.end();
  }

 private:
  static double Points(double points) { return points * kDots / 72; }

  static QTextCharFormat Letters(double points, bool bold = false) {
    QTextCharFormat format;
    format.setFontPointSize(points);
    format.setFontWeight(bold ? QFont::Bold : QFont::Normal);
    format.setForeground(Qt::black);
    return format;
  }

  void Fill() {
    QFont font;
    font.setPointSizeF(kLetters);
    document_.setUndoRedoEnabled(false);
    document_.setDefaultFont(font);
    document_.setDocumentMargin(0);
    document_.documentLayout()->setPaintDevice(&writer_);
    document_.setPageSize(QSizeF(page_.width(), page_.height() - foot_));
    QTextCursor cursor(&document_);
    // Laid out once, at the end: a table by itself would be at each of its cells.
    cursor.beginEditBlock();
    cursor.insertText(what_.Title, Letters(kTitleLetters, true));
    if (!what_.Subtitle.isEmpty()) AddBlock(cursor, what_.Subtitle, Letters(kLetters), 2);
    if (what_.Map) {
      mapHeight_ = std::min(page_.width() * kMapRatio, page_.height() * kMapShare);
      AddBlock(cursor, {}, Letters(1), 0);
      mapBlock_ = cursor.block();
      // The gap that the map is painted into; one line of it is the block's own.
      QTextBlockFormat gap;
      gap.setLineHeight(mapHeight_ * ScreenShare(), QTextBlockFormat::FixedHeight);
      gap.setTopMargin(6);
      cursor.setBlockFormat(gap);
    }
    for (const auto& table : what_.Tables) AddTable(cursor, table);
    AddText(cursor);
    cursor.endEditBlock();
    KeepCaptions();
  }

  int PageOf(const QTextBlock& block) const {
    const QRectF place = document_.documentLayout()->blockBoundingRect(block);
    return static_cast<int>(place.bottom() / document_.pageSize().height());
  }

  /** A caption goes to the page on which its table begins. */
  void KeepCaptions() {
    for (const auto& [caption, first] : captions_) {
      if (PageOf(caption) == PageOf(first)) continue;
      QTextCursor cursor(caption);
      QTextBlockFormat format = cursor.blockFormat();
      format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
      cursor.setBlockFormat(format);
    }
  }

  /** The layout takes lengths of formats as those of the screen. */
  static double ScreenShare() { return kScreenDots / kDots; }

  static void AddBlock(QTextCursor& cursor, const QString& text, const QTextCharFormat& letters,
                       double above) {
    QTextBlockFormat format;
    format.setTopMargin(above);
    cursor.insertBlock(format, letters);
    cursor.insertText(text, letters);
  }

  void AddTable(QTextCursor& cursor, const BriefingTable& table) {
    AddBlock(cursor, table.Caption, Letters(kCaptionLetters, true), 12);
    const QTextBlock caption = cursor.block();
    const auto columns = static_cast<int>(table.Headings.size());
    if (table.Rows.empty() || columns == 0) return;
    QTextTableFormat format;
    format.setHeaderRowCount(1);
    format.setCellPadding(2);
    format.setCellSpacing(0);
    format.setBorderCollapse(true);
    format.setBorder(1);
    format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
    format.setBorderBrush(Qt::gray);
    format.setWidth(QTextLength(QTextLength::PercentageLength, 100));
    cursor.insertBlock({}, Letters(2));
    QTextTable* grid = cursor.insertTable(static_cast<int>(table.Rows.size()) + 1, columns, format);
    const auto fill = [&](int row, const QStringList& texts, bool bold) {
      for (int i = 0; i < columns; ++i) {
        QTextCursor cell = grid->cellAt(row, i).firstCursorPosition();
        // An empty cell is as high as its letters would be.
        cell.setBlockCharFormat(Letters(kTableLetters));
        cell.insertText(texts.value(i), Letters(kTableLetters, bold));
      }
    };
    fill(0, table.Headings, true);
    for (std::size_t i = 0; i < table.Rows.size(); ++i) fill(int(i) + 1, table.Rows[i], false);
    captions_.emplace_back(caption, grid->cellAt(1, 0).firstCursorPosition().block());
    cursor.movePosition(QTextCursor::End);
  }

  void AddText(QTextCursor& cursor) {
    QString text = what_.Text;
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    if (text.trimmed().isEmpty()) return;
    AddBlock(cursor, QCoreApplication::translate("BriefingPages", "Briefing"),
             Letters(kCaptionLetters, true), 12);
    const QTextBlock caption = cursor.block();
    for (const auto& line : text.split(QLatin1Char('\n')))
      AddBlock(cursor, line, Letters(kLetters), 2);
    captions_.emplace_back(caption, caption.next());
  }

  void WritePage(QPainter& painter, int page) {
    const QSizeF size = document_.pageSize();
    const QRectF seen(0, page * size.height(), size.width(), size.height());
    painter.save();
    painter.translate(0, -seen.top());
    painter.setClipRect(seen);
    QAbstractTextDocumentLayout::PaintContext context;
    context.clip = seen;
    context.palette.setColor(QPalette::Text, Qt::black);
    document_.documentLayout()->draw(&painter, context);
    painter.restore();
  }

  void PaintMap(QPainter& painter) {
    if (!what_.Map) return;
    const QRectF gap = document_.documentLayout()->blockBoundingRect(mapBlock_);
    const double scale = kDots / kScreenDots;
    const QSize size(int(page_.width() / scale), int(mapHeight_ / scale));
    painter.save();
    painter.translate(0, gap.top());
    painter.scale(scale, scale);
    painter.setClipRect(QRect(QPoint(), size));
    // In pixels, since points would be scaled twice.
    QFont font;
    constexpr int kMapLetters = 11;
    font.setPixelSize(kMapLetters);
    painter.setFont(font);
    what_.Map(painter, size);
    painter.restore();
  }

  void WriteFoot(QPainter& painter, int page, int count) {
    QFont font = document_.defaultFont();
    font.setPointSizeF(kTableLetters);
    painter.save();
    painter.setFont(font);
    painter.setPen(Qt::darkGray);
    const QRectF foot(0, page_.height() - foot_, page_.width(), foot_);
    const QString number = QStringLiteral("%1 / %2").arg(page).arg(count);
    painter.drawText(foot, Qt::AlignRight | Qt::AlignBottom, number);
    const QFontMetricsF letters(font, &writer_);
    const double room = foot.width() - letters.horizontalAdvance(number) - Points(kLetters);
    painter.drawText(foot, Qt::AlignLeft | Qt::AlignBottom,
                     letters.elidedText(what_.Title, Qt::ElideRight, room));
    painter.restore();
  }

  const BriefingPages& what_;
  QPdfWriter writer_;
  QTextDocument document_;
  QTextBlock mapBlock_;
  std::vector<std::pair<QTextBlock, QTextBlock>> captions_;  // each with a table's first row
  QSizeF page_;
  double foot_ = 0, mapHeight_ = 0;
};

template <std::size_t Columns>
QStringList Row(const std::array<std::string, Columns>& texts) {
  QStringList row;
  for (const auto& text : texts) row << QString::fromStdString(text);
  return row;
}

}  // namespace

BriefingTable WaypointTable(const MapTextSources& from, std::size_t route) {
  BriefingTable table;
  table.Caption = QString::fromStdString(FlightText(from, route));
  table.Headings = Row(PointHeadings());
  for (const auto& each : PointTable(from, route)) table.Rows.push_back(Row(each));
  return table;
}

QByteArray BriefingPdf(const BriefingPages& pages) {
  constexpr qsizetype kMostLetters = 1'000'000;
  if (pages.Text.size() > kMostLetters)
    throw Fault(fault::InvalidCall, "The briefing is too long to be printed.");
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  // The writer ends the file when it goes.
  const bool isWhole = Pages(buffer, pages).Write();
  return isWhole ? bytes : QByteArray();
}

void SaveBriefingPdf(const Services& services, const std::string& path,
                     const BriefingPages& pages) {
  const QByteArray bytes = BriefingPdf(pages);
  if (bytes.isEmpty()) throw FileFault(fault::FileIo, "write", path, "the pages could not be made");
  services.Files.ReplaceFile(
      path, std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
}

}  // namespace rws
