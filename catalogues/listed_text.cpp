#include "catalogues/listed_text.h"

#include <algorithm>
#include <functional>

#include "catalogues/table_text.h"

namespace rws {

namespace {

/** Longer texts of lists are no names. */
constexpr std::size_t kMostBytes = 200;

/** The text itself, where that is one that needs no conversion. */
bool IsPlain(std::string_view utf8) {
  bool blank = true;
  for (const char c : utf8) {
    if (c < ' ' || c > '~' || (c == ' ' && blank)) return false;
    blank = c == ' ';
  }
  return !blank;
}

}  // namespace

std::string ShownText(const CodePage& page, std::string_view utf8) {
  utf8 = utf8.substr(0, kMostBytes);
  if (IsPlain(utf8)) return std::string(utf8);
  const auto spelled = TextInPage(page, utf8);
  std::string text;
  if (!spelled) return text;
  for (const char c : *spelled) {
    const bool isBlank = static_cast<unsigned char>(c) <= ' ' || c == '\x7F';
    if (!isBlank)
      text += c;
    else if (!text.empty() && text.back() != ' ')
      text += ' ';
  }
  while (text.ends_with(' ')) text.pop_back();
  return text;
}

std::string ExactText(const CodePage& page, std::string_view utf8) {
  if (IsPlain(utf8) && utf8.find(' ') == utf8.npos) return std::string(utf8);
  std::string text = page.FromUtf8(utf8).value_or("");
  for (const char c : text)
    if (static_cast<unsigned char>(c) <= ' ') return "";
  return text;
}

bool SeenTexts::Add(std::string_view text) {
  page_.LCaseInto(lower_, text);
  const std::size_t number = std::hash<std::string_view>()(lower_);
  if (std::find(seen_.begin(), seen_.end(), number) != seen_.end()) return false;
  seen_.push_back(number);
  return true;
}

std::string UniqueTexts::Make(std::string text, std::string_view mark) {
  if (used_.insert(page_.LCase(text)).second) return text;
  const std::string marked = text.append(" (").append(mark).append(")");
  for (int i = 2; !used_.insert(page_.LCase(text)).second; ++i)
    text = marked + " " + std::to_string(i);
  return text;
}

}  // namespace rws
