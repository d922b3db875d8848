#pragma once

#include <QColor>
#include <QWidget>
#include <cstdint>

namespace rws {

/** The colour of a blue-green-red number. */
QColor FromBgr(std::int32_t color);

/** A told text colour, made lighter or darker just as far as it takes to read it on this
 * background.
 */
QColor Readable(QColor text, const QColor& background);

/** A colour between two; `share` is that of the first, from 0 to 1. */
QColor Mixed(const QColor& first, const QColor& second, float share);

/** Gives all lists, grids, trees and text boxes of a form the two colours that the user has chosen,
    always as a pair. Blue-green-red numbers. */
void ApplyListColors(QWidget& form, std::int32_t text, std::int32_t background);

}  // namespace rws
