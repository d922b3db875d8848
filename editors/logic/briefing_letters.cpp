#include "editors/logic/briefing_letters.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <vector>

namespace rws {

namespace {

constexpr std::size_t kEscapeLength = 6;
constexpr char16_t kFirstBeyondAscii = 0x80;

struct Spelled {
  char16_t Letter;
  std::string_view Bytes;
  bool IsEscape() const { return Bytes.size() > 1; }
};

/** The number of an escape at the start of these bytes. */
std::optional<char16_t> EscapeAt(std::string_view bytes) {
  constexpr int kHexadecimal = 16;
  if (bytes.size() < kEscapeLength || !bytes.starts_with("\\u")) return {};
  std::uint16_t code = 0;
  const char* const end = bytes.data() + kEscapeLength;
  const auto read = std::from_chars(bytes.data() + 2, end, code, kHexadecimal);
  if (read.ec != std::errc() || read.ptr != end) return {};
  return static_cast<char16_t>(code);
}

bool IsFirstHalf(char16_t c) { return c >= 0xD800 && c < 0xDC00; }
bool IsSecondHalf(char16_t c) { return c >= 0xDC00 && c < 0xE000; }

/** False for what a text box cannot hold as it is: control characters, breaks, codes of its own. */
bool IsLetter(char16_t c) {
  const bool isControl = c < 0x20 || (c >= 0x7F && c < 0xA0) || c == 0x2028 || c == 0x2029;
  return !isControl && !(c >= 0xD800 && c < 0xE000) && !(c >= 0xFDD0 && c <= 0xFDEF) && c < 0xFFF9;
}

std::vector<Spelled> Units(const CodePage& page, std::string_view bytes) {
  std::vector<Spelled> units;
  units.reserve(bytes.size());
  const auto take = [&](char16_t letter, std::size_t length) {
    units.push_back({letter, bytes.substr(0, length)});
    bytes.remove_prefix(length);
  };
  while (!bytes.empty()) {
    const auto code = EscapeAt(bytes);
    const auto next = code ? EscapeAt(bytes.substr(kEscapeLength)) : std::nullopt;
    if (code && next && IsFirstHalf(*code) && IsSecondHalf(*next)) {
      take(*code, kEscapeLength);
      take(*next, kEscapeLength);
    } else if (code && IsLetter(*code)) {
      take(*code, kEscapeLength);
    } else {
      take(static_cast<char16_t>(page.ToUnicode(bytes[0])), 1);
    }
  }
  return units;
}

/** Pairs the letters of two texts that were not touched on the way from one to the other. */
class Untouched {
 public:
  Untouched(const std::vector<Spelled>& before, std::u16string_view after)
      : Partners(after.size(), -1), before_(before), after_(after) {
    auto n = std::ssize(before_), m = std::ssize(after_);
    while (first_ < std::min(n, m) && Same(first_, first_)) Pair(first_, first_), ++first_;
    for (; n > first_ && m > first_ && Same(n - 1, m - 1); --n, --m) Pair(n - 1, m - 1);
    rows_ = n - first_;
    columns_ = m - first_;
    PairMiddle();
  }

  /** For each letter afterwards its place before; -1 for a new one. */
  std::vector<std::ptrdiff_t> Partners;

 private:
  using Index = std::ptrdiff_t;

  bool Same(Index b, Index a) const {
    return before_[static_cast<std::size_t>(b)].Letter == after_[static_cast<std::size_t>(a)];
  }
  void Pair(Index b, Index a) { Partners[static_cast<std::size_t>(a)] = b; }

  /** The farthest row on each diagonal after so many edits; diagonals count from -edits. */
  using Reach = std::vector<Index>;
  static Index& On(Reach& reach, Index edits, Index diagonal) {
    return reach[static_cast<std::size_t>(edits + diagonal)];
  }
  /** True if the way to this diagonal comes from the one above: a letter was put in. */
  static bool ComesFromAbove(Reach& last, Index edits, Index diagonal) {
    if (diagonal == -edits) return true;
    return diagonal != edits &&
           On(last, edits - 1, diagonal - 1) < On(last, edits - 1, diagonal + 1);
  }
  Index StartOf(Reach& last, Index edits, Index diagonal) const {
    if (edits == 0) return 0;
    return ComesFromAbove(last, edits, diagonal) ? On(last, edits - 1, diagonal + 1)
                                                 : On(last, edits - 1, diagonal - 1) + 1;
  }

  /** The shortest way from one text to the other. Beyond so many edits hardly anything was left
      alone; what is the same nevertheless then counts as new. */
  void PairMiddle() {
    constexpr Index kMostEdits = 1500;
    std::vector<Reach> reaches;
    Reach none{0};
    for (Index edits = 0; edits <= std::min(rows_ + columns_, kMostEdits); ++edits) {
      Reach& last = reaches.empty() ? none : reaches.back();
      Reach now(static_cast<std::size_t>(2 * edits + 1));
      for (Index diagonal = -edits; diagonal <= edits; diagonal += 2) {
        Index row = StartOf(last, edits, diagonal);
        while (row < rows_ && row - diagonal < columns_ &&
               Same(first_ + row, first_ + row - diagonal))
          ++row;
        On(now, edits, diagonal) = row;
        if (row >= rows_ && row - diagonal >= columns_) return WalkBack(reaches, edits, diagonal);
      }
      reaches.push_back(std::move(now));
    }
  }

  void WalkBack(std::vector<Reach>& reaches, Index edits, Index diagonal) {
    Index row = rows_;
    for (; edits >= 0; --edits) {
      Reach none{0};
      Reach& last = edits == 0 ? none : reaches[static_cast<std::size_t>(edits - 1)];
      const Index start = StartOf(last, edits, diagonal);
      for (; row > start; --row) Pair(first_ + row - 1, first_ + row - 1 - diagonal);
      if (edits == 0) return;
      const bool above = ComesFromAbove(last, edits, diagonal);
      if (!above) --row;
      diagonal += above ? 1 : -1;
    }
  }

  const std::vector<Spelled>& before_;
  std::u16string_view after_;
  Index first_ = 0, rows_ = 0, columns_ = 0;
};

std::string Escape(char16_t letter) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string text = "\\u";
  for (int shift = 12; shift >= 0; shift -= 4) text += kDigits[(letter >> shift) & 0xF];
  return text;
}

}  // namespace

std::u16string BriefingLetters(const CodePage& page, std::string_view bytes) {
  std::u16string letters;
  for (const auto& unit : Units(page, bytes)) letters += unit.Letter;
  return letters;
}

std::string SpellBriefing(const CodePage& page, std::string_view before, std::u16string_view text) {
  const auto units = Units(page, before);
  std::map<char16_t, std::string_view> escapes;
  for (const auto& unit : units)
    if (unit.IsEscape() && unit.Letter >= kFirstBeyondAscii)
      escapes.emplace(unit.Letter, unit.Bytes);
  const bool hasEscapes =
      std::any_of(units.begin(), units.end(), [](const auto& unit) { return unit.IsEscape(); });
  // Without escapes a letter has one spelling only, wherever it stands.
  const auto partners =
      hasEscapes ? Untouched(units, text).Partners : std::vector<std::ptrdiff_t>(text.size(), -1);
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = page.FromUnicode(text[i]);
    if (partners[i] >= 0)
      bytes += units[static_cast<std::size_t>(partners[i])].Bytes;
    else if (const auto found = escapes.find(text[i]); found != escapes.end())
      bytes += found->second;
    else if (byte)
      bytes += *byte;
    else
      bytes += Escape(text[i]);
  }
  return bytes;
}

}  // namespace rws
