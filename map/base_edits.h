#pragma once

#include <cstddef>
#include <string>

#include "map/geometry.h"
#include "mission/document.h"
#include "services/services.h"

/** Edits of home bases where they lie, for a current mission whose lines are kept: only then the
    sections that are named by a base's coordinates follow. In any other mission nothing is changed
    and the answer is false. Bases count from 0; one that is not there is a subscript fault. */
namespace rws {

/** True if the current mission's home bases can be moved, and their lists edited as text. */
bool MayEditBases(const Document& doc);

/** Puts a base elsewhere, in whole metres. Where another base stands already it goes a metre beside
    it: sections are named by the coordinates. */
bool MoveBase(Document& doc, std::size_t base, MapPoint to);

/** Gives it another radius, in whole metres, from 500 to 10000 as the game allows. */
bool ResizeBase(Document& doc, std::size_t base, double radius);

/** What the file tells of a base, with the edits that were not written yet: its line, and the lines
    of its aircraft with their limits and loadouts, and of its countries. */
struct BaseLines {
  std::string Line;                 // words of "[BornPlace]"
  std::string Aircraft, Countries;  // a line each, parted by line feeds
};
BaseLines LinesOfBase(const Document& doc, const Services& services, std::size_t base);

/** Takes edited lines. Their first four words must stay numbers, and no line may open a section: ""
    when all is taken, else the reason for the user, and nothing is changed. */
std::string SetLinesOfBase(Document& doc, const Services& services, std::size_t base,
                           const BaseLines& lines);

}  // namespace rws
