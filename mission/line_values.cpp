#include "mission/line_values.h"

#include <algorithm>

#include "services/faults.h"
#include "services/numbers.h"
#include "services/paths.h"
#include "services/text.h"

namespace rws {

std::string GetValue(std::string_view line) {
  const std::string_view trimmed = Trim(line);
  const std::size_t blank = trimmed.find(' ');
  if (blank == trimmed.npos || trimmed.find(' ', blank + 1) != trimmed.npos) return "";
  return std::string(trimmed.substr(blank + 1));
}

int GetNumber(std::string_view line) {
  const auto digit =
      std::find_if(line.begin(), line.end(), [](char c) { return c >= '0' && c <= '9'; });
  return digit == line.end() ? -1 : *digit - '0';
}

std::string_view IntegerPart(std::string_view text) {
  std::size_t point = text.npos;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == ',') return text.substr(0, i);
    if (text[i] == '.' && point == text.npos) point = i;
  }
  return text.substr(0, point);
}

std::string WholeNumberWord(std::string_view word) {
  // Nearly all are written as they come out, with decimals to drop.
  const std::size_t digits = PlainDigits(word);
  if (digits > 0 && (digits == word.size() || word[digits] == '.'))
    return std::string(word.substr(0, digits));
  if (Val(word) == 0) word = "0";
  return FormatNumber(IntegerPart(word), "####0");
}

std::string GetMapName(const Document& doc, const Services& services, std::string_view mapPath) {
  const std::string wanted = services.Page.LCase(Trim(mapPath));
  for (const auto& map : doc.Maps)
    if (services.Page.LCase(Trim(map.Path)) == wanted) return map.Name;
  return "";
}

std::string GetBriefSoundPath(const Document& doc, const Services& services,
                              std::string_view line) {
  const auto words = SplitAt(Trim(line), ' ');
  return BuildPath(doc.GamePath, services.Page.ToUtf8(Replace(At(words, 1), "/", "\\")));
}

}  // namespace rws
