#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/** The line by which missions are looked for: words and "key:value" parted by blanks, all of which
    must hold; "-" ahead turns one round; quotes hold what has blanks, or a ":", together. A line is
    UTF-8, places in it count bytes. */
namespace rws {

enum class QueryKey {
  Name,  // a word without a key: in the names of file and briefing
  Map,
  Aircraft,
  Squadron,
  Player,
  Army,
  Kind,
  Time,
  Weather,
  Flights,
  Text,
  Is
};

/** The keys as they are typed, in the order in which they are offered. */
const std::vector<std::string_view>& QueryKeys();
/** What a key looks for, in words for the user. */
std::string_view KeyHint(QueryKey key);
/** The values of a key that has only these; none for one whose values are free. */
std::vector<std::string_view> FixedValues(QueryKey key);

/** One condition. */
struct QueryTerm {
  QueryKey Key = QueryKey::Name;
  bool Negated = false;
  std::string Value;  // UTF-8, without quotes
  /** Of `Time` in hours, and of `Flights`; the least may be the greater one of a time that goes
      past midnight. */
  double Least = 0, Most = 0;
};

/** Why a line cannot be understood, and where. */
struct QueryFault {
  std::string Text;
  std::size_t At = 0, Length = 0;
};

struct Query {
  /** At most 32 of them have the key `Text`. */
  std::vector<QueryTerm> Terms;
  /** While there is one, there are no terms, and nothing is to be hidden. */
  std::optional<QueryFault> Fault;
  /** A condition that is still to be typed, "map:" or "flights:>", which is no term: a fault where
      nobody is typing. */
  std::optional<QueryFault> Unfinished;
};

/** Reads a line. */
Query ParseQuery(std::string_view line);

/** A line as it is typed, cut into its conditions whatever is wrong with them. */
struct QueryPart {
  std::size_t At = 0, Length = 0;
  bool Negated = false, HasKey = false, IsOpen = false;
  std::string Key, Value;  // without quotes
  std::size_t KeyAt = 0, ValueAt = 0;
};
std::vector<QueryPart> SplitQuery(std::string_view line);

/** The key of that name in any case of letters; nothing for an unknown one. */
std::optional<QueryKey> KeyNamed(std::string_view name);

/** A value as it must be typed: in quotes where it holds what would end it. */
std::string QuotedValue(std::string_view value);

}  // namespace rws
