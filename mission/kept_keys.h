#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "mission/kept_text.h"
#include "mission/line_patch.h"

/** Edits of single values in the words where they stand. */
namespace rws {

/** The keys of a section in the order in which the game's builder writes them; a key that ends in
    "#" stands for those of the four planes. */
using KeyOrder = std::vector<std::string_view>;

extern const KeyOrder kMainKeys, kFlightKeys;

/** Gives a key its value, in the first line that has the key; one that is missing gets a line where
    the builder would write it. Without a value all lines of the key go. */
void SetKey(const KeptText& text, LinePatch& patch, const KeptSection& section,
            const KeyOrder& order, std::string_view key, std::string_view value);

/** Gives a section another name. */
void RenameSection(const KeptText& text, LinePatch& patch, const KeptSection& section,
                   std::string_view name);

/** The line behind the last one of a section that is not blank. */
std::size_t EndOfSection(const KeptText& text, const KeptSection& section);

/** A number in the form of the one that it replaces: as many decimals, at least those that it
    needs. */
std::string NumberLike(std::string_view old, std::string_view value);

/** The words of a line, to be changed one by one; what is between and behind them stays. */
class WordLine {
 public:
  explicit WordLine(std::string_view line);

  std::size_t size() const { return words_.size(); }
  std::string_view Word(std::size_t place) const {
    return place < words_.size() ? std::string_view(words_[place]) : std::string_view();
  }
  /** A place behind the last word is reached by zeros. */
  void Set(std::size_t place, std::string word);
  void Insert(std::size_t place, std::string word);
  void Erase(std::size_t place);
  std::string Text() const;

 private:
  std::vector<std::string> gaps_, words_;  // a gap stands ahead of its word
  std::string rest_;
};

}  // namespace rws
