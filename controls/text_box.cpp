#include "controls/text_box.h"

#include <QContextMenuEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QTextCursor>
#include <QToolTip>
#include <algorithm>

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

TextBox::TextBox(const CodePage& page, QWidget* parent) : QPlainTextEdit(parent), page_(page) {
  setTabChangesFocus(true);
}

QString TextBox::Text() const { return WithLineEnds(document()->toRawText(), "\r\n"); }

bool TextBox::Insert(const QString& text) {
  if (!Accepts(text)) return false;
  // A block of its own: two inserts in a row would else be undone as one.
  QTextCursor cursor = textCursor();
  cursor.beginEditBlock();
  cursor.insertText(text);
  cursor.endEditBlock();
  setTextCursor(cursor);
  ensureCursorVisible();
  return true;
}

bool TextBox::Accepts(const QString& text) {
  const auto lacking = std::find_if(text.begin(), text.end(), [this](QChar c) {
    return !IsBreak(c) && !page_.FromUnicode(c.unicode());
  });
  if (lacking == text.end()) return true;
  const QString letter = text.mid(lacking - text.begin(), lacking->isHighSurrogate() ? 2 : 1);
  QToolTip::showText(BelowCaret(), tr("Mission files cannot hold \"%1\".").arg(letter), this);
  return false;
}

QPoint TextBox::BelowCaret() const { return viewport()->mapToGlobal(cursorRect().bottomLeft()); }

void TextBox::keyPressEvent(QKeyEvent* event) {
  if (Accepts(event->text())) QPlainTextEdit::keyPressEvent(event);
}

void TextBox::inputMethodEvent(QInputMethodEvent* event) {
  if (Accepts(event->commitString())) return QPlainTextEdit::inputMethodEvent(event);
  // What was being composed goes away with it.
  QInputMethodEvent nothing;
  QPlainTextEdit::inputMethodEvent(&nothing);
}

QMimeData* TextBox::createMimeDataFromSelection() const {
  auto* selection = new QMimeData;
  selection->setText(WithLineEnds(textCursor().selectedText(), "\n"));
  return selection;
}

void TextBox::insertFromMimeData(const QMimeData* source) {
  if (Accepts(source->text())) QPlainTextEdit::insertFromMimeData(source);
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
