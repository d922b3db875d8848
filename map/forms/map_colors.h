#pragma once

#include <QColor>
#include <cstdint>

/** The colours of the map, readable on light and on dark ground. Armies are numbers as in the
    scene of a map. */
namespace rws {

/** The colour of a flight, an object or a column: red, blue, or grey for no army. */
QColor ArmyColor(std::uint8_t army, bool dark);
/** The colour of a home base by the number of its army; made lighter or darker where it would be
   lost on the ground. */
QColor BaseColor(std::uint8_t army, bool dark);

QColor GroundColor(bool dark);
QColor GridColor(bool dark);
QColor InkColor(bool dark);  // texts and what belongs to no army
QColor FrontColor(bool dark);
QColor TargetColor(bool dark);
/** What a colour is mixed with the ground: 1 is the colour itself. */
QColor Faint(const QColor& color, bool dark, double part);

}  // namespace rws
