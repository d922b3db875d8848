#include "services/ini_escapes.h"

#include <charconv>

#include "services/code_page.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr std::string_view kLetters = "abfnrtv\"\\?'", kMeant = "\a\b\f\n\r\t\v\"\\?'";
constexpr std::string_view kBytes = "@ByteArray(";

constexpr std::string_view kHexDigits = "0123456789ABCDEFabcdef";
constexpr std::string_view kPlainInKeys =
    "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_-.\\";

std::string Hex(char32_t number, std::size_t leastDigits) {
  std::string digits;
  for (; number != 0 || digits.size() < leastDigits; number >>= 4)
    digits.insert(digits.begin(), kHexDigits[number & 15]);
  return digits;
}

/** Each byte as the character of its number. */
std::string BytesAsText(std::string_view bytes) {
  std::string text;
  for (const char byte : bytes) AppendUtf8(text, static_cast<unsigned char>(byte));
  return text;
}

std::string TextAsBytes(std::string_view text) {
  std::string bytes;
  for (std::size_t i = 0; i < text.size();) bytes += static_cast<char>(NextCharacter(text, i));
  return bytes;
}

bool IsUtf8(std::string_view text) {
  std::string again;
  for (std::size_t i = 0; i < text.size();) AppendUtf8(again, NextCharacter(text, i));
  return again == text;
}

/** What the text is called as a variant. */
std::string Tagged(std::string_view text) {
  if (!IsUtf8(text)) return std::string(kBytes) + BytesAsText(text) + ")";
  return (text.starts_with('@') ? "@" : "") + std::string(text);
}

std::string Untagged(std::string_view text) {
  if (text == "@Invalid()") return "";
  if (text.starts_with("@@")) return std::string(text.substr(1));
  if (!text.starts_with(kBytes) || !text.ends_with(')')) return std::string(text);
  return TextAsBytes(text.substr(kBytes.size(), text.size() - kBytes.size() - 1));
}

/** Reads the escape whose "\" stands at `i`, and moves on behind it. */
void TakeEscape(std::string& text, std::string_view value, std::size_t& i) {
  const std::string_view rest = value.substr(i + 1);
  const std::size_t letter = rest.empty() ? rest.npos : kLetters.find(rest[0]);
  if (letter != rest.npos) {
    text += kMeant[letter];
    i += 2;
    return;
  }
  const bool isHex = rest.starts_with('x');
  unsigned number = 0;
  const char *from = rest.data() + (isHex ? 1 : 0), *end = rest.data() + rest.size();
  const char* behind = std::from_chars(from, end, number, isHex ? 16 : 8).ptr;
  if (behind == from) {
    text += value[i++];
    return;
  }
  AppendUtf8(text, number & 0xFFFF);
  i = static_cast<std::size_t>(behind - value.data());
}

}  // namespace

std::string EscapedKey(std::string_view path) {
  std::string key;
  for (std::size_t i = 0; i < path.size();) {
    const char32_t c = NextCharacter(path, i);
    const char letter = static_cast<char>(c);
    if (c < 0x80 && Contains(kPlainInKeys, {&letter, 1}))
      key += letter;
    else
      key += c <= 0xFF ? "%" + Hex(c, 2) : "%U" + Hex(c, 4);
  }
  return key;
}

std::string EscapedValue(std::string_view text) {
  const std::string tagged = Tagged(text);
  const bool isQuoted = tagged.find_first_of(";,=") != tagged.npos || tagged.starts_with(' ') ||
                        tagged.ends_with(' ');
  std::string value(isQuoted ? "\"" : "");
  bool isBehindHex = false;
  for (const char c : tagged) {
    const std::size_t letter = c == '?' || c == '\'' ? kMeant.npos : kMeant.find(c);
    const bool isHex = letter == kMeant.npos && (static_cast<unsigned char>(c) < 0x20 ||
                                                 (isBehindHex && Contains(kHexDigits, {&c, 1})));
    if (letter != kMeant.npos)
      value.append(1, '\\').append(1, kLetters[letter]);
    else if (isHex)
      value += "\\x" + Hex(static_cast<unsigned char>(c), 1);
    else
      value += c;
    isBehindHex = isHex;
  }
  return value + (isQuoted ? "\"" : "");
}

std::string UnescapedValue(std::string_view value) {
  const auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\r'; };
  std::string text;
  // Blanks count within quotes alone, and between letters.
  std::size_t kept = 0;
  bool isQuoted = false, isStart = true;
  for (std::size_t i = 0; i < value.size();) {
    const char c = value[i];
    if (c == '"') {
      isQuoted = !isQuoted;
      ++i;
    } else if (c == ',' && !isQuoted) {
      text.resize(kept);
      text += ", ";
      kept = text.size();
      isStart = true;
      ++i;
      continue;
    } else if (isBlank(c) && !isQuoted) {
      if (!isStart) text += c;
      ++i;
      continue;
    } else if (c == '\\') {
      TakeEscape(text, value, i);
    } else {
      text += c;
      ++i;
    }
    isStart = false;
    kept = text.size();
  }
  text.resize(kept);
  return Untagged(text);
}

}  // namespace rws
