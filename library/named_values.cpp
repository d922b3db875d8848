#include "library/named_values.h"

#include "services/text.h"

namespace rws {

namespace {

/** No file has so many words of one kind, unless it was made to. */
constexpr std::size_t kMostValues = (1U << 24) - 1;

bool IsCompared(char c) {
  return static_cast<unsigned char>(c) >= 0x80 || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
}

}  // namespace

void ShownNames::Add(std::string_view word, std::string_view shown) {
  names_.try_emplace(page_.LCase(word), shown);
}

std::string_view ShownNames::Of(std::string_view word) const {
  const auto found = names_.find(page_.LCase(word));
  return found == names_.end() ? std::string_view() : found->second;
}

ShownNames MapNames(const std::vector<MapRow>& maps, const CodePage& page) {
  ShownNames names(page);
  for (const auto& map : maps) names.Add(Trim(map.Path), map.Name);
  return names;
}

ShownNames AircraftNames(const Catalogues& catalogues, const CodePage& page) {
  ShownNames names(page);
  for (const auto& aircraft : catalogues.Aircraft) names.Add(aircraft.Class, aircraft.Name);
  return names;
}

ShownNames SquadronNames(const Catalogues& catalogues, const CodePage& page) {
  ShownNames names(page);
  for (const auto& row : catalogues.Squadrons)
    for (const auto& regiment : row.Regiments) names.Add(Trim(regiment.Code), regiment.UserData);
  return names;
}

std::string ComparedText(const CodePage& page, std::string_view text) {
  const std::string lower = page.LCase(text);
  std::string compared = lower;
  std::erase_if(compared, [](char c) { return !IsCompared(c); });
  return compared.empty() ? lower : compared;
}

NamedValues::NamedValues(ShownNames names, const CodePage& page)
    : page_(page), names_(std::move(names)) {
  values_.emplace_back();
  numbers_[""] = 0;
}

std::uint32_t NamedValues::NumberOf(std::string_view word) {
  const auto found = numbers_.find(word);
  if (found != numbers_.end()) return found->second;
  if (values_.size() >= kMostValues) return 0;
  const auto number = static_cast<std::uint32_t>(values_.size());
  const std::string_view shown = names_.Of(word);
  NamedValue& value = values_.emplace_back();
  value.Word = word;
  value.Shown = shown.empty() ? word : shown;
  value.Compared = ComparedText(page_, word) + "\n" + ComparedText(page_, value.Shown);
  numbers_.emplace(value.Word, number);
  return number;
}

}  // namespace rws
