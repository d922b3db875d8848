#include "library/section_names.h"

#include <algorithm>

#include "services/text.h"

namespace rws {

namespace {

constexpr std::size_t kFirstSlots = 256;

std::uint64_t Hash(std::uint64_t hash, std::string_view text) {
  for (const char c : text)
    hash = (hash ^ static_cast<unsigned char>(LowerAscii(c))) * 0x100000001B3ULL;
  return hash;
}

bool IsJoined(std::string_view name, std::string_view start, std::string_view ending) {
  return name.size() == start.size() + ending.size() &&
         EqualNoCase(name.substr(0, start.size()), start) &&
         EqualNoCase(name.substr(start.size()), ending);
}

}  // namespace

void SectionNames::Clear() {
  names_.clear();
  // A huge text must not make each small one behind it pay for its slots.
  if (slots_.size() > kFirstSlots) slots_.resize(kFirstSlots);
  std::fill(slots_.begin(), slots_.end(), kNone);
}

std::size_t SectionNames::SlotOf(std::string_view name, std::string_view ending) const {
  const std::uint64_t hash = Hash(Hash(0xCBF29CE484222325ULL, name), ending);
  std::size_t slot = (hash ^ (hash >> 32)) & (slots_.size() - 1);
  while (slots_[slot] != kNone && !IsJoined(names_[slots_[slot]], name, ending))
    slot = (slot + 1) & (slots_.size() - 1);
  return slot;
}

void SectionNames::Grow() {
  slots_.assign(std::max(kFirstSlots, slots_.size() * 2), kNone);
  for (std::uint32_t i = 0; i < names_.size(); ++i) slots_[SlotOf(names_[i], {})] = i;
}

std::uint32_t SectionNames::Add(std::string_view name) {
  if (names_.size() * 2 >= slots_.size()) Grow();
  std::uint32_t& slot = slots_[SlotOf(name, {})];
  if (slot == kNone) {
    slot = static_cast<std::uint32_t>(names_.size());
    names_.push_back(name);
  }
  return slot;
}

std::uint32_t SectionNames::Find(std::string_view name, std::string_view ending) const {
  return slots_.empty() ? kNone : slots_[SlotOf(name, ending)];
}

}  // namespace rws
