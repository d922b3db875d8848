#include "controls/list_colors.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <algorithm>
#include <cmath>

namespace rws {

QColor FromBgr(std::int32_t color) {
  return QColor(color & 0xFF, (color >> 8) & 0xFF, (color >> 16) & 0xFF);
}

void SetFixedColor(QWidget& control, std::optional<QColor> told, const QColor& behind) {
  QPalette colors;
  const QColor ground = told ? BackgroundFor(*told, behind) : behind;
  if (told)
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
      colors.setColor(group, QPalette::WindowText, *told);
      if (ground != behind) colors.setColor(group, QPalette::Window, ground);
    }
  control.setPalette(colors);
  control.setAutoFillBackground(ground != behind);
}

namespace {

/** How bright a colour looks, from 0 to 1. */
double Luminance(const QColor& color) {
  const auto linear = [](double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
         0.0722 * linear(color.blueF());
}

double Contrast(const QColor& a, const QColor& b) {
  const auto [darker, brighter] = std::minmax({Luminance(a), Luminance(b)});
  return (brighter + 0.05) / (darker + 0.05);
}

void Apply(QWidget* control, const Preferences& prefs) {
  // What is not set here follows the desktop.
  QPalette own;
  if (!prefs.bDesktopColors)
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
      own.setColor(group, QPalette::Text, FromBgr(prefs.ForeColor));
      own.setColor(group, QPalette::Base, FromBgr(prefs.BackColor));
      constexpr float kFaint = 0.55F;
      own.setColor(group, QPalette::PlaceholderText,
                   Mixed(FromBgr(prefs.ForeColor), FromBgr(prefs.BackColor), kFaint));
    }
  control->setPalette(own);
  if (!qobject_cast<QAbstractItemView*>(control)) return;
  constexpr float kPale = 0.35F;
  const QPalette shown = control->palette();
  const QColor ground = shown.color(QPalette::Active, QPalette::Base);
  own.setColor(QPalette::Inactive, QPalette::Highlight,
               Mixed(shown.color(QPalette::Active, QPalette::Highlight), ground, kPale));
  own.setColor(QPalette::Inactive, QPalette::HighlightedText,
               shown.color(QPalette::Active, QPalette::Text));
  control->setPalette(own);
}

}  // namespace

QColor Mixed(const QColor& first, const QColor& second, float share) {
  const auto part = [share](float a, float b) { return a * share + b * (1 - share); };
  return QColor::fromRgbF(part(first.redF(), second.redF()), part(first.greenF(), second.greenF()),
                          part(first.blueF(), second.blueF()));
}

QColor BackgroundFor(const QColor& told, const QColor& behind) {
  // Red on white has 4, the least of the colours in use.
  constexpr double kEnough = 3;
  for (const QColor& ground : {behind, QColor(Qt::white)})
    if (Contrast(told, ground) >= kEnough) return ground;
  return Qt::black;
}

void ApplyListColors(QWidget& form, const Preferences& prefs) {
  for (auto* list : form.findChildren<QAbstractItemView*>()) Apply(list, prefs);
  for (auto* box : form.findChildren<QPlainTextEdit*>()) Apply(box, prefs);
  for (auto* box : form.findChildren<QLineEdit*>()) {
    // A drop-down hands its own colours to the box in it, whenever they change.
    auto* owner = qobject_cast<QComboBox*>(box->parentWidget());
    Apply(owner ? static_cast<QWidget*>(owner) : box, prefs);
  }
}

void FixedColors::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  QStyledItemDelegate::initStyleOption(option, index);
  const QVariant told = index.data(Qt::ForegroundRole);
  if (!told.isValid()) return;
  const QColor behind = option->palette.color(QPalette::Base);
  const QColor color = told.value<QBrush>().color();
  QColor ground = BackgroundFor(color, behind);
  // One background for the rows of both sides: bands would part what belongs together.
  for (const QColor& side : {QColor(Qt::red), QColor(Qt::blue)})
    if (const QColor own = BackgroundFor(side, behind); ground == behind && own != behind)
      ground = BackgroundFor(color, own);
  if (ground != behind) option->backgroundBrush = ground;
}

}  // namespace rws
