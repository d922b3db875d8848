#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "mission/line_array.h"

/** The text of a mission as the game takes it apart: sections by their headers, keys by their first
    words, neither with regard to letter case. Nothing here changes or orders anything. */
namespace rws {

/** A word of a line and where it begins. */
struct KeptWord {
  std::string_view Text;
  std::size_t At = 0;
};

/** The words of a line, parted by blanks and tabs; a comment is none. */
std::vector<KeptWord> KeptWords(std::string_view line);
/** The same, in the memory of an earlier call. */
void KeptWordsInto(std::vector<KeptWord>& words, std::string_view line);

/** A line's key and all that follows it. */
struct KeptKey {
  std::string_view Key;
  std::string_view Value;   // without blanks at its ends, and without a comment
  std::size_t ValueAt = 0;  // offset in the line; its end for a key alone
};

/** A line that is blank, or a comment, has the key "". A comment begins at "#", ";" or "//" that
    stands first or behind a blank. */
KeptKey KeyOf(std::string_view line);

/** A section: its header and the lines up to the next one. */
struct KeptSection {
  std::string_view Name;  // between the brackets, as it stands
  std::size_t Header = 0;
  std::size_t First = 0, Last = 0;  // the lines behind the header, the last one not included
};

/** Name of the section that a line opens, or "". */
std::string_view HeaderName(std::string_view line);

/** The sections of a text. Names and lines point into the lines, which must outlive this and stay
    as they are. */
class KeptText {
 public:
  explicit KeptText(const LineArray& lines);

  const LineArray& Lines() const { return *lines_; }
  const std::vector<KeptSection>& Sections() const { return sections_; }
  /** The first section of a name, as the second is never read; null for none. */
  const KeptSection* Find(std::string_view name) const;
  /** True if no section of the same name stands before it. */
  bool IsFirst(const KeptSection& section) const { return Find(section.Name) == &section; }
  /** The first line of a section that has a key, or `npos`. */
  std::size_t LineOf(const KeptSection& section, std::string_view key) const;
  /** The value of that line, or "". */
  std::string_view ValueOf(const KeptSection& section, std::string_view key) const;

  static constexpr std::size_t npos = static_cast<std::size_t>(-1);

 private:
  const LineArray* lines_;
  std::vector<KeptSection> sections_;
  std::map<std::string, std::size_t, std::less<>> byName_;
};

/** A text with ASCII letters in lower case. */
std::string LowerKey(std::string_view text);

}  // namespace rws
