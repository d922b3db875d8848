#pragma once

#include <QValidator>
#include <algorithm>

#include "services/code_page.h"

namespace rws {

/** Refuses a text with a character that the code page lacks. */
class PageValidator : public QValidator {
 public:
  PageValidator(const CodePage& page, QObject* parent) : QValidator(parent), page_(page) {}

  State validate(QString& text, int&) const override {
    const bool spelled = std::all_of(text.begin(), text.end(), [this](QChar c) {
      return page_.FromUnicode(c.unicode()).has_value();
    });
    return spelled ? Acceptable : Invalid;
  }

 private:
  const CodePage& page_;
};

}  // namespace rws
