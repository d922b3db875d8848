#pragma once

#include <QWidget>
#include <cstdint>

namespace rws {

/** Gives all lists, grids, trees and text boxes of a form the two colours that the user has chosen,
    always as a pair. Blue-green-red numbers. */
void ApplyListColors(QWidget& form, std::int32_t text, std::int32_t background);

}  // namespace rws
