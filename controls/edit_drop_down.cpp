#include "controls/edit_drop_down.h"

#include <QCompleter>
#include <QFocusEvent>
#include <QLineEdit>
#include <algorithm>

#include "controls/page_validator.h"

namespace rws {

EditDropDown::EditDropDown(const CodePage& page, Typed typed, QWidget* parent)
    : DropDown(parent), typed_(typed), rows_(new QStringListModel(this)) {
  setModel(rows_);
  setEditable(true);
  setInsertPolicy(NoInsert);
  // Completing in place would store rows that nobody has typed to their end.
  completer()->setCompletionMode(QCompleter::PopupCompletion);
  lineEdit()->setValidator(new PageValidator(page, this));
  connect(lineEdit(), &QLineEdit::textEdited, this, &EditDropDown::TextTyped);
  connect(this, &QComboBox::currentIndexChanged, this, &EditDropDown::ShowStart);
}

void EditDropDown::Fill(const QStringList& rows) {
  const bool blocked = blockSignals(true);
  if (rows_->stringList() != rows) rows_->setStringList(rows);
  setCurrentIndex(-1);
  clearEditText();
  blockSignals(blocked);
}

int EditDropDown::RowOf(const QString& text) const {
  const int row = findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive);
  return row >= 0 ? row : findText(text, Qt::MatchFixedString);
}

bool EditDropDown::SelectText(const QString& text) {
  const int row = RowOf(text);
  SelectRow(row);
  return row >= 0;
}

QString EditDropDown::Value() const {
  return typed_ == Typed::Keeps ? currentText() : itemText(currentIndex());
}

void EditDropDown::TextTyped(const QString& text) {
  // At once, since a mnemonic presses a button without leaving the box.
  const int row = typed_ == Typed::RowsOnly ? RowOf(text) : -1;
  if (row < 0) return;
  const int cursor = lineEdit()->cursorPosition();
  setCurrentIndex(row);
  lineEdit()->setCursorPosition(cursor);
}

void EditDropDown::focusOutEvent(QFocusEvent* event) {
  DropDown::focusOutEvent(event);
  const auto reason = event->reason();
  const bool stays = reason == Qt::PopupFocusReason || reason == Qt::ActiveWindowFocusReason ||
                     reason == Qt::MenuBarFocusReason;
  if (!stays) Settle();
}

void EditDropDown::Settle() {
  if (typed_ == Typed::RowsOnly)
    setEditText(itemText(currentIndex()));
  else
    SelectRow(currentText().isEmpty() ? 0 : RowOf(currentText()));
  ShowStart();
}

void EditDropDown::ShowStart() { lineEdit()->setCursorPosition(0); }

}  // namespace rws
