#pragma once

#include <QCoreApplication>
#include <QString>
#include <string_view>

namespace rws {

/** The side of an aircraft in words, by its colour word, for who cannot tell the colours; "not" is
    an aircraft that the installed game lacks. */
inline QString ArmyText(std::string_view colorWord) {
  const auto text = [](const char* words) {
    return QCoreApplication::translate("rws::ArmyText", words);
  };
  if (colorWord == "not") return text("Not supported by the installed game");
  if (colorWord == "red") return text("Red army");
  if (colorWord == "blue") return text("Blue army");
  if (colorWord == "white") return text("White army");
  return text("No army");
}

}  // namespace rws
