#include "mission/kept_keys.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "services/numbers.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr std::string_view kIndent = "  ";

bool Matches(std::string_view key, std::string_view listed) {
  if (!listed.ends_with('#')) return EqualNoCase(key, listed);
  listed.remove_suffix(1);
  return key.size() == listed.size() + 1 && key.back() >= '0' && key.back() <= '3' &&
         EqualNoCase(key.substr(0, listed.size()), listed);
}

/** Keys of planes follow one another by their numbers. */
std::size_t Rank(const KeyOrder& order, std::string_view key) {
  for (std::size_t i = 0; i < order.size(); ++i)
    if (Matches(key, order[i]))
      return 4 * i + (order[i].ends_with('#') ? static_cast<std::size_t>(key.back() - '0') : 0);
  return 4 * order.size();
}

std::string_view IndentOf(std::string_view line) {
  return line.substr(0, std::min(line.find_first_not_of(" \t"), line.size()));
}

void AddKey(const KeptText& text, LinePatch& patch, const KeptSection& section,
            const KeyOrder& order, std::string_view key, std::string_view value) {
  const std::size_t rank = Rank(order, key);
  std::size_t place = section.First;
  std::string_view indent = kIndent;
  for (std::size_t i = section.First; i < section.Last; ++i) {
    const auto other = KeyOf(text.Lines()[i]).Key;
    if (other.empty()) continue;
    if (place == section.First) indent = IndentOf(text.Lines()[i]);
    if (Rank(order, other) <= rank) place = i + 1;
  }
  patch.Insert(place, std::string(indent).append(key).append(" ").append(value));
}

std::size_t Decimals(std::string_view number) {
  const std::size_t dot = number.find('.');
  return dot == number.npos ? 0 : number.size() - dot - 1;
}

}  // namespace

const KeyOrder kMainKeys = {"MAP",         "TIME",   "TIMECONSTANT", "WEAPONSCONSTANT", "CloudType",
                            "CloudHeight", "player", "army",         "playerNum"};
const KeyOrder kFlightKeys = {"Planes", "OnlyAI",   "Parachute", "Skill",     "Skill#",
                              "skin#",  "noseart#", "pilot#",    "numberOn#", "Class",
                              "Fuel",   "weapons",  "StartTime"};

void SetKey(const KeptText& text, LinePatch& patch, const KeptSection& section,
            const KeyOrder& order, std::string_view key, std::string_view value) {
  bool found = false;
  for (std::size_t i = section.First; i < section.Last; ++i) {
    const std::string_view line = text.Lines()[i];
    const KeptKey old = KeyOf(line);
    if (!EqualNoCase(old.Key, key)) continue;
    if (value.empty()) {
      patch.Remove(i);
      continue;
    }
    if (std::exchange(found, true)) continue;
    std::string changed(line.substr(0, old.ValueAt));
    if (old.Value.empty()) changed += ' ';
    patch.Replace(i, changed.append(value).append(line.substr(old.ValueAt + old.Value.size())));
  }
  if (!found && !value.empty()) AddKey(text, patch, section, order, key, value);
}

void RenameSection(const KeptText& text, LinePatch& patch, const KeptSection& section,
                   std::string_view name) {
  std::string header(text.Lines()[section.Header]);
  const auto at =
      static_cast<std::size_t>(section.Name.data() - text.Lines()[section.Header].data());
  patch.Replace(section.Header, header.replace(at, section.Name.size(), name));
}

std::size_t EndOfSection(const KeptText& text, const KeptSection& section) {
  std::size_t end = section.Last;
  while (end > section.First && text.Lines()[end - 1].find_first_not_of(" \t") == std::string::npos)
    --end;
  return end;
}

std::string NumberLike(std::string_view old, std::string_view value) {
  const double number = Val(value);
  std::size_t decimals = std::max(Decimals(old), Decimals(value));
  // The builder writes the zeros of a take-off without decimals, and any other number with two.
  if (number != 0 && (old == "0" || !IsNumeric(old))) decimals = std::max<std::size_t>(decimals, 2);
  return FormatNumber(number, decimals == 0 ? "0" : "0." + std::string(decimals, '0'));
}

WordLine::WordLine(std::string_view line) {
  std::size_t behind = 0;
  for (const auto& word : KeptWords(line)) {
    gaps_.emplace_back(line.substr(behind, word.At - behind));
    words_.emplace_back(word.Text);
    behind = word.At + word.Text.size();
  }
  rest_ = line.substr(behind);
}

void WordLine::Set(std::size_t place, std::string word) {
  while (words_.size() <= place) Insert(words_.size(), "0");
  words_[place] = std::move(word);
}

void WordLine::Insert(std::size_t place, std::string word) {
  const auto at = static_cast<std::ptrdiff_t>(std::min(place, words_.size()));
  gaps_.insert(gaps_.begin() + at, words_.empty() ? std::string(kIndent) : " ");
  words_.insert(words_.begin() + at, std::move(word));
}

void WordLine::Erase(std::size_t place) {
  if (place >= words_.size()) return;
  gaps_.erase(gaps_.begin() + static_cast<std::ptrdiff_t>(place));
  words_.erase(words_.begin() + static_cast<std::ptrdiff_t>(place));
}

std::string WordLine::Text() const {
  std::string text;
  for (std::size_t i = 0; i < words_.size(); ++i) text.append(gaps_[i]).append(words_[i]);
  return text + rest_;
}

}  // namespace rws
