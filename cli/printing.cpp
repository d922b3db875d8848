#include "cli/printing.h"

#include <algorithm>
#include <iostream>

#include "library/columns.h"

namespace rws {

std::size_t Width(std::string_view text) {
  // Bytes of UTF-8 that go on with a character are none.
  return static_cast<std::size_t>(
      std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

std::string OnOneLine(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
  return text;
}

void PrintAligned(const std::vector<std::vector<std::string>>& lines,
                  const std::vector<bool>& toRight) {
  std::vector<std::size_t> widths(lines.empty() ? 0 : lines[0].size());
  for (const auto& line : lines)
    for (std::size_t i = 0; i < line.size(); ++i) widths[i] = std::max(widths[i], Width(line[i]));
  for (const auto& line : lines) {
    std::string text;
    for (std::size_t i = 0; i < line.size(); ++i) {
      const std::string fill(widths[i] - Width(line[i]), ' ');
      const bool isRight = i < toRight.size() && toRight[i];
      text += isRight ? fill + line[i] + "  " : line[i] + fill + "  ";
    }
    std::cout << text.substr(0, text.find_last_not_of(' ') + 1) << "\n";
  }
}

void PrintCsvLine(const std::vector<std::string>& cells) {
  for (std::size_t i = 0; i < cells.size(); ++i)
    std::cout << (i == 0 ? "" : ",") << CsvCell(cells[i]);
  std::cout << "\r\n";
}

}  // namespace rws
