#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "services/code_page.h"

/** Texts of the game's lists, made fit to be shown and to be found again. */
namespace rws {

/** A UTF-8 text of a list in mission text, on one line, blanks around it and doubled ones dropped;
    "" if it cannot be spelled. */
std::string ShownText(const CodePage& page, std::string_view utf8);

/** A key, class or code, which stands in missions letter by letter; "" if it cannot be spelled
    there. */
std::string ExactText(const CodePage& page, std::string_view utf8);

/** Tells texts that came before, letter case apart: few, since each is compared with all. By a
    number that two texts as good as never share. */
class SeenTexts {
 public:
  explicit SeenTexts(const CodePage& page) : page_(page) {}

  void Clear() { seen_.clear(); }
  /** False for one that came before. */
  bool Add(std::string_view text);

 private:
  const CodePage& page_;
  std::string lower_;
  std::vector<std::size_t> seen_;
};

/** Texts of which no two may be alike but for letter case. */
class UniqueTexts {
 public:
  explicit UniqueTexts(const CodePage& page) : page_(page) {}

  void Reserve(std::string_view text) { used_.insert(page_.LCase(text)); }
  /** The text, with `mark` in brackets behind it if it is taken already. */
  std::string Make(std::string text, std::string_view mark);

 private:
  const CodePage& page_;
  std::unordered_set<std::string> used_;
};

}  // namespace rws
