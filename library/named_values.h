#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "catalogues/catalogues.h"
#include "mission/document.h"
#include "services/code_page.h"

/** Words that many missions share, each once, with the name that the tables show for it. */
namespace rws {

/** Lets a table of texts be asked for a view of one. */
struct TextHash {
  using is_transparent = void;
  std::size_t operator()(std::string_view text) const {
    return std::hash<std::string_view>()(text);
  }
};

template <class Value>
using TextMap = std::unordered_map<std::string, Value, TextHash, std::equal_to<>>;

/** What the tables call a word, found in any letter case of the code page. */
class ShownNames {
 public:
  ShownNames() = default;
  explicit ShownNames(const CodePage& page) : page_(page) {}
  /** The first name of a word counts. */
  void Add(std::string_view word, std::string_view shown);
  /** "" for a word that the tables lack. */
  std::string_view Of(std::string_view word) const;

 private:
  CodePage page_;
  TextMap<std::string> names_;
};

ShownNames MapNames(const std::vector<MapRow>& maps, const CodePage& page);
ShownNames AircraftNames(const Catalogues& catalogues, const CodePage& page);
ShownNames SquadronNames(const Catalogues& catalogues, const CodePage& page);

/** A text as values are compared: in lower case, without blanks and ASCII signs, so that "bf 109"
    finds "BF_109G6". A text of signs alone stays. */
std::string ComparedText(const CodePage& page, std::string_view text);

/** A word of missions. */
struct NamedValue {
  std::string Word, Shown;  // `Shown` is the word itself where the tables lack it
  /** Both as they are compared. */
  std::string Compared;
};

/** The words of one kind, numbered from 0 on in the order in which they came; "" is 0. */
class NamedValues {
 public:
  NamedValues(ShownNames names, const CodePage& page);
  std::uint32_t NumberOf(std::string_view word);
  const NamedValue& operator[](std::uint32_t number) const { return values_[number]; }
  std::size_t size() const { return values_.size(); }

 private:
  CodePage page_;
  ShownNames names_;
  std::vector<NamedValue> values_;
  TextMap<std::uint32_t> numbers_;
};

}  // namespace rws
