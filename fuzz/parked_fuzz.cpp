#include "editors/logic/stationary_aircraft.h"
#include "fuzz/support.h"
#include "services/text.h"

/** Finds the parked aircraft of a mission and gives one of them another type and country. */

namespace {

using namespace rws;

Catalogues Tables() {
  Catalogues tables;
  tables.Aircraft = {{"Red", "P-51D", "P_51D20NA", "P51D20NA", "", {}, true, false},
                     {"Blue", "Me 109", "BF_109G6", "", "", {}, true, false, "BF_109G6_PARKED"}};
  tables.Countries = {{"Germany", "", "de", "blue"}, {"None", "", "null", "zz"}};
  return tables;
}

void ChangeOne(const LineArray& lines, std::vector<StaticPlane> planes, const Catalogues& tables) {
  const std::size_t chosen = lines.FileText().size() % planes.size();
  const bool hasClass = !planes[chosen].PlaneClass.empty();
  fuzz::Require(ChangeStaticPlanes(planes, {chosen}, tables, "P-51D", "de"), "A choice is one.");
  LineArray kept = lines;
  ApplyKeptStaticPlanes(planes, kept);
  fuzz::Require(kept.size() == lines.size(), "No line comes or goes.");
  for (std::size_t i = 0; i < lines.size(); ++i)
    fuzz::Require(
        kept.EndOf(i) == lines.EndOf(i) && (i == planes[chosen].LineIndex || kept[i] == lines[i]),
        "Lines of others stay.");
  LineArray anew = lines;
  ApplyStaticPlanes(planes, anew);
  fuzz::Require(anew.size() == lines.size(), "No line comes or goes.");
  for (std::size_t i = 0; i < lines.size(); ++i)
    fuzz::Require(Contains(lines[i], "planes.Plane") || anew[i] == lines[i],
                  "Lines of other things stay.");
  if (hasClass)
    fuzz::RequireHolds(kept[planes[chosen].LineIndex], "$P_51D20NA", "The aircraft is another.");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const Catalogues tables = Tables();
  const LineArray lines = LineArray::FromFileAsIs(std::string(fuzz::TextOf(data, size)));
  const auto planes = FindStaticPlanes(lines);
  LineArray same = lines;
  fuzz::Require(!ApplyKeptStaticPlanes(planes, same) && same == lines,
                "Without an edit no line changes.");
  if (planes.empty()) return 0;
  auto rows = MakeStaticRows(planes, tables, fuzz::QuietServices());
  fuzz::Require(rows.size() == planes.size(), "Each aircraft has its row.");
  SortStaticRows(rows, fuzz::QuietServices().Page, size % 2 == 0);
  ChangeOne(lines, planes, tables);
  return 0;
}
