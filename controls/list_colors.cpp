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

void SetToldColor(QWidget& control, std::optional<QColor> told, const QColor& behind) {
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

void Apply(QWidget* control, const QColor& text, const QColor& background) {
  QPalette palette = control->palette();
  for (const auto group : {QPalette::Active, QPalette::Inactive}) {
    palette.setColor(group, QPalette::Text, text);
    palette.setColor(group, QPalette::Base, background);
  }
  control->setPalette(palette);
}

}  // namespace

QColor Mixed(const QColor& first, const QColor& second, float share) {
  const auto part = [share](float a, float b) { return a * share + b * (1 - share); };
  return QColor::fromRgbF(part(first.redF(), second.redF()), part(first.greenF(), second.greenF()),
                          part(first.blueF(), second.blueF()));
}

QColor Readable(QColor text, const QColor& background) {
  constexpr double kEnough = 4.5, kStep = 0.04;
  const double goal = Luminance(background) > 0.18 ? 0 : 1;
  const auto mix = [&](double part) {
    return std::clamp(part + (goal > part ? kStep : -kStep), 0.0, 1.0);
  };
  for (int step = 0; step < 25 && Contrast(text, background) < kEnough; ++step)
    text = QColor::fromRgbF(float(mix(text.redF())), float(mix(text.greenF())),
                            float(mix(text.blueF())));
  return text;
}

QColor BackgroundFor(const QColor& told, const QColor& behind) {
  // Red on white has 4, the least that is told.
  constexpr double kEnough = 3;
  for (const QColor& ground : {behind, QColor(Qt::white)})
    if (Contrast(told, ground) >= kEnough) return ground;
  return Qt::black;
}

void ApplyListColors(QWidget& form, std::int32_t text, std::int32_t background) {
  for (auto* list : form.findChildren<QAbstractItemView*>())
    Apply(list, FromBgr(text), FromBgr(background));
  for (auto* box : form.findChildren<QPlainTextEdit*>())
    Apply(box, FromBgr(text), FromBgr(background));
  for (auto* box : form.findChildren<QLineEdit*>()) {
    // A drop-down hands its own colours to the box in it, whenever they change.
    auto* owner = qobject_cast<QComboBox*>(box->parentWidget());
    Apply(owner ? static_cast<QWidget*>(owner) : box, FromBgr(text), FromBgr(background));
  }
}

}  // namespace rws
