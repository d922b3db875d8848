#include "services/code_page.h"

#include "services/code_page_tables.h"
#include "services/text.h"

namespace rws {

namespace {

const CodePageTable& TableOf(int number) {
  for (const auto& table : kCodePageTables)
    if (table.Number == number) return table;
  return TableOf(1252);
}

bool IsTurkishI(char32_t c) { return c == 0x130 || c == 0x131; }

}  // namespace

char32_t LowerCharacter(char32_t c) {
  if (c < 0x80) return static_cast<unsigned char>(LowerAscii(static_cast<char>(c)));
  if (IsTurkishI(c)) return c;
  if (c >= 0xC0 && c <= 0xDE && c != 0xD7) return c + 32;
  if (c == 0x178) return 0xFF;
  const bool evenUpper = (c >= 0x100 && c <= 0x137) || (c >= 0x14A && c <= 0x177) ||
                         (c >= 0x218 && c <= 0x21B) || (c >= 0x460 && c <= 0x481) ||
                         (c >= 0x48A && c <= 0x4BF) || (c >= 0x4D0 && c <= 0x52F);
  if (evenUpper) return c | 1;
  const bool oddUpper = (c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E);
  if (oddUpper) return c % 2 == 1 ? c + 1 : c;
  if (c == 0x386) return 0x3AC;
  if (c >= 0x388 && c <= 0x38A) return c + 37;
  if (c == 0x38C) return 0x3CC;
  if (c == 0x38E || c == 0x38F) return c + 63;
  if (c >= 0x391 && c <= 0x3AB && c != 0x3A2) return c + 32;
  if (c >= 0x400 && c <= 0x40F) return c + 80;
  if (c >= 0x410 && c <= 0x42F) return c + 32;
  return c;
}

char32_t UpperCharacter(char32_t c) {
  // Every distance between the two cases that occurs above.
  for (const int distance : {32, 1, 80, 37, 38, 63, 64, -121}) {
    const char32_t upper = c - static_cast<char32_t>(distance);
    if (upper != c && LowerCharacter(upper) == c) return upper;
  }
  return c;
}

CodePage::CodePage(int number) : number_(TableOf(number).Number) {
  const auto& table = TableOf(number);
  for (unsigned b = 0; b < 256; ++b) {
    toUnicode_[b] = b < 0x80 || table.Upper[b - 0x80] == 0 ? b : table.Upper[b - 0x80];
    fromUnicode_.emplace(toUnicode_[b], static_cast<char>(b));
    lower_[b] = upper_[b] = static_cast<char>(b);
  }
  for (unsigned b = 0; b < 256; ++b) {
    const auto lower = FromUnicode(LowerCharacter(toUnicode_[b]));
    if (!lower || static_cast<unsigned char>(*lower) == b) continue;
    lower_[b] = *lower;
    upper_[static_cast<unsigned char>(*lower)] = static_cast<char>(b);
  }
}

std::optional<char> CodePage::FromUnicode(char32_t character) const {
  const auto found = fromUnicode_.find(character);
  if (found == fromUnicode_.end()) return {};
  return found->second;
}

void CodePage::LCaseInto(std::string& result, std::string_view text) const {
  result.resize(text.size());
  for (std::size_t i = 0; i < text.size(); ++i)
    result[i] = lower_[static_cast<unsigned char>(text[i])];
}

std::string CodePage::LCase(std::string_view text) const {
  std::string result;
  LCaseInto(result, text);
  return result;
}

std::string CodePage::UCase(std::string_view text) const {
  std::string result(text);
  for (char& c : result) c = upper_[static_cast<unsigned char>(c)];
  return result;
}

std::string CodePage::ToUtf8(std::string_view text) const {
  std::string result;
  for (const char c : text) AppendUtf8(result, ToUnicode(c));
  return result;
}

std::optional<std::string> CodePage::FromUtf8(std::string_view text) const {
  std::string result;
  for (std::size_t i = 0; i < text.size();) {
    const auto byte = FromUnicode(NextCharacter(text, i));
    if (!byte) return {};
    result += *byte;
  }
  return result;
}

int CodePageOfLocale(std::string_view localeName) {
  struct Language {
    std::string_view Code;
    int Page;
  };
  static constexpr Language kLanguages[] = {
      {"cs", 1250}, {"sk", 1250}, {"pl", 1250}, {"hu", 1250}, {"ro", 1250}, {"hr", 1250},
      {"sl", 1250}, {"sq", 1250}, {"bs", 1250}, {"ru", 1251}, {"uk", 1251}, {"be", 1251},
      {"bg", 1251}, {"sr", 1251}, {"mk", 1251}, {"el", 1253}, {"tr", 1254}, {"az", 1254},
      {"et", 1257}, {"lv", 1257}, {"lt", 1257}};
  const auto code = localeName.substr(0, localeName.find_first_of("_-.@"));
  for (const auto& language : kLanguages)
    if (language.Code == code) return language.Page;
  return 1252;
}

char32_t NextCharacter(std::string_view utf8, std::size_t& position) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(utf8[i]); };
  const unsigned char lead = byte(position);
  const std::size_t length = lead < 0x80             ? 1
                             : (lead & 0xE0) == 0xC0 ? 2
                             : (lead & 0xF0) == 0xE0 ? 3
                             : (lead & 0xF8) == 0xF0 ? 4
                                                     : 0;
  if (length > 1 && position + length <= utf8.size()) {
    char32_t c = lead & (0xFFu >> (length + 1));
    bool whole = true;
    for (std::size_t i = 1; i < length; ++i) {
      whole = whole && (byte(position + i) & 0xC0) == 0x80;
      c = (c << 6) | (byte(position + i) & 0x3Fu);
    }
    if (whole) {
      position += length;
      return c;
    }
  }
  ++position;
  return lead;
}

void AppendUtf8(std::string& text, char32_t c) {
  if (c < 0x80) {
    text += static_cast<char>(c);
  } else if (c < 0x800) {
    text += static_cast<char>(0xC0 | (c >> 6));
    text += static_cast<char>(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    text += static_cast<char>(0xE0 | (c >> 12));
    text += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    text += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    text += static_cast<char>(0xF0 | (c >> 18));
    text += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
    text += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    text += static_cast<char>(0x80 | (c & 0x3F));
  }
}

std::string FoldName(std::string_view utf8) {
  std::string result;
  result.reserve(utf8.size());
  for (std::size_t i = 0; i < utf8.size();) {
    const unsigned char byte = static_cast<unsigned char>(utf8[i]);
    if (byte < 0x80) {
      result += LowerAscii(utf8[i++]);
    } else {
      AppendUtf8(result, LowerCharacter(NextCharacter(utf8, i)));
    }
  }
  return result;
}

}  // namespace rws
