#pragma once

#include <cstdint>
#include <string>
#include <unordered_set>
#include <vector>

#include "library/index.h"
#include "library/query.h"

namespace rws {

/** The missions of an index for which a query holds. Made once for a query; missions may come to
    the index afterwards. Of a mission that is not read yet only names are known: it has no other
    value, also for a condition that is turned round. */
class Filter {
 public:
  Filter(const Query& query, const MissionIndex& index);

  bool Matches(std::size_t row);
  /** The same, but for conditions on texts that are not known for the row: it may match. */
  bool MayMatch(std::size_t row);

  /** The texts that missions have to be read for, as `ReadRequest` has them; none for most. */
  const std::vector<std::string>& Texts() const { return texts_; }
  /** What `MissionFacts::TextsFound` of these says for a row. */
  void SetTexts(std::size_t row, std::uint32_t found);
  bool KnowsTexts(std::size_t row) const { return row < isKnown_.size() && isKnown_[row]; }

  /** Rows with unsaved edits; for `is:unsaved`. */
  std::unordered_set<std::size_t> Unsaved;

 private:
  enum class Test {
    Name,
    Value,
    Player,
    Army,
    Kind,
    Time,
    Weather,
    Flights,
    Text,
    Unsaved,
    Broken
  };
  struct Condition {
    Test What = Test::Name;
    bool Negated = false;
    QueryTerm Term;
    std::string Folded, Lower;  // a name as it is found in the file's name and the briefing's
    bool IsSpelled = true;      // the code page has all its letters
    /** Of value i of the table, whether it matches; grows with the table. */
    const NamedValues* Values = nullptr;
    std::vector<bool> IsWanted = {};
    std::uint32_t Bits = 0;  // of kinds, weathers and armies
    std::size_t Text = 0;
  };

  Condition Compile(const QueryTerm& term);
  void CompileFixed(Condition& condition) const;
  bool Holds(Condition& condition, std::size_t row, bool& isKnown) const;
  bool HoldsForName(const Condition& condition, std::size_t row) const;
  bool HoldsForFlights(Condition& condition, std::size_t row) const;
  bool HoldsForPlayer(Condition& condition, std::size_t row) const;
  static bool IsWanted(Condition& condition, std::uint32_t value);
  bool Matches(std::size_t row, bool unknownTexts);

  const MissionIndex& index_;
  std::vector<Condition> conditions_;
  std::vector<std::string> texts_;
  std::vector<std::uint32_t> found_;
  std::vector<bool> isKnown_;
};

}  // namespace rws
