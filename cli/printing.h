#pragma once

#include <string>
#include <string_view>
#include <vector>

/** How commands print lists. */
namespace rws {

/** Characters of a UTF-8 text. */
std::size_t Width(std::string_view text);

/** A tab or line end would break a table. */
std::string OnOneLine(std::string text);

/** Prints lines of cells, the first of them the titles, in columns of the same width; `toRight` are
    those that stand to the right. */
void PrintAligned(const std::vector<std::vector<std::string>>& lines,
                  const std::vector<bool>& toRight = {});

/** Prints one line of a CSV file. */
void PrintCsvLine(const std::vector<std::string>& cells);

}  // namespace rws
