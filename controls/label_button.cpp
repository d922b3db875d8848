#include "controls/label_button.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>

#include "controls/list_colors.h"

namespace rws {

LabelButton::LabelButton(const QString& text, QWidget* parent) : QLabel(text, parent) {
  UpdateFocusPolicy();
}

void LabelButton::SetColor(LabelColor color, const QString& meaning) {
  color_ = color;
  setAccessibleName(text().remove(QLatin1Char('&')) + QStringLiteral(", ") + meaning);
  UpdateFocusPolicy();
  update();
}

void LabelButton::SetAlwaysReachable() {
  alwaysReachable_ = true;
  UpdateFocusPolicy();
}

void LabelButton::UpdateFocusPolicy() {
  const bool reachable = alwaysReachable_ || color_ != LabelColor::Black;
  setFocusPolicy(reachable ? Qt::TabFocus : Qt::NoFocus);
  if (color_ == LabelColor::Black)
    unsetCursor();
  else
    setCursor(Qt::PointingHandCursor);
  if (!reachable && hasFocus() && buddy()) buddy()->setFocus(Qt::OtherFocusReason);
}

void LabelButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  QPalette colors = palette();
  if (color_ != LabelColor::Black && isEnabled()) {
    const QColor told = FromBgr(static_cast<std::int32_t>(color_));
    const QColor behind = colors.color(QPalette::Window), ground = BackgroundFor(told, behind);
    if (ground != behind) painter.fillRect(rect(), ground);
    colors.setColor(QPalette::WindowText, told);
    QFont link = font();
    link.setUnderline(true);
    painter.setFont(link);
  }
  style()->drawItemText(&painter, contentsRect(), Qt::AlignVCenter | Qt::TextShowMnemonic, colors,
                        isEnabled(), text(), QPalette::WindowText);
  if (!hasFocus()) return;
  QStyleOptionFocusRect option;
  option.initFrom(this);
  option.state |= QStyle::State_KeyboardFocusChange;
  option.backgroundColor = colors.color(QPalette::Window);
  style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
}

// Else the press, and the release with it, would go on to the frame behind.
void LabelButton::mousePressEvent(QMouseEvent* event) { event->accept(); }

void LabelButton::mouseReleaseEvent(QMouseEvent* event) {
  if (rect().contains(event->position().toPoint())) Q_EMIT Clicked(event->button());
}

void LabelButton::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (!event->isAutoRepeat()) Q_EMIT Clicked(Qt::LeftButton);
      return;
    case Qt::Key_F10:
      // Not every system makes a context menu event of it.
      if (event->modifiers() == Qt::ShiftModifier) return Q_EMIT Clicked(Qt::RightButton);
      break;
    case Qt::Key_Menu:
      return Q_EMIT Clicked(Qt::RightButton);
    default:
      break;
  }
  QLabel::keyPressEvent(event);
}

// The keys for it are handled as such, the mouse by its release.
void LabelButton::contextMenuEvent(QContextMenuEvent* event) { event->accept(); }

void LabelButton::focusInEvent(QFocusEvent* event) {
  QLabel::focusInEvent(event);
  update();
}

void LabelButton::focusOutEvent(QFocusEvent* event) {
  QLabel::focusOutEvent(event);
  update();
}

}  // namespace rws
