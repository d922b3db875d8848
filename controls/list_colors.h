#pragma once

#include <QColor>
#include <QWidget>
#include <cstdint>
#include <optional>

namespace rws {

/** The colour of a blue-green-red number. */
QColor FromBgr(std::int32_t color);

/** Gives the text of a label or box a told colour with the background that it needs in front of
    what is `behind`; without one, what the desktop gives. A disabled control stays dimmed. */
void SetToldColor(QWidget& control, std::optional<QColor> told, const QColor& behind);

/** A told text colour, made lighter or darker just as far as it takes to read it on this
 * background.
 */
QColor Readable(QColor text, const QColor& background);

/** A colour between two; `share` is that of the first, from 0 to 1. */
QColor Mixed(const QColor& first, const QColor& second, float share);

/** The background of a told text colour, which stays as told: `behind` where it can be read on
   that, else white or black. */
QColor BackgroundFor(const QColor& told, const QColor& behind);

/** Gives all lists, grids, trees and text boxes of a form the two colours that the user has chosen,
    always as a pair. Blue-green-red numbers. */
void ApplyListColors(QWidget& form, std::int32_t text, std::int32_t background);

}  // namespace rws
