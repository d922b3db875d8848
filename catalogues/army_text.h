#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

/** An aircraft's side by its colour word; "not" is an aircraft that the installed game lacks. */
namespace rws {

/** The side in words, for who cannot tell the colours. */
constexpr std::string_view ArmyText(std::string_view colorWord) {
  if (colorWord == "not") return "Not supported by the installed game";
  if (colorWord == "red") return "Red army";
  if (colorWord == "blue") return "Blue army";
  if (colorWord == "white") return "White army";
  return "No army";
}

/** Text colour, blue-green-red; nothing for a word that is no army. */
constexpr std::optional<std::int32_t> ArmyColor(std::string_view colorWord) {
  if (colorWord == "red") return 0x0000FF;
  if (colorWord == "blue") return 0xFF0000;
  if (colorWord == "white") return 0x000000;
  if (colorWord == "not") return 0x808080;
  return {};
}

}  // namespace rws
