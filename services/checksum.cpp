#include "services/checksum.h"

#include <array>
#include <bit>
#include <cstdint>

namespace rws {

namespace {

constexpr std::size_t kBlock = 64;

using State = std::array<std::uint32_t, 5>;

struct Round {
  std::uint32_t Mixed, Constant;
};

Round RoundOf(int step, std::uint32_t b, std::uint32_t c, std::uint32_t d) {
  if (step < 20) return {(b & c) | (~b & d), 0x5A827999};
  if (step < 40) return {b ^ c ^ d, 0x6ED9EBA1};
  if (step < 60) return {(b & c) | (b & d) | (c & d), 0x8F1BBCDC};
  return {b ^ c ^ d, 0xCA62C1D6};
}

void AddBlock(State& state, std::string_view block) {
  std::array<std::uint32_t, 80> words{};
  for (std::size_t i = 0; i < kBlock; ++i)
    words[i / 4] = words[i / 4] << 8 | static_cast<unsigned char>(block[i]);
  for (std::size_t i = 16; i < words.size(); ++i)
    words[i] = std::rotl(words[i - 3] ^ words[i - 8] ^ words[i - 14] ^ words[i - 16], 1);
  auto [a, b, c, d, e] = state;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const Round round = RoundOf(static_cast<int>(i), b, c, d);
    const std::uint32_t next = std::rotl(a, 5) + round.Mixed + e + round.Constant + words[i];
    e = d;
    d = c;
    c = std::rotl(b, 30);
    b = a;
    a = next;
  }
  const State worked{a, b, c, d, e};
  for (std::size_t i = 0; i < state.size(); ++i) state[i] += worked[i];
}

/** What stands behind the whole blocks: the rest, a bit, zeros and the length in bits. */
std::string Ending(std::string_view bytes) {
  std::string ending(bytes.substr(bytes.size() / kBlock * kBlock));
  ending += '\x80';
  while (ending.size() % kBlock != kBlock - 8) ending += '\0';
  const std::uint64_t bits = std::uint64_t{bytes.size()} * 8;
  for (int shift = 56; shift >= 0; shift -= 8) ending += static_cast<char>(bits >> shift & 0xFF);
  return ending;
}

}  // namespace

std::string Sha1(std::string_view bytes) {
  State state{0x67452301, 0xEFCDAB89, 0x98BADCFE, 0x10325476, 0xC3D2E1F0};
  const std::string ending = Ending(bytes);
  for (std::size_t i = 0; i + kBlock <= bytes.size(); i += kBlock)
    AddBlock(state, bytes.substr(i, kBlock));
  for (std::size_t i = 0; i < ending.size(); i += kBlock)
    AddBlock(state, std::string_view(ending).substr(i, kBlock));
  std::string text;
  for (const std::uint32_t part : state)
    for (int shift = 28; shift >= 0; shift -= 4) text += "0123456789abcdef"[part >> shift & 0xF];
  return text;
}

}  // namespace rws
