#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "services/code_page.h"

namespace rws {

/** The code page that the game takes all its lists for. */
const CodePage& ListsPage();

/** A text of one of the game's files of names, UTF-8. */
struct Property {
  std::string Key, Text;
  std::size_t Line = 0;  // from 1 on, of the last line with this key
};

/** The texts of a file of names as the game takes it apart. Of two of one key the last counts; the
    order is that in which the keys come first. Bytes are Windows-1252 but for a file with a UTF-8
    mark. Blanks behind a text are dropped, though the game keeps them. A malformed "\u", for which
    the game drops the whole file, is kept as it stands. */
class Properties {
 public:
  Properties() = default;
  explicit Properties(std::string_view bytes);

  const std::vector<Property>& All() const { return all_; }
  /** Null when there is none. Letter case counts. */
  const Property* Find(std::string_view key) const;
  /** Adds a text, or takes the place of the one with its key. */
  void Add(const Property& property) { Put(property.Key, property.Text, property.Line); }
  /** Adds what `other` has and this lacks. */
  void Complete(const Properties& other);
  /** The first line with a malformed "\u", from 1 on; 0 for none. */
  std::size_t MalformedLine() const { return malformed_; }

 private:
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const {
      return std::hash<std::string_view>()(text);
    }
  };
  void Put(std::string key, std::string text, std::size_t line);

  std::vector<Property> all_;
  std::unordered_map<std::string, std::size_t, Hash, std::equal_to<>> byKey_;
  std::size_t malformed_ = 0;
};

}  // namespace rws
