#include "services/checksum.h"

#include <array>
#include <bit>
#include <cstdint>

namespace rws {

namespace {

constexpr std::size_t kBlock = 64;

using Word = std::uint32_t;
using State = std::array<Word, 5>;

Word WordAt(const char* bytes) {
  const auto at = [bytes](int i) { return Word{static_cast<unsigned char>(bytes[i])}; };
  return at(0) << 24 | at(1) << 16 | at(2) << 8 | at(3);
}

template <class Mix>
void AddRound(Word a, Word& b, Word c, Word d, Word& e, Word added, Mix mix) {
  e += added + mix(b, c, d) + std::rotl(a, 5);
  b = std::rotl(b, 30);
}

/** The twenty rounds that mix alike. The parts change places instead of being copied about, which
    takes half the time. */
template <class Mix>
void AddRounds(State& state, const Word* words, Word constant, Mix mix) {
  auto [a, b, c, d, e] = state;
  for (int i = 0; i < 20; i += 5) {
    AddRound(a, b, c, d, e, constant + words[i], mix);
    AddRound(e, a, b, c, d, constant + words[i + 1], mix);
    AddRound(d, e, a, b, c, constant + words[i + 2], mix);
    AddRound(c, d, e, a, b, constant + words[i + 3], mix);
    AddRound(b, c, d, e, a, constant + words[i + 4], mix);
  }
  state = {a, b, c, d, e};
}

void AddBlock(State& state, const char* block) {
  std::array<Word, 80> words;
  for (std::size_t i = 0; i < 16; ++i) words[i] = WordAt(block + 4 * i);
  for (std::size_t i = 16; i < 32; ++i)
    words[i] = std::rotl(words[i - 3] ^ words[i - 8] ^ words[i - 14] ^ words[i - 16], 1);
  // The same rule put into itself: no word waits for the three before it.
  for (std::size_t i = 32; i < words.size(); ++i)
    words[i] = std::rotl(words[i - 6] ^ words[i - 16] ^ words[i - 28] ^ words[i - 32], 2);
  const auto choose = [](Word b, Word c, Word d) { return d ^ (b & (c ^ d)); };
  const auto parity = [](Word b, Word c, Word d) { return b ^ c ^ d; };
  const auto most = [](Word b, Word c, Word d) { return (b & c) | (d & (b ^ c)); };
  State worked = state;
  AddRounds(worked, words.data(), 0x5A827999, choose);
  AddRounds(worked, words.data() + 20, 0x6ED9EBA1, parity);
  AddRounds(worked, words.data() + 40, 0x8F1BBCDC, most);
  AddRounds(worked, words.data() + 60, 0xCA62C1D6, parity);
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
    AddBlock(state, bytes.data() + i);
  for (std::size_t i = 0; i < ending.size(); i += kBlock) AddBlock(state, ending.data() + i);
  std::string text;
  for (const Word part : state)
    for (int shift = 28; shift >= 0; shift -= 4) text += "0123456789abcdef"[part >> shift & 0xF];
  return text;
}

}  // namespace rws
