#include "library/forms/query_box.h"

#include <QAbstractItemView>
#include <QKeyEvent>
#include <QStyle>
#include <QTreeView>
#include <QVBoxLayout>

#include "controls/layouts.h"
#include "platform/qt_text.h"

namespace rws {

namespace {

enum Data { kText = Qt::UserRole, kAt, kLength };

constexpr std::size_t kMostOffered = 50;

QList<QStandardItem*> RowOf(const Completion& completion) {
  const QString text = QString::fromStdString(completion.Text);
  auto* item = new QStandardItem(text);
  item->setData(text, kText);
  item->setData(static_cast<qulonglong>(completion.At), kAt);
  item->setData(static_cast<qulonglong>(completion.Length), kLength);
  if (!completion.Explains.empty())
    item->setText(text + QStringLiteral("   ") + QString::fromStdString(completion.Explains));
  return {item};
}

}  // namespace

QueryBox::QueryBox(QWidget* parent) : QWidget(parent) {
  Build();
  completer_ = new QCompleter(&offered_, this);
  completer_->setWidget(txtQuery);
  completer_->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
  completer_->setMaxVisibleItems(12);
  completer_->popup()->setAccessibleName(tr("Completions"));
  connect(completer_, qOverload<const QModelIndex&>(&QCompleter::activated), this,
          &QueryBox::TakeCompletion);
  connect(txtQuery, &QLineEdit::textChanged, this, [this] { Q_EMIT LineChanged(Line()); });
  // After the list has followed what was typed.
  connect(
      txtQuery, &QLineEdit::textEdited, this, [this] { OfferCompletions(false); },
      Qt::QueuedConnection);
}

void QueryBox::Build() {
  txtQuery = Named(new QLineEdit, "txtQuery");
  txtQuery->setClearButtonEnabled(true);
  txtQuery->installEventFilter(this);
  lblCount = Named(new QLabel, "lblCount");
  lblMessage = Named(new QLabel, "lblMessage");
  lblMessage->setWordWrap(true);
  for (auto* label : {lblCount, lblMessage}) {
    label->setTextFormat(Qt::PlainText);
    label->hide();
  }
  auto* row = new QHBoxLayout;
  row->addWidget(txtQuery, 1);
  row->addWidget(lblCount);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addLayout(row);
  column->addWidget(lblMessage);
  setFocusProxy(txtQuery);
}

void QueryBox::SetCount(const QString& text) {
  lblCount->setText(text);
  lblCount->setVisible(!text.isEmpty());
}

void QueryBox::SetMessage(const QString& text, bool isFault) {
  isFault_ = isFault;
  const QString told = isFault ? QStringLiteral("\u26A0 ") + text : text;
  if (lblMessage->text() != told) lblMessage->setText(told);
  lblMessage->setVisible(!text.isEmpty());
  if (txtQuery->accessibleDescription() != text) txtQuery->setAccessibleDescription(text);
}

bool QueryBox::eventFilter(QObject* watched, QEvent* event) {
  if (watched == txtQuery && event->type() == QEvent::KeyPress)
    return KeyPressed(*static_cast<QKeyEvent*>(event));
  return QWidget::eventFilter(watched, event);
}

bool QueryBox::KeyPressed(QKeyEvent& key) {
  if (key.key() == Qt::Key_Space && key.modifiers() == Qt::ControlModifier) {
    OfferCompletions(true);
    return true;
  }
  if (key.modifiers() & ~Qt::KeypadModifier) return false;
  switch (key.key()) {
    case Qt::Key_Escape: {
      const bool wasEmpty = txtQuery->text().isEmpty();
      txtQuery->clear();
      Q_EMIT Left(wasEmpty);
      return true;
    }
    case Qt::Key_Down:
      Q_EMIT WentDown();
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      Q_EMIT Entered();
      return true;
    default:
      return false;
  }
}

/** Nothing is offered in an empty line, where every key could stand, unless it is asked for. */
void QueryBox::OfferCompletions(bool asked) {
  auto* popup = completer_->popup();
  const QString text = txtQuery->text();
  const std::string line = text.toStdString();
  const auto cursor =
      static_cast<std::size_t>(text.left(txtQuery->cursorPosition()).toUtf8().size());
  const bool atWord = cursor > 0 && line[cursor - 1] != ' ';
  if (!Completions || !txtQuery->hasFocus() || (!asked && !atWord)) return popup->hide();
  const auto found = Completions(line, cursor);
  const bool isTyped =
      found.size() == 1 && line.compare(found[0].At, found[0].Length, found[0].Text) == 0;
  // In a line that cannot be read a word is none of a key that is begun.
  const bool isMisread = isFault_ && !found.empty() && !found[0].Explains.empty();
  if (found.empty() || isTyped || isMisread) return popup->hide();
  offered_.clear();
  for (std::size_t i = 0; i < found.size() && i < kMostOffered; ++i)
    offered_.appendRow(RowOf(found[i]));
  completer_->complete();
}

void QueryBox::TakeCompletion(const QModelIndex& chosen) {
  std::string line = Line();
  const std::size_t at = chosen.data(kAt).toULongLong();
  const std::size_t length = chosen.data(kLength).toULongLong();
  std::string text = chosen.data(kText).toString().toStdString();
  if (at > line.size()) return;
  // A key goes on with its value.
  const bool isKey = text.ends_with(':');
  if (!isKey && at + length >= line.size()) text += ' ';
  const std::string before = line.substr(0, at) + text;
  line.replace(at, length, text);
  txtQuery->setText(QString::fromStdString(line));
  txtQuery->setCursorPosition(static_cast<int>(QString::fromStdString(before).size()));
  if (isKey)
    QMetaObject::invokeMethod(
        this, [this] { OfferCompletions(false); }, Qt::QueuedConnection);
}

}  // namespace rws
