#pragma once

#include <QColor>
#include <QStyledItemDelegate>
#include <QWidget>
#include <cstdint>
#include <optional>

#include "services/preferences.h"

namespace rws {

/** The colour of a blue-green-red number. */
QColor FromBgr(std::int32_t color);

/** Gives the text of a label or box a fixed colour with the background that it needs in front of
    what is `there`; without one, what the desktop gives. A disabled control stays dimmed. */
void SetFixedColor(QWidget& control, std::optional<QColor> told, const QColor& there);

/** A colour between two; `share` is that of the first, from 0 to 1. */
QColor Mixed(const QColor& first, const QColor& second, float share);

/** The background of a text colour that is not to change: `behind` where it can be read on
   that, else white or black. */
QColor BackgroundFor(const QColor& told, const QColor& behind);

/** Gives all lists, grids, trees and text boxes of a form the two colours that the user has chosen,
    always as a pair, or those of the desktop. What is selected in a list without the focus is
    paler. */
void ApplyListColors(QWidget& form, const Preferences& prefs);

/** Draws the fixed colours of rows, each with a background of its own where the list's does not
    do. */
class FixedColors : public QStyledItemDelegate {
  Q_OBJECT

 public:
  using QStyledItemDelegate::QStyledItemDelegate;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

}  // namespace rws
