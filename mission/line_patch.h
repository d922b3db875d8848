#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "mission/line_array.h"

namespace rws {

/** Changes of single lines of a text, collected and made in one go. What is not changed keeps its
    bytes, the end of each line included. Indexes are those of the text as it was. */
class LinePatch {
 public:
  explicit LinePatch(const LineArray& lines) : lines_(&lines) {}

  const LineArray& Lines() const { return *lines_; }
  bool IsEmpty() const { return changes_.empty(); }

  /** The line as it is by now; nothing for one that is taken away. */
  std::optional<std::string_view> Line(std::size_t index) const;
  /** A text of more than one line is an invalid call, here and for `Insert`. */
  void Replace(std::size_t index, std::string line);
  void Remove(std::size_t index);
  void RemoveRange(std::size_t first, std::size_t last);
  /** Puts a new line ahead of a line, behind those that were put there before; the number of lines
      stands for the end. */
  void Insert(std::size_t before, std::string line);

  LineArray Result() const;

 private:
  struct LineChange {
    std::vector<std::string> Before;
    std::optional<std::string> Text;
    bool Removed = false;
  };

  const LineArray* lines_;
  std::map<std::size_t, LineChange> changes_;
};

}  // namespace rws
