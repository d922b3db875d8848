#include "services/code_page.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <set>
#include <utility>

namespace rws {
namespace {

TEST(CodePage, EveryByteSurvivesATrip) {
  std::string bytes;
  for (int b = 0; b < 256; ++b) bytes += static_cast<char>(b);
  for (const int number : {1250, 1251, 1252, 1253, 1254, 1257}) {
    const CodePage page(number);
    EXPECT_EQ(page.Number(), number);
    std::set<char32_t> characters;
    for (const char byte : bytes) {
      characters.insert(page.ToUnicode(byte));
      EXPECT_EQ(page.FromUnicode(page.ToUnicode(byte)), byte);
    }
    EXPECT_EQ(characters.size(), 256u);
    EXPECT_EQ(page.FromUtf8(page.ToUtf8(bytes)), bytes) << number;
  }
  EXPECT_EQ(CodePage(437).Number(), 1252);
}

TEST(CodePage, KnownCharactersAndUndefinedBytes) {
  const std::array<int, 3> rows[] = {
      {1250, 0xB3, 0x142}, {1250, 0xD5, 0x150},  {1251, 0xC0, 0x410}, {1251, 0xA8, 0x401},
      {1251, 0xFF, 0x44F}, {1252, 0x80, 0x20AC}, {1252, 0xE9, 0xE9},  {1253, 0xE1, 0x3B1},
      {1253, 0xD9, 0x3A9}, {1254, 0xDD, 0x130},  {1254, 0xF0, 0x11F}, {1257, 0xE0, 0x105},
      {1257, 0xF8, 0x173}, {1252, 0x81, 0x81},   {1251, 0x98, 0x98},  {1253, 0xD2, 0xD2},
      {1257, 0xA1, 0xA1},  {1254, 0x9E, 0x9E},   {1250, 0x83, 0x83}};
  for (const auto& [page, byte, character] : rows)
    EXPECT_EQ(CodePage(page).ToUnicode(static_cast<char>(byte)), static_cast<char32_t>(character));
}

TEST(CodePage, LetterCase) {
  const std::map<int, std::pair<const char*, const char*>> rows{
      {1250, {"\x8A\xA3\xD8 [WING]", "\x9A\xB3\xF8 [wing]"}},
      {1251, {"\xC0\xDF\xA8\xA5\x80\xB2", "\xE0\xFF\xB8\xB4\x90\xB3"}},
      {1252, {"\xC9\xD8\x8A\x9F\xD7_%", "\xE9\xF8\x9A\xFF\xD7_%"}},
      {1253, {"\xC1\xA2\xB8\xBA\xBC\xBE\xBF\xDB", "\xE1\xDC\xDD\xDF\xFC\xFD\xFE\xFB"}},
      {1254, {"\xD0\xDE TIME I\xDD\xFD", "\xF0\xFE time i\xDD\xFD"}},
      {1257, {"\xC0\xA8\xD8", "\xE0\xB8\xF8"}}};
  for (const auto& [number, texts] : rows) {
    const CodePage page(number);
    EXPECT_EQ(page.LCase(texts.first), texts.second) << number;
    EXPECT_EQ(page.UCase(texts.second), texts.first) << number;
  }
  // The Turkish letters keep their form in names too.
  EXPECT_EQ(FoldName("\xD0\x96\xC4\xB0I"), "\xD0\xB6\xC4\xB0i");
}

TEST(CodePage, Utf8) {
  EXPECT_EQ(CodePage(1252).ToUtf8("5\x80"), "5\xE2\x82\xAC");
  EXPECT_EQ(CodePage(1252).FromUtf8("5\xE2\x82\xAC"), "5\x80");
  EXPECT_FALSE(CodePage(1252).FromUtf8("\xD0\x9C") || CodePage(1252).FromUtf8("\xF0\x9F\x9B\xA9"));
  std::string text;
  AppendUtf8(text, 0x1F6E9);
  EXPECT_EQ(text, "\xF0\x9F\x9B\xA9");
  // The last two: a character cut off by the end, and a byte that only continues one.
  const std::pair<const char*, std::pair<char32_t, std::size_t>> rows[] = {
      {"\xF0\x9F\x9B\xA9", {0x1F6E9, 4}}, {"\xE2\x82", {0xE2, 1}}, {"\x82", {0x82, 1}}};
  for (const auto& [bytes, expected] : rows) {
    std::size_t at = 0;
    EXPECT_EQ(NextCharacter(bytes, at), expected.first);
    EXPECT_EQ(at, expected.second);
  }
}

TEST(CodePage, OfLocale) {
  const std::map<std::string, int> rows{
      {"pl_PL.UTF-8", 1250}, {"ru_RU.KOI8-R", 1251}, {"de_DE@euro", 1252}, {"uk", 1251}, {"", 1252},
      {"tr-TR", 1254},       {"lt_LT", 1257},        {"el", 1253},         {"C", 1252}};
  for (const auto& [name, page] : rows) EXPECT_EQ(CodePageOfLocale(name), page) << name;
}

}  // namespace
}  // namespace rws
