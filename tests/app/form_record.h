#pragma once

#include <QWidget>
#include <string>

namespace rws::test {

/** What a form is made of, as text: each control with what sets it apart from a plain one of its
    kind, its layout, entries, columns and first rows. Nothing in it depends on a font. */
std::string RecordOf(const QWidget& form);

}  // namespace rws::test
