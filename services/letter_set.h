#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "services/text.h"

namespace rws {

/** Which ASCII letters, without regard to case, stand in a text, and whether a digit does: a bit
    each. */
using LetterSet = std::uint32_t;

namespace letters {
constexpr std::array<LetterSet, 256> MakeBits() {
  std::array<LetterSet, 256> bits{};
  for (unsigned i = 0; i < 26; ++i) bits['a' + i] = bits['A' + i] = LetterSet{1} << i;
  for (unsigned c = '0'; c <= '9'; ++c) bits[c] = LetterSet{1} << 26;
  bits['#'] = bits['0'];
  return bits;
}
inline constexpr std::array<LetterSet, 256> kBits = MakeBits();
}  // namespace letters

constexpr LetterSet LettersOf(std::string_view text) {
  LetterSet set = 0;
  for (const char c : text) set |= letters::kBits[static_cast<unsigned char>(c)];
  return set;
}

/** A pattern of `Like` in lower case, without "[list]", and what a text must hold to match it. */
struct LetterPattern {
  consteval LetterPattern(const char* text) : Text(text), Letters(LettersOf(Text)) {}

  std::string_view Text;
  LetterSet Letters;
};

/** A line that is tested against many patterns, most of which it cannot match. */
struct LetterLine {
  explicit LetterLine(const std::string& lower) : Lower(lower), Letters(LettersOf(lower)) {}

  bool Like(const LetterPattern& pattern) const {
    return (Letters & pattern.Letters) == pattern.Letters && rws::Like(Lower, pattern.Text);
  }

  const std::string& Lower;
  LetterSet Letters;
};

}  // namespace rws
