#include "controls/message_bar.h"

#include <QAbstractButton>
#include <QAccessibleWidget>
#include <QEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <algorithm>

#include "controls/layouts.h"

namespace rws {

namespace {

QAccessibleInterface* MakeInterface(const QString& className, QObject* object) {
  auto* bar = qobject_cast<MessageBar*>(object);
  if (!bar || className != QLatin1String(MessageBar::staticMetaObject.className())) return nullptr;
  return new QAccessibleWidget(bar, QAccessible::AlertMessage);
}

bool IsDark(const QPalette& colors) {
  return colors.color(QPalette::Window).lightness() <
         colors.color(QPalette::WindowText).lightness();
}

}  // namespace

MessageBar::MessageBar(QWidget* parent) : QFrame(parent) {
  static const bool known = (QAccessible::installFactory(MakeInterface), true);
  Q_UNUSED(known)
  Build();
  connect(cmdClose, &QToolButton::clicked, this, &MessageBar::CloseWanted);
}

void MessageBar::Build() {
  picture_ = new QLabel(this);
  lblText = Named(new WrappedLabel(this), "lblText");
  buttonBox_ = new QWidget(this);
  auto* row = new QHBoxLayout(buttonBox_);
  row->setContentsMargins(0, 0, 0, 0);
  chk = Named(new QCheckBox(buttonBox_), "chk");
  chk->setFocusPolicy(Qt::TabFocus);
  row->addWidget(chk);
  cmdClose = Named(new QToolButton(this), "cmdClose", tr("Close this message"),
                   tr("Close this message (Esc)"));
  cmdClose->setText(QStringLiteral("\u00D7"));
  cmdClose->setAutoRaise(true);
  cmdClose->setFocusPolicy(Qt::TabFocus);
  middle_ = new QBoxLayout(QBoxLayout::LeftToRight);
  middle_->addWidget(lblText, 1);
  middle_->addWidget(buttonBox_, 0, Qt::AlignRight | Qt::AlignVCenter);
  const int gap = fontMetrics().height() / 4;
  auto* whole = new QHBoxLayout(this);
  whole->setContentsMargins(2 * gap, gap, gap, gap);
  whole->setSpacing(2 * gap);
  whole->addWidget(picture_, 0, Qt::AlignVCenter);
  whole->addLayout(middle_, 1);
  whole->addWidget(cmdClose, 0, Qt::AlignVCenter);
}

void MessageBar::SetContent(const BarContent& content) {
  text_ = content.Text;
  kind_ = content.Kind;
  lblText->setText(text_);
  lblText->setAccessibleName(text_);
  setAccessibleName(text_);
  const bool warns = kind_ == BarKind::Warning;
  const QIcon icon = style()->standardIcon(warns ? QStyle::SP_MessageBoxWarning
                                                 : QStyle::SP_MessageBoxInformation);
  const int side = style()->pixelMetric(QStyle::PM_ButtonIconSize, nullptr, this) * 5 / 4;
  picture_->setPixmap(icon.pixmap(side, side));
  chk->setText(content.Check);
  chk->setAccessibleName(Spoken(content.Check));
  chk->setChecked(false);
  chk->setVisible(!content.Check.isEmpty());
  MakeButtons(content.Buttons);
  Recolor();
  Arrange();
  Announce();
}

void MessageBar::MakeButtons(const std::vector<BarButton>& buttons) {
  constexpr std::size_t kMost = 4;
  // Never on to a button of the other message, which a key on its way would press.
  if (std::any_of(cmd.begin(), cmd.end(), [](const auto* old) { return old->hasFocus(); }))
    cmdClose->setFocus(Qt::OtherFocusReason);
  for (auto* old : cmd) {
    old->hide();
    old->deleteLater();
  }
  cmd.clear();
  for (std::size_t i = 0; i < std::min(buttons.size(), kMost); ++i) {
    const QByteArray name = QStringLiteral("cmd(%1)").arg(i).toLatin1();
    auto* button = Button(name.constData(), buttons[i].Caption);
    button->setFocusPolicy(Qt::TabFocus);
    buttonBox_->layout()->addWidget(button);
    connect(button, &QPushButton::clicked, this, [this, i] { Q_EMIT Pressed(i); });
    // At once, not when the layout comes to it: it may be meant to take the focus.
    button->show();
    cmd.push_back(button);
  }
  buttonBox_->setVisible(!cmd.empty());
}

void MessageBar::Announce() {
  QAccessibleEvent named(this, QAccessible::NameChanged);
  QAccessible::updateAccessibility(&named);
  QAccessibleEvent alert(this, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

MessageBar::Colors MessageBar::OwnColors() const {
  const bool dark = IsDark(palette());
  if (kind_ == BarKind::Warning)
    return dark ? Colors{QColor(0x4D, 0x3B, 0x08), QColor(0xFF, 0xF1, 0xC7),
                         QColor(0xA8, 0x83, 0x1A)}
                : Colors{QColor(0xFF, 0xF3, 0xCD), QColor(0x3A, 0x2C, 0x00),
                         QColor(0xC9, 0x9A, 0x1B)};
  return dark
             ? Colors{QColor(0x1C, 0x3B, 0x57), QColor(0xE4, 0xF1, 0xFC), QColor(0x4B, 0x83, 0xB5)}
             : Colors{QColor(0xDC, 0xEC, 0xFA), QColor(0x0E, 0x26, 0x3A), QColor(0x6F, 0xA3, 0xD0)};
}

void MessageBar::Recolor() {
  const QColor text = OwnColors().Text;
  QPalette colors;
  for (const auto role : {QPalette::WindowText, QPalette::ButtonText})
    for (const auto group : {QPalette::Active, QPalette::Inactive})
      colors.setColor(group, role, text);
  lblText->setPalette(colors);
  cmdClose->setPalette(colors);
  chk->setPalette(colors);
  update();
}

void MessageBar::changeEvent(QEvent* event) {
  QFrame::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) Recolor();
  if (event->type() == QEvent::FontChange) Arrange();
}

void MessageBar::keyPressEvent(QKeyEvent* event) {
  // A button presses itself by Return in a dialog only.
  const bool presses = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  auto* button = qobject_cast<QAbstractButton*>(focusWidget());
  if (presses && button && button->hasFocus() && !event->isAutoRepeat()) return button->click();
  if (event->key() != Qt::Key_Escape || event->modifiers() != Qt::NoModifier)
    return QFrame::keyPressEvent(event);
  if (!event->isAutoRepeat()) Q_EMIT CloseWanted();
}

void MessageBar::paintEvent(QPaintEvent*) {
  const Colors colors = OwnColors();
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(colors.Edge);
  painter.setBrush(colors.Back);
  constexpr qreal kHalf = 0.5, kRound = 3;
  painter.drawRoundedRect(QRectF(rect()).adjusted(kHalf, kHalf, -kHalf, -kHalf), kRound, kRound);
}

void MessageBar::resizeEvent(QResizeEvent* event) {
  QFrame::resizeEvent(event);
  Arrange();
}

void MessageBar::Arrange() {
  constexpr int kReadable = 40;
  const int around = minimumSizeHint().width() - buttonBox_->sizeHint().width();
  const int readable = std::min(lblText->OneLine(), fontMetrics().averageCharWidth() * kReadable);
  const bool fits = width() >= around + readable + buttonBox_->sizeHint().width();
  const auto direction = fits ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom;
  if (middle_->direction() != direction) middle_->setDirection(direction);
}

QSize MessageBar::minimumSizeHint() const {
  const QMargins margins = layout()->contentsMargins();
  const int buttons = cmd.empty() ? 0 : buttonBox_->sizeHint().width();
  const int width = picture_->sizeHint().width() + buttons + cmdClose->sizeHint().width() +
                    2 * layout()->spacing() + margins.left() + margins.right();
  return {width, QFrame::minimumSizeHint().height()};
}

}  // namespace rws
