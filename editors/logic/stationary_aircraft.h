#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "catalogues/catalogues.h"
#include "mission/line_array.h"
#include "services/services.h"

/** The parked aircraft of a mission, without the dialog that changes them. They stand in the lines
    that the writer copies, so a change is a change of those lines. Texts are in the encoding of
    mission text; indexes count from 0. */
namespace rws {

/** One parked aircraft. */
struct StaticPlane {
  std::string PlaneClass;  // "" for a line without "$", which is shown but never changed
  std::size_t LineIndex = 0;
  std::string Country;  // code, "null" for no country
};

/** Every line that holds "planes.Plane", whatever its section. */
std::vector<StaticPlane> FindStaticPlanes(const LineArray& lines);

/** One parked aircraft as the list shows it. */
struct StaticRow {
  std::size_t Plane = 0;  // index among the parked aircraft
  std::string PlaneName;
  bool Flyable = false;
  std::string Country;
  std::string SortKey;    // hidden: country and aircraft
  std::string ColorWord;  // of the country's army, else of the aircraft's; "not" if the installed
                          // game lacks the aircraft
};

/** The rows in the order of the aircraft. */
std::vector<StaticRow> MakeStaticRows(const std::vector<StaticPlane>& planes,
                                      const Catalogues& catalogues, const Services& services);

/** Sorts by the hidden key without regard to letter case; equal rows stay in the order of the
    aircraft in both directions. */
void SortStaticRows(std::vector<StaticRow>& rows, const CodePage& page, bool descending);

/** Gives the chosen aircraft one type and country: a display name and a code as the dialog that
    changes aircraft hands them out. False, and nothing changed, if that was left without a choice.
    A code of "" stands for no country. */
bool ChangeStaticPlanes(std::vector<StaticPlane>& planes, const std::vector<std::size_t>& chosen,
                        const Catalogues& catalogues, std::string_view name, std::string_view code);

/** Writes all aircraft, changed or not, to their lines: the old class gives way to the new one
    wherever it stands in the line, the country to the new code, which a line without one gets at
    its end. True if a line was written. A failure leaves all lines as they were. */
bool ApplyStaticPlanes(const std::vector<StaticPlane>& planes, LineArray& lines);

/** The same, where nothing but the words that were changed may become others. */
bool ApplyKeptStaticPlanes(const std::vector<StaticPlane>& planes, LineArray& lines);

}  // namespace rws
