#include "mainwindow/message_bars.h"

#include <QApplication>
#include <QEvent>
#include <QVBoxLayout>
#include <algorithm>

#include "services/error_log.h"
#include "services/faults.h"

namespace rws {

MessageBars::MessageBars(const Services& services, QWidget* parent)
    : QScrollArea(parent), services_(services), stack_(new QWidget) {
  setFrameShape(NoFrame);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setFocusPolicy(Qt::NoFocus);
  setWidgetResizable(true);
  QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
  auto* column = new QVBoxLayout(stack_);
  column->setContentsMargins(0, 0, 0, 0);
  setWidget(stack_);
  // The window's own background, in front of which the bars stand.
  stack_->setAutoFillBackground(false);
  viewport()->setAutoFillBackground(false);
  stack_->installEventFilter(this);
  connect(qApp, &QApplication::focusChanged, this, &MessageBars::RememberFocus);
  hide();
}

void MessageBars::Show(const std::string& id, BarContent content) {
  if (!entries_.contains(id)) Add(id);
  Entry& entry = entries_.at(id);
  entry.Content = std::move(content);
  entry.Bar->show();
  ShowFilled();
  // Only what is shown is announced.
  entry.Bar->SetContent(entry.Content);
  SetTabOrder();
}

void MessageBars::ShowFilled() {
  const bool filled = !entries_.empty();
  if (filled == isHidden()) Q_EMIT Filled(filled);
  setVisible(filled);
  Refit();
}

/** A scroll bar would take width from what fits without one, and make it need more lines. */
void MessageBars::Refit() {
  setVerticalScrollBarPolicy(WholeHeight(width()) > MostHeight() ? Qt::ScrollBarAsNeeded
                                                                 : Qt::ScrollBarAlwaysOff);
  updateGeometry();
}

void MessageBars::Add(const std::string& id) {
  auto* bar = new MessageBar(stack_);
  bar->setObjectName(QString::fromStdString("bar_" + id));
  stack_->layout()->addWidget(bar);
  entries_[id] = {bar, {}};
  connect(bar, &MessageBar::CloseWanted, this, [this, id] { CloseByUser(id); });
  connect(bar, &MessageBar::Pressed, this, [this, id](std::size_t button) { Press(id, button); });
}

void MessageBars::Press(const std::string& id, std::size_t button) {
  const auto found = entries_.find(id);
  if (found == entries_.end()) return;
  LogAndLeave(services_, "bars_Click", [&] {
    // A copy: the action may put another message in the place of this one.
    const auto action = At(found->second.Content.Buttons, static_cast<int>(button)).Action;
    if (action) action();
  });
}

void MessageBars::Hide(const std::string& id) {
  const auto found = entries_.find(id);
  if (found == entries_.end()) return;
  MessageBar* bar = found->second.Bar;
  entries_.erase(found);
  if (bar->isAncestorOf(QApplication::focusWidget())) GiveFocusBack();
  bar->hide();
  // Its own button may be what was pressed.
  bar->deleteLater();
  stack_->layout()->removeWidget(bar);
  ShowFilled();
}

void MessageBars::CloseByUser(const std::string& id) {
  const auto found = entries_.find(id);
  if (found == entries_.end()) return;
  const auto onClose = found->second.Content.OnClose;
  Hide(id);
  if (onClose) LogAndLeave(services_, "bars_Close", [&] { onClose(); });
}

/** Puts the bars, one after the other, between the control that comes next and the one before it.
 */
void MessageBars::SetTabOrder() {
  if (!next_) return;
  QWidget* before = next_->previousInFocusChain();
  while (isAncestorOf(before) || before->focusPolicy() == Qt::NoFocus)
    before = before->previousInFocusChain();
  for (int i = 0; i < stack_->layout()->count(); ++i) {
    auto* bar = static_cast<MessageBar*>(stack_->layout()->itemAt(i)->widget());
    for (auto* button : bar->cmd) {
      setTabOrder(before, button);
      before = button;
    }
    setTabOrder(before, bar->cmdClose);
    before = bar->cmdClose;
  }
}

void MessageBars::RememberFocus(QWidget* before, QWidget* now) {
  if (isAncestorOf(now) && before && !isAncestorOf(before)) before_ = before;
}

void MessageBars::GiveFocusBack() {
  const bool usable = before_ && before_->isVisible() && before_->isEnabled();
  QWidget* control = usable ? before_.data() : next_.data();
  if (control) control->setFocus(Qt::OtherFocusReason);
}

QStringList MessageBars::Texts() const {
  QStringList texts;
  for (int i = 0; i < stack_->layout()->count(); ++i)
    texts << static_cast<MessageBar*>(stack_->layout()->itemAt(i)->widget())->Text();
  return texts;
}

MessageBar* MessageBars::Bar(const std::string& id) const {
  const auto found = entries_.find(id);
  return found == entries_.end() ? nullptr : found->second.Bar;
}

int MessageBars::WholeHeight(int width) const {
  return entries_.empty() ? 0 : stack_->layout()->totalHeightForWidth(width);
}

int MessageBars::MostHeight() const {
  constexpr int kMostLines = 10;
  return fontMetrics().height() * kMostLines;
}

int MessageBars::heightForWidth(int width) const {
  return std::min(WholeHeight(width), MostHeight());
}

QSize MessageBars::sizeHint() const { return minimumSizeHint(); }

QSize MessageBars::minimumSizeHint() const {
  return {stack_->layout()->totalMinimumSize().width(), heightForWidth(width())};
}

bool MessageBars::eventFilter(QObject* watched, QEvent* event) {
  if (watched == stack_ && event->type() == QEvent::LayoutRequest) Refit();
  return QScrollArea::eventFilter(watched, event);
}

void MessageBars::resizeEvent(QResizeEvent* event) {
  QScrollArea::resizeEvent(event);
  Refit();
}

}  // namespace rws
