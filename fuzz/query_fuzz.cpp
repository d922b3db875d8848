#include "fuzz/support.h"
#include "library/filter.h"
#include "library/index.h"
#include "library/query.h"

/** Reads a query and asks an index of two missions. */

namespace {

using namespace rws;

MissionIndex& Index() {
  static MissionIndex index(IndexNames{}, CodePage(1252));
  if (index.size() > 0) return index;
  MissionFacts facts;
  facts.Folder = "/missions";
  facts.FileName = "escort.mis";
  facts.Stamp.Exists = true;
  facts.MapPath = "Crimea/load.ini";
  facts.Time = "12.5";
  facts.CloudType = "3";
  facts.Army = "1";
  facts.Player = "r0100";
  facts.Flights = {{"r0100", "P_51D20NA", 4, false, 3}, {"g0100", "BF_109G6", 2, true, 2}};
  facts.BriefingName = "Escort duty";
  index.Put(facts);
  index.AddUnread("/missions/other.mis");
  return index;
}

void RequireParts(std::string_view line) {
  std::size_t next = 0;
  for (const auto& part : SplitQuery(line)) {
    fuzz::Require(part.At >= next && part.Length > 0 && part.At + part.Length <= line.size(),
                  "Conditions follow each other within the line.");
    fuzz::Require(part.KeyAt <= part.ValueAt && part.ValueAt <= part.At + part.Length,
                  "A value stands within its condition.");
    next = part.At + part.Length;
  }
}

/** A value can be typed, whatever stands in it. */
void RequireTyped(std::string_view line) {
  std::string bare(line);
  std::erase(bare, '"');
  const auto parts = SplitQuery(QuotedValue(line));
  if (bare.empty()) return;
  fuzz::Require(parts.size() == 1 && !parts[0].HasKey && !parts[0].Negated, "It is one word.");
  fuzz::RequireSame(parts[0].Value, bare, "It is the same word.");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view line = fuzz::TextOf(data, size);
  RequireParts(line);
  RequireTyped(line);
  const Query query = ParseQuery(line);
  fuzz::Require(!query.Fault || query.Terms.empty(), "What cannot be understood hides nothing.");
  for (const auto* fault : {&query.Fault, &query.Unfinished})
    if (*fault)
      fuzz::Require((*fault)->At + (*fault)->Length <= line.size(), "A fault is within the line.");
  MissionIndex& index = Index();
  Filter filter(query, index);
  for (std::size_t row = 0; row < index.size(); ++row) {
    const bool matches = filter.Matches(row);
    fuzz::Require(!matches || filter.MayMatch(row), "What matches may match.");
    fuzz::Require(!query.Terms.empty() || matches, "Without a condition nothing is hidden.");
  }
  return 0;
}
