#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "mission/kept_text.h"
#include "mission/line_patch.h"
#include "mission/records.h"

/** Edits of home bases in the lines of their own. */
namespace rws {

/** Brings the lines of home bases from what was read from them to the edited records. Sections that
    are named by the coordinates of a base follow one that is moved. */
void EditHomeBases(const KeptText& text, LinePatch& patch, const std::vector<BornPlace>& read,
                   const std::vector<BornPlace>& edited);

/** True if what two records know of the aircraft that both list, beside their names, is the same.
    One that has read no section, such as that of a mission that is written anew, knows nothing. */
bool SameAircraft(const BornPlace& a, const BornPlace& b);

/** For each aircraft of a base's section: true if the record knows something else of it. */
std::vector<bool> ChangedAircraft(const KeptText& text, const KeptSection& section,
                                  const BornPlace& base);

/** What a section tells (see `KeptPlanes`) with the aircraft that `to` has beside `from`, or knows
    otherwise, as `to` knows them. */
std::string PatchedAircraft(std::string_view section, const BornPlace& from, const BornPlace& to);

/** A section whose name holds the coordinates of a base: "MDS_BornPlace_12_34_Countries". */
struct PlacedSection {
  const KeptSection* Section = nullptr;
  std::size_t At = 0;      // where the coordinates begin in its name
  std::size_t Length = 0;  // of both and the "_" between
};
/** Those of a base, counted from 0. None where another base stands at the same place, whose they
   are as well. */
std::vector<PlacedSection> SectionsAtBase(const KeptText& text, std::size_t base);

/** The coordinates of a base as they stand in its line, "X_Y"; "" for a line that has none. */
std::string PlaceInBaseLine(std::string_view line);

/** Names those sections after another place. */
void MoveBaseSections(const KeptText& text, LinePatch& patch, std::size_t base,
                      const std::string& place);

/** The line behind the bases and what belongs to those ahead of this one. The text must hold
    "[BornPlace]". */
std::size_t PlaceOfBaseSection(const KeptText& text, std::size_t base);

}  // namespace rws
