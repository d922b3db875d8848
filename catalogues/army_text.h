#pragma once

#include <string_view>

namespace rws {

/** The side of an aircraft in words, by its colour word, for who cannot tell the colours; "not" is
    an aircraft that the installed game lacks. */
constexpr std::string_view ArmyText(std::string_view colorWord) {
  if (colorWord == "not") return "Not supported by the installed game";
  if (colorWord == "red") return "Red army";
  if (colorWord == "blue") return "Blue army";
  if (colorWord == "white") return "White army";
  return "No army";
}

}  // namespace rws
