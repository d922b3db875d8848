#include "services/controls/list_colors.h"

#include <QAbstractItemView>
#include <QLineEdit>

namespace rws {

QColor FromBgr(std::int32_t color) {
  return QColor(color & 0xFF, (color >> 8) & 0xFF, (color >> 16) & 0xFF);
}

namespace {

void Apply(QWidget* control, const QColor& text, const QColor& background) {
  QPalette palette = control->palette();
  for (const auto group : {QPalette::Active, QPalette::Inactive}) {
    palette.setColor(group, QPalette::Text, text);
    palette.setColor(group, QPalette::Base, background);
  }
  control->setPalette(palette);
}

}  // namespace

void ApplyListColors(QWidget& form, std::int32_t text, std::int32_t background) {
  for (auto* list : form.findChildren<QAbstractItemView*>())
    Apply(list, FromBgr(text), FromBgr(background));
  for (auto* box : form.findChildren<QLineEdit*>()) Apply(box, FromBgr(text), FromBgr(background));
}

}  // namespace rws
