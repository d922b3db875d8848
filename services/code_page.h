#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

/** The system's single-byte encoding, in which missions, tables and briefings are kept. */
namespace rws {

/** One code page as a bijection between bytes and characters: a byte that the page leaves undefined
    stands for the control character of its own value, so every byte survives a trip through a
    text box. */
class CodePage {
 public:
  /** Pages 1250, 1251, 1252, 1253, 1254 and 1257; any other number gives 1252. */
  explicit CodePage(int number = 1252);

  int Number() const { return number_; }
  char32_t ToUnicode(char byte) const { return toUnicode_[static_cast<unsigned char>(byte)]; }
  /** The byte of a character, or nothing when the page has none for it. */
  std::optional<char> FromUnicode(char32_t character) const;

  /** Lower or upper case by the page's own letters. */
  std::string LCase(std::string_view text) const;
  std::string UCase(std::string_view text) const;
  /** As `LCase`, into a text that is used again. */
  void LCaseInto(std::string& result, std::string_view text) const;

  /** Mission text for prompts and names, which are UTF-8. */
  std::string ToUtf8(std::string_view text) const;
  /** The bytes of a UTF-8 text, or nothing when one of its characters cannot be spelled. */
  std::optional<std::string> FromUtf8(std::string_view text) const;

 private:
  int number_;
  std::array<char32_t, 256> toUnicode_;
  std::array<char, 256> lower_, upper_;
  std::unordered_map<char32_t, char> fromUnicode_;
};

/** The code page of a locale's language ("de_DE.UTF-8", "ru", "C"). */
int CodePageOfLocale(std::string_view localeName);

/** Simple lower case of the Latin, Greek and Cyrillic letters. The Turkish dotted and dotless i
    keep their form, so that an ASCII key is found by its ASCII letters on every system. */
char32_t LowerCharacter(char32_t c);

/** The upper case of a letter that `LowerCharacter` gives; any other character as it is. */
char32_t UpperCharacter(char32_t c);

/** Reads one character of UTF-8 at `position` and moves it on; a byte that is no UTF-8 stands for
    itself. */
char32_t NextCharacter(std::string_view utf8, std::size_t& position);

void AppendUtf8(std::string& text, char32_t c);

/** A UTF-8 file name in the form in which two names are compared without regard to case. */
std::string FoldName(std::string_view utf8);

}  // namespace rws
