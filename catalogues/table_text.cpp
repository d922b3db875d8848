#include "catalogues/table_text.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "catalogues/shipped_tables.h"
#include "services/checksum.h"

namespace rws {

namespace {

constexpr int kShippedPage = 1252;
constexpr char32_t kFirstBeyondAscii = 0x80;
constexpr std::string_view kNoLetter = "?";
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

struct Range {
  char32_t First;
  /** For each character from the first on, its base letters, between blanks. */
  std::string_view Letters;
};

constexpr Range kBaseLetters[] = {
    {0xA1, "! c L * Y | S \" c a < - - R - o + 2 3 ' u P . ' 1 o > 1/4 1/2 3/4 ?"},
    {0xC0,
     "A A A A A A AE C E E E E I I I I D N O O O O O x O U U U U Y Th ss a a a a a a ae c e e e e i"
     " i i i d n o o o o o / o u u u u y th y"},
    {0x100,
     "A a A a A a C c C c C c C c D d D d E e E e E e E e E e G g G g G g G g H h H h I i I i I i I"
     " i I i IJ ij J j K k k L l L l L l L l L l N n N n N n n N n O o O o O o OE oe R r R r R r S "
     "s"
     " S s S s S s T t T t T t U u U u U u U u U u U u W w Y y Y Z z Z z Z z s"},
    {0x192, "f"},
    {0x218, "S s T t"},
    {0x2010, "- - - - - -"},
    // No low quotation mark becomes a comma: that would cut a column in two.
    {0x2018, "' ' ' ' \" \" \" \""},
    {0x2020, "+ + *"},
    {0x2026, "..."},
    {0x2039, "< >"},
    {0x20AC, "EUR"},
    {0x2122, "TM"}};

std::string_view BaseLetters(char32_t character) {
  for (const auto& range : kBaseLetters) {
    if (character < range.First) continue;
    std::string_view rest = range.Letters;
    for (char32_t c = range.First; !rest.empty(); ++c) {
      const std::size_t end = std::min(rest.find(' '), rest.size());
      if (c == character) return rest.substr(0, end);
      rest.remove_prefix(std::min(end + 1, rest.size()));
    }
  }
  return kNoLetter;
}

void Append(std::string& text, const CodePage& page, char32_t character) {
  if (const auto byte = page.FromUnicode(character))
    text += *byte;
  else
    text += BaseLetters(character);
}

bool IsShipped(std::string_view bytes) {
  const std::string checksum = Sha1(bytes);
  return std::find(kShippedChecksums.begin(), kShippedChecksums.end(), checksum) !=
         kShippedChecksums.end();
}

}  // namespace

std::string TableText(const CodePage& page, std::string bytes) {
  std::string text;
  if (bytes.starts_with(kUtf8Mark)) {
    for (std::size_t i = kUtf8Mark.size(); i < bytes.size();)
      Append(text, page, NextCharacter(bytes, i));
    return text;
  }
  if (page.Number() == kShippedPage || !IsShipped(bytes)) return bytes;
  const CodePage shipped(kShippedPage);
  for (const char byte : bytes) Append(text, page, shipped.ToUnicode(byte));
  return text;
}

std::optional<std::string> TextInPage(const CodePage& page, std::string_view utf8) {
  std::string text;
  for (std::size_t i = 0; i < utf8.size();) {
    const char32_t character = NextCharacter(utf8, i);
    if (character >= kFirstBeyondAscii && !page.FromUnicode(character) &&
        BaseLetters(character) == kNoLetter) {
      return {};
    }
    Append(text, page, character);
  }
  return text;
}

}  // namespace rws
