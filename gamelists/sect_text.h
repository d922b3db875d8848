#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace rws {

/** A line "key value" of one of the game's lists of sections. Views point into the file's bytes. */
struct SectLine {
  std::string_view Section, Key, Value;
  std::size_t SectionNumber =
      0;                 // of several sections of one name the game may take the first only
  std::size_t Line = 0;  // from 1 on
};

/** The lines of all sections as the game takes them apart: "#", ";", "//" and any control character
    begin a comment wherever they stand, the key ends at the first blank or tab, order and doubles
    are kept. Lines before the first section are dropped. */
std::vector<SectLine> SectLines(std::string_view bytes);

/** The lines of the first section of that name, in any letter case. */
std::vector<SectLine> FirstSection(const std::vector<SectLine>& lines, std::string_view name);

/** The words of a value. */
std::vector<std::string_view> SectWords(std::string_view value);

}  // namespace rws
