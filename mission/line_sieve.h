#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

#include "mission/line_array.h"

namespace rws {

/** The same for both cases of a letter, and for few other characters. */
constexpr unsigned char Folded(char c) { return static_cast<unsigned char>(c) | 0x20; }

/** Two neighbouring characters of a word, in lower case. */
struct LetterPair {
  char First, Second;
};

/** True if one of the pairs stands in a word in lower case; what a sieve lets through. */
template <std::size_t N>
constexpr bool HoldsPair(std::string_view word, const std::array<LetterPair, N>& pairs) {
  for (std::size_t i = 0; i + 1 < word.size(); ++i)
    for (const LetterPair& pair : pairs)
      if (word[i] == pair.First && word[i + 1] == pair.Second) return true;
  return false;
}

/** Finds the lines that may hold one of a few words, in any case of ASCII letters, in one run over
    the whole text: of each word two neighbouring letters that are rare elsewhere. Never leaves a
    line out that holds one; lets some through that hold none. The lines must stay as they are. */
template <auto kPairs>
class LineSieve {
 public:
  explicit LineSieve(const LineArray& lines) : lines_(lines), text_(lines.FileText()) {}

  /** The first such line from line `from` on, or `size()`; asked for in ascending order. */
  std::size_t Next(std::size_t from) {
    if (from >= lines_.size()) return lines_.size();
    const std::size_t start = lines_.Start(from);
    if (start < heldUpTo_) return from;
    for (std::size_t at = start; at < text_.size(); at += kBlock) {
      if (!MayHold(at)) continue;
      heldUpTo_ = at + kBlock;
      return lines_.LineAt(at);
    }
    return lines_.size();
  }

 private:
  static constexpr std::size_t kBlock = 128;

  bool MayHold(std::size_t at) const {
    if (at + kBlock < text_.size()) return AnyPair(text_.data() + at, kBlock);
    return AnyPair(text_.data() + at, text_.size() - at - 1);
  }

  /** Without a branch, so that the compiler looks at many characters at a time. */
  static bool AnyPair(const char* text, std::size_t count) {
    unsigned char least = 0xFF;
    for (std::size_t i = 0; i < count; ++i) {
      const unsigned char first = Folded(text[i]), second = Folded(text[i + 1]);
      for (const LetterPair& pair : kPairs) {
        const int differs = (first ^ Folded(pair.First)) | (second ^ Folded(pair.Second));
        least = std::min(least, static_cast<unsigned char>(differs));
      }
    }
    return least == 0;
  }

  const LineArray& lines_;
  std::string_view text_;
  /** All lines that begin ahead of this offset are let through. */
  std::size_t heldUpTo_ = 0;
};

}  // namespace rws
