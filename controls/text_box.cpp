#include "controls/text_box.h"

#include <QContextMenuEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QTextCursor>

namespace rws {

namespace {

bool IsBreak(QChar c) { return c == QChar::ParagraphSeparator || c == QChar::LineSeparator; }

QString WithLineEnds(const QString& raw, const char* end) {
  QString text;
  text.reserve(raw.size());
  for (const QChar c : raw) {
    if (IsBreak(c))
      text += QLatin1String(end);
    else
      text += c;
  }
  return text;
}

}  // namespace

TextBox::TextBox(QWidget* parent) : QPlainTextEdit(parent) { setTabChangesFocus(true); }

QString TextBox::Text() const { return WithLineEnds(document()->toRawText(), "\r\n"); }

void TextBox::Insert(const QString& text) {
  // A block of its own: two inserts in a row would else be undone as one.
  QTextCursor cursor = textCursor();
  cursor.beginEditBlock();
  cursor.insertText(text);
  cursor.endEditBlock();
  setTextCursor(cursor);
  ensureCursorVisible();
}

QPoint TextBox::BelowCaret() const { return viewport()->mapToGlobal(cursorRect().bottomLeft()); }

QMimeData* TextBox::createMimeDataFromSelection() const {
  auto* selection = new QMimeData;
  selection->setText(WithLineEnds(textCursor().selectedText(), "\n"));
  return selection;
}

void TextBox::mouseReleaseEvent(QMouseEvent* event) {
  QPlainTextEdit::mouseReleaseEvent(event);
  if (ForeignMenu && event->button() == Qt::RightButton)
    Q_EMIT MenuAsked(event->globalPosition().toPoint());
}

void TextBox::contextMenuEvent(QContextMenuEvent* event) {
  if (!ForeignMenu) return QPlainTextEdit::contextMenuEvent(event);
  if (event->reason() == QContextMenuEvent::Keyboard) Q_EMIT MenuAsked(BelowCaret());
}

}  // namespace rws
